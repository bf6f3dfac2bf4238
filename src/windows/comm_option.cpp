// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/comm_option.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QKeySequence>
#include <QTimer>
#include <utility>

#include "qt/gui/shown_text.h"
#include "widgets/contrast.h"

namespace tavlo {
namespace {

/// A little more than a text must have: its letters are thin.
constexpr double kNoDeviceContrast = kTextContrast + 0.5;

/// Qt's own interface of a radio button moves the mark and clicks nothing.
class AccessibleCommOption : public QAccessibleWidget {
 public:
  explicit AccessibleCommOption(CommOption* option)
      : QAccessibleWidget(option, QAccessible::RadioButton), option_(option) {}

  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Name) return option_->text().remove(QLatin1Char('&'));
    if (kind == QAccessible::Accelerator) return Mnemonic();
    return QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = option_->isChecked();
    return state;
  }
  QStringList actionNames() const override {
    if (!option_->isEnabled()) return {};
    return {pressAction(), setFocusAction()};
  }
  void doAction(const QString& action) override {
    if (action == pressAction() || action == toggleAction()) return option_->Press();
    QAccessibleWidget::doAction(action);
  }
  QStringList keyBindingsForAction(const QString& action) const override {
    return action == pressAction() ? QStringList{Mnemonic()} : QStringList();
  }

 private:
  [[nodiscard]] QString Mnemonic() const {
    return QKeySequence::mnemonic(option_->text()).toString(QKeySequence::NativeText);
  }

  CommOption* option_;
};

QAccessibleInterface* MakeOptionInterface(const QString&, QObject* object) {
  auto* option = qobject_cast<CommOption*>(object);
  return option == nullptr ? nullptr : new AccessibleCommOption(option);
}

}  // namespace

CommOption::CommOption(int index, QWidget* parent) : QRadioButton(parent), number_(index + 1) {
  static const bool installed = (QAccessible::installFactory(MakeOptionInterface), true);
  static_cast<void>(installed);
  setObjectName(QStringLiteral("OptCom%1").arg(index));
  // Room for the longer text from the start: what stands beside it must not move when a device goes.
  Show({"", false, ""});
  setMinimumWidth(sizeHint().width());
}

void CommOption::Show(const CommDevice& device) {
  const QString path = FromPath(device.device);
  const QString name = QStringLiteral("Comm &%1").arg(number_);
  setText(device.there ? name : name + QStringLiteral(" (none)"));
  there_ = device.there;
  Tint();
  QString tip = device.there ? path : QStringLiteral("No device is there now: ") + path;
  if (!device.doubt.empty()) tip += QStringLiteral("\n(") + FromPath(device.doubt) + QLatin1Char(')');
  setToolTip(tip);
}

/// Gray, and still to be read: it can be clicked, and the device may be there by then.
void CommOption::Tint() {
  const QPalette around = parentWidget()->palette();
  QPalette colours;
  if (!there_) {
    const QColor gray = StandOut(around.color(QPalette::Disabled, QPalette::WindowText),
                                 around.color(QPalette::Active, QPalette::Window), kNoDeviceContrast);
    colours.setColor(QPalette::Active, QPalette::WindowText, gray);
    colours.setColor(QPalette::Inactive, QPalette::WindowText, gray);
  }
  setPalette(colours);
}

void CommOption::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange && !std::exchange(tinting_, true)) {
    Tint();
    tinting_ = false;
  }
  QRadioButton::changeEvent(event);
}

void CommOption::Press() {
  // Later, so that whoever pressed does not wait for the answer to a box that the click may bring.
  QTimer::singleShot(0, this, [this] {
    const QWidget* before = QApplication::activeModalWidget();
    if (isEnabled() && isVisible() && (before == nullptr || before == window())) click();
  });
}

}  // namespace tavlo
