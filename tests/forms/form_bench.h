// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "forms/form.h"
#include "model/line_operations.h"
#include "platform/number_format.h"
#include "support/fake_boxes.h"

namespace tavlo::testing {

/// An axis without units of its own: 20000 steps to a revolution.
inline void InSteps(Program& program, int axis) {
  program.Axis.StepResCode[axis] = 8;
  program.Axis.UseUnits[axis] = false;
}

/// An axis in inches.
inline void InInches(Program& program, int axis, int steps_per_inch) {
  program.Axis.StepResCode[axis] = 8;
  program.Axis.UseUnits[axis] = true;
  program.Axis.StepsPerUnit[axis] = steps_per_inch;
  program.Axis.UnitName[axis] = "inch";
}

/// An operator before a form, who acts on its controls by their names.
class FormOperator {
 public:
  explicit FormOperator(ControlForm& form) : form_(form) {}

  /// Types it over what stands there, and stays in the box.
  void Type(std::string_view box, std::string text) { form_.Type(Find(box), std::move(text)); }
  /// Types it and goes to the next control.
  void Enter(std::string_view box, std::string text) {
    Type(box, std::move(text));
    form_.Leave(Find(box));
  }
  void Move(std::string_view slider, int value) { form_.Move(Find(slider), value); }
  void Click(std::string_view what) { form_.Click(Find(what)); }
  void Choose(std::string_view list, int index) { form_.Choose(Find(list), index); }
  void Spin(std::string_view buttons, int way) { form_.Spin(Find(buttons), way); }

  [[nodiscard]] std::string Text(std::string_view box) {
    const AnyControl& control = Find(box).control;
    if (auto* const area = std::get_if<TextArea*>(&control)) return (*area)->text;
    return State<TextBox>(box).text;
  }
  [[nodiscard]] const Gauge& Bar(std::string_view gauge) { return State<Gauge>(gauge); }
  [[nodiscard]] const Display& Picture(std::string_view display) { return State<Display>(display); }
  [[nodiscard]] std::string Caption(std::string_view label) { return State<Label>(label).caption; }
  [[nodiscard]] const Button& Pressable(std::string_view button) { return State<Button>(button); }
  [[nodiscard]] int Position(std::string_view slider) { return State<Slider>(slider).value; }
  [[nodiscard]] std::pair<int, int> Ends(std::string_view slider) {
    return {State<Slider>(slider).min, State<Slider>(slider).max};
  }
  [[nodiscard]] bool Checked(std::string_view box) { return State<CheckBox>(box).value; }
  [[nodiscard]] bool Chosen(std::string_view option) { return State<OptionButton>(option).value; }
  [[nodiscard]] std::string OptionCaption(std::string_view option) {
    return State<OptionButton>(option).caption;
  }
  [[nodiscard]] const ListBox& List(std::string_view list) { return State<ListBox>(list); }
  [[nodiscard]] bool Enabled(std::string_view name) { return CommonOf(Find(name).control).enabled; }
  [[nodiscard]] bool Visible(std::string_view name) { return CommonOf(Find(name).control).visible; }
  /// Of these the ones that are seen.
  [[nodiscard]] std::vector<std::string> Seen(const std::vector<std::string>& names) {
    std::vector<std::string> seen;
    for (const std::string& name : names) {
      if (Visible(name)) seen.push_back(name);
    }
    return seen;
  }

 private:
  [[nodiscard]] const Bound& Find(std::string_view name) { return form_.Controls().Find(name); }
  template <class Which>
  [[nodiscard]] Which& State(std::string_view name) {
    return *std::get<Which*>(Find(name).control);
  }

  ControlForm& form_;
};

/// The form of a line.
template <class WhichForm>
struct FormBench : FormOperator {
  FormBench() : FormOperator(form) {
    InitHardware(program.Axis);
    InitProg(program);
    InSteps(program, 0);
  }

  [[nodiscard]] Instruction& Line(int line = 0) { return program.Prog[line]; }
  void Open(int line = 0) { form.Load(program, line); }
  [[nodiscard]] bool OK() { return form.Confirm(boxes); }

  Program program;
  WhichForm form;
  FakeBoxes boxes;
};

}  // namespace tavlo::testing
