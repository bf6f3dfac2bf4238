// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/if_moving.h"

namespace tavlo {

IfMoving::IfMoving() : AxisForm("linenum") {
  target_.AddTo(controls_);
}

void IfMoving::Fill() {
  drive_.Fill(program(), record().Drive);
  target_.Fill(program(), record().LineNum, line());
}

void IfMoving::CleanUp() {
  target_.CleanUp();
}

void IfMoving::Write(Instruction& record) const {
  record.Type = IM;
  record.LineNum = target_.Target();
  record.Drive = Axis();
}

}  // namespace tavlo
