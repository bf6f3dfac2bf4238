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
#include <stdexcept>

#include "editors/editor_dialog.h"
#include "forms/registry.h"
#include "model/program.h"
#include "support/fake_boxes.h"
#include "support/fake_help.h"
#include "widgets/prompt_box.h"

namespace tavlo::testing {

/// A dialog on the screen, with an operator before it.
struct DialogBench {
  explicit DialogBench(int kind) : type(kind), dialog(*FormOf(kind), boxes, help, nullptr) {
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

  /// Brings the dialog up, acts, and returns what the dialog said. If it still stands then it is cancelled,
  /// and its answer does not count.
  bool While(const std::function<void()>& act) {
    bool by_itself = true;
    QTimer::singleShot(0, &dialog, [&] {
      dialog.activateWindow();
      QTest::qWait(0);
      act();
      if (!dialog.isVisible()) return;
      by_itself = false;
      dialog.reject();
    });
    const bool written = dialog.Edit(program, 0);
    closed_by_itself = by_itself;
    return written;
  }

  template <class Widget>
  [[nodiscard]] Widget& Find(const char* name) {
    auto* found = dialog.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(name);
    return *found;
  }
  [[nodiscard]] QString Text(const char* box) {
    const auto* area = dialog.findChild<PromptBox*>(QLatin1String(box));
    return area != nullptr ? area->Text() : Find<QLineEdit>(box).text();
  }
  /// What is selected in the box that has the focus.
  [[nodiscard]] QString Selected() const {
    const QWidget* focus = dialog.focusWidget();
    if (const auto* area = qobject_cast<const PromptBox*>(focus)) return area->textCursor().selectedText();
    const auto* box = qobject_cast<const QLineEdit*>(focus);
    return box == nullptr ? QString() : box->selectedText();
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QWidget* focus = dialog.focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &dialog, key, with);
  }
  /// Types over what is selected.
  void Type(const QString& text) { QTest::keyClicks(dialog.focusWidget(), text); }
  void Click(const char* name) {
    QTest::mouseClick(&Find<QWidget>(name), Qt::LeftButton, {}, {8, Find<QWidget>(name).height() / 2});
  }
  /// The entry that the dialog begins with; nothing where that is a list, or dimmed.
  [[nodiscard]] QLineEdit* FirstEntry() {
    const auto form = FormOf(type)->make();
    auto* entry = dialog.findChild<QLineEdit*>(QString::fromStdString(form->First().name));
    return entry != nullptr && entry->isEnabled() ? entry : nullptr;
  }
  [[nodiscard]] QString Focus() const {
    const QWidget* focus = dialog.focusWidget();
    // The bar of a tab strip has the focus for it.
    if (focus != nullptr && focus->objectName().startsWith(QLatin1String("qt_")))
      focus = focus->parentWidget();
    return focus == nullptr ? QString() : focus->objectName();
  }

  /// The controls to which the Tab key goes, in the order of the form.
  [[nodiscard]] std::vector<std::string> TabStops(const Form& form) {
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

  Program program;
  FakeBoxes boxes;
  FakeHelp help;
  int type;
  EditorDialog dialog;
  bool closed_by_itself = false;
};

}  // namespace tavlo::testing
