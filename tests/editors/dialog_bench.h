// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>

#include "editors/editor_dialog.h"
#include "forms/registry.h"
#include "forms/tuning.h"
#include "model/program.h"
#include "support/fake_boxes.h"
#include "support/fake_help.h"
#include "widgets/profile_graph.h"
#include "widgets/prompt_box.h"

namespace tavlo::testing {

/// An operator before a dialog on the screen.
class DialogOperator {
 public:
  explicit DialogOperator(FormDialog& window) : window_(window) {}

  /// Acts while the dialog stands that `edit` brings up, and returns what that said. If the dialog still
  /// stands then it is cancelled, and its answer does not count.
  bool Acting(const std::function<bool()>& edit, const std::function<void()>& act) {
    bool by_itself = true;
    QTimer::singleShot(0, &window_, [&] {
      window_.activateWindow();
      QTest::qWait(0);
      act();
      if (!window_.isVisible()) return;
      by_itself = false;
      window_.reject();
    });
    const bool written = edit();
    closed_by_itself = by_itself;
    return written;
  }

  template <class Widget>
  [[nodiscard]] Widget& Find(const char* name) {
    auto* found = window_.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(name);
    return *found;
  }
  [[nodiscard]] QString Text(const char* box) {
    const auto* area = window_.findChild<PromptBox*>(QLatin1String(box));
    return area != nullptr ? area->Text() : Find<QLineEdit>(box).text();
  }
  /// What is selected in the box that has the focus.
  [[nodiscard]] QString Selected() const {
    const QWidget* focus = window_.focusWidget();
    if (const auto* area = qobject_cast<const PromptBox*>(focus)) return area->textCursor().selectedText();
    const auto* box = qobject_cast<const QLineEdit*>(focus);
    return box == nullptr ? QString() : box->selectedText();
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QWidget* focus = window_.focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &window_, key, with);
  }
  /// Types over what is selected.
  void Type(const QString& text) { QTest::keyClicks(window_.focusWidget(), text); }
  void Click(const char* name) {
    QTest::mouseClick(&Find<QWidget>(name), Qt::LeftButton, {}, {8, Find<QWidget>(name).height() / 2});
  }
  [[nodiscard]] QString Focus() const {
    const QWidget* focus = window_.focusWidget();
    // The bar of a tab strip has the focus for it.
    if (focus != nullptr && focus->objectName().startsWith(QLatin1String("qt_")))
      focus = focus->parentWidget();
    return focus == nullptr ? QString() : focus->objectName();
  }

  /// The dialog has the controls of the form, each once, and no others.
  void ExpectControlsOf(const ControlForm& form) {
    std::multiset<std::string> bound;
    for (const Bound& control : form.Controls().Rows()) bound.insert(control.name);
    for (const char* button : {"OK", "Cancel", "Help", "invisible"}) bound.insert(button);
    std::multiset<std::string> named;
    for (const QWidget* widget : window_.findChildren<QWidget*>()) {
      const QString name = widget->objectName();
      // What a control is made of has names that the toolkit gives, or is the graph's own.
      const bool part = name.startsWith(QLatin1String("qt_")) || name.startsWith(QLatin1String("Scroll")) ||
                        qobject_cast<ProfileGraph*>(widget->parentWidget()) != nullptr;
      if (!name.isEmpty() && !part) named.insert(name.toStdString());
    }
    EXPECT_EQ(named, bound);
  }

  void ExpectNoMnemonicTwice() {
    std::map<QString, QString> letters;
    const auto meet = [&](const QString& text) {
      const QKeySequence letter = QKeySequence::mnemonic(text);
      if (letter.isEmpty()) return;
      const QString key = letter.toString();
      EXPECT_FALSE(letters.contains(key)) << text.toStdString() << " and " << letters[key].toStdString();
      letters[key] = text;
    };
    for (const auto* button : window_.findChildren<QAbstractButton*>()) meet(button->text());
    for (const auto* label : window_.findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) meet(label->text());
    }
  }

  /// The Tab key walks the controls in the order of the form. The dialog must stand.
  void ExpectWalkedByTab(const ControlForm& form) {
    const std::vector<std::string> wanted = TabStops(form);
    Find<QWidget>(wanted.front().c_str()).setFocus();
    for (const std::string& name : wanted) {
      EXPECT_EQ(Focus().toStdString(), name);
      Press(Qt::Key_Tab);
    }
    EXPECT_EQ(Focus().toStdString(), wanted.front());
  }

  /// The controls to which the Tab key goes, in the order of the form.
  [[nodiscard]] std::vector<std::string> TabStops(const ControlForm& form) {
    std::vector<std::string> stops;
    for (const Bound& control : form.Controls().Rows()) {
      const QWidget& widget = Find<QWidget>(control.name.c_str());
      if (qobject_cast<const QTabWidget*>(&widget) != nullptr) {
        // It comes before what is on its pages.
        stops.insert(stops.begin(), control.name);
        continue;
      }
      const auto* option = qobject_cast<const QRadioButton*>(&widget);
      // Of a group of options the one that is on takes the focus.
      const bool in_group = option != nullptr && !option->isChecked();
      const bool takes_it = (widget.focusPolicy() & Qt::TabFocus) != 0 && !in_group;
      if (widget.isVisible() && widget.isEnabled() && takes_it) stops.push_back(control.name);
    }
    stops.insert(stops.end(), {"OK", "Cancel", "Help"});
    return stops;
  }

  bool closed_by_itself = false;

 private:
  FormDialog& window_;
};

/// In place of a kind of line, the dialog that belongs to none.
inline constexpr int kTuning = -2;
inline const FormRow& RowOf(int kind) {
  return kind == kTuning ? TuningRow() : *FormOf(kind);
}

/// The dialog of a line.
struct DialogBench : DialogOperator {
  explicit DialogBench(int kind)
      : DialogOperator(dialog), type(kind), dialog(RowOf(kind), boxes, help, nullptr) {
    InitHardware(program.Axis);
    InitProg(program);
    program.Axis.StepResCode[0] = 8;
    program.Axis.UseUnits[0] = false;
    program.Prog[0] = {.Type = static_cast<std::int16_t>(type),
                       .Dist = 40000,
                       .Dist2 = 30000,
                       .Speed = 2.5F,
                       .Speed2 = 1.25F,
                       .Accel = 100,
                       .Decel = 200,
                       .State = 2,
                       .Time = 250,
                       .LineNum = 41,
                       .Text = "Length of the part?",
                       .SubType = StartAxis,
                       .UpperInt = 50,
                       .LowerInt = 1,
                       .InMask = 1};
  }

  bool While(const std::function<void()>& act) {
    return Acting([this] { return dialog.Edit(program, 0); }, act);
  }
  /// The entry that the dialog begins with; nothing where that is a list, or dimmed.
  [[nodiscard]] QLineEdit* FirstEntry() {
    const auto form = RowOf(type).make();
    auto* entry = dialog.findChild<QLineEdit*>(QString::fromStdString(form->First().name));
    return entry != nullptr && entry->isEnabled() ? entry : nullptr;
  }

  Program program;
  FakeBoxes boxes;
  FakeHelp help;
  int type;
  EditorDialog dialog;
};

}  // namespace tavlo::testing
