// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/learn_pos.h"

namespace tavlo {

LearnPos::LearnPos() : AxisForm("varname") {
  variable_.AddTo(controls_);
}

void LearnPos::Fill() {
  drive_.Fill(program(), record().Drive);
  variable_.Fill(record().DistVar);
}

void LearnPos::Write(Instruction& record) const {
  record.Type = LP;
  record.DistVar = variable_.Variable();
  record.Drive = Axis();
}

}  // namespace tavlo
