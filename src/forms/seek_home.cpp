// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/seek_home.h"

#include "platform/number_format.h"

namespace tavlo {

SeekHome::SeekHome() : SensorForm({.distance = false, .speed_variable = false}, InputsOf::Home) {
  controls_.Add("LblClearance", &clearance_);
  AddExecution();
}

std::string SeekHome::Shown(double steps) const {
  if (!program().Axis.UseUnits[Axis()]) return Format(steps, "0");
  return Format(ShownDist(program(), steps, Axis()), "##0.000");
}

bool SeekHome::MayWrite(MessageBoxes& boxes) {
  if (input_.IsValid()) return true;
  boxes.MsgBox({.text = "Please select an input for the home sensor.", .title = "Error"});
  return false;
}

void SeekHome::Write(Instruction& record) const {
  SensorForm::Write(record);
  record.Type = SH;
}

}  // namespace tavlo
