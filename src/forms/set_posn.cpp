// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/set_posn.h"

namespace tavlo {

SetPosn::SetPosn() : AxisForm("disttext") {
  position_.AddTo(controls_, "disttext", "distunit", [this] { CleanUp(); });
}

void SetPosn::Fill() {
  drive_.Fill(program(), record().Drive);
  position_.Fill(Units(), PositionOf(record()));
}

void SetPosn::CleanUp() {
  position_.CleanUp(Units());
}

void SetPosn::SetUnits() {
  position_.ReadAnew(Units());
  CleanUp();
}

void SetPosn::Write(Instruction& record) const {
  record.Type = SP;
  WritePosition(record, position_.Steps());
  record.Drive = Axis();
}

}  // namespace tavlo
