// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/input_form.h"

#include <string>

namespace tavlo {

InputForm::InputForm(std::string_view first, const Kinds& kinds) : AxisForm(first), kinds_(kinds) {
  mode_.AddTo(controls_, {"OptSingle", "OptSum"});
  input_.AddTo(controls_);
}

void InputForm::Fill() {
  const Instruction& from = record();
  drive_.FillWithHub(program(), from.Drive);
  mode_.Fill(from.Type == kinds_.multiple ? 1 : 0);
  input_.Fill(Units(), from);
  rows_.Fill(Units(), from);
}

void InputForm::SetUnits() {
  input_.CleanUpIOnum(Units());
  rows_.ShowHideInputs(Units());
}

void InputForm::ShowHide() {
  input_.Enable(IsSingle());
  rows_.Show(!IsSingle());
}

bool InputForm::MayWrite(MessageBoxes& boxes) {
  if (IsSingle() || rows_.AnyChosen()) return true;
  boxes.MsgBox(
      {.text = "You must select at least one input to be high or low.", .title = std::string(kinds_.title)});
  return false;
}

void InputForm::Write(Instruction& record) const {
  record.Type = IsSingle() ? kinds_.single : kinds_.multiple;
  if (IsSingle()) {
    input_.Write(record);
  } else {
    rows_.ReadOptions(record);
  }
  record.Drive = Axis();
}

}  // namespace tavlo
