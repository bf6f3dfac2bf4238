// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/row_accessible.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleWidget>
#include <QPointer>
#include <array>

#include "widgets/takes_input.h"
#include "windows/prog_window.h"

namespace tavlo {
namespace {

class AccessibleRow : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  AccessibleRow(ProgWindow* pane, int line) : pane_(pane), line_(line) {}

  bool isValid() const override { return !pane_.isNull(); }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(pane_); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  void setText(QAccessible::Text, const QString&) override {}
  QString text(QAccessible::Text which) const override {
    if (which == QAccessible::Name) return pane_->SpeechOfRow(line_).name;
    if (which == QAccessible::Description) return pane_->SpeechOfRow(line_).description;
    return {};
  }
  QRect rect() const override {
    const QRect row = pane_->Geometry().Row(line_);
    return {pane_->mapToGlobal(row.topLeft()), row.size()};
  }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.focusable = state.selectable = state.extSelectable = true;
    state.selected = pane_->Selection().Holds(line_);
    state.focused = line_ == pane_->CurrentRow() && pane_->hasFocus();
    state.offscreen = !pane_->visibleRegion().intersects(pane_->Geometry().Row(line_));
    return state;
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  void doAction(const QString& action) override {
    if (action == pressAction()) pane_->Press(line_);
    if (action != setFocusAction() || !TakesInput(*pane_)) return;
    pane_->GoTo(line_);
    pane_->setFocus();
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QPointer<ProgWindow> pane_;
  int line_;
};

/// The pane, whose children are the rows. They are registered at first use and live as long as it does.
class AccessiblePane : public QAccessibleWidget {
 public:
  explicit AccessiblePane(ProgWindow* pane) : QAccessibleWidget(pane, QAccessible::List), pane_(pane) {}
  ~AccessiblePane() override {
    for (const QAccessible::Id id : rows_) {
      if (id != 0) QAccessible::deleteAccessibleInterface(id);
    }
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = state.extSelectable = true;
    return state;
  }
  int childCount() const override { return kLines; }
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= kLines) return nullptr;
    QAccessible::Id& id = rows_[index];
    if (id == 0) id = QAccessible::registerAccessibleInterface(new AccessibleRow(pane_, index));
    return QAccessible::accessibleInterface(id);
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const QPoint position = pane_->mapFromGlobal(QPoint(x, y));
    return pane_->rect().contains(position) ? child(pane_->Geometry().RowAt(position.y())) : nullptr;
  }
  QAccessibleInterface* focusChild() const override {
    return pane_->hasFocus() ? child(pane_->CurrentRow()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* row) const override {
    for (int i = 0; i < kLines; ++i) {
      if (rows_[i] != 0 && QAccessible::accessibleInterface(rows_[i]) == row) return i;
    }
    return -1;
  }

 private:
  ProgWindow* pane_;
  mutable std::array<QAccessible::Id, kLines> rows_{};
};

QAccessibleInterface* MakeRowInterface(const QString&, QObject* object) {
  auto* pane = qobject_cast<ProgWindow*>(object);
  return pane == nullptr ? nullptr : new AccessiblePane(pane);
}

}  // namespace

void InstallRowAccessibility() {
  static const bool installed = (QAccessible::installFactory(MakeRowInterface), true);
  static_cast<void>(installed);
}

}  // namespace tavlo
