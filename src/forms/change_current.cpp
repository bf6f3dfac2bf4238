// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/change_current.h"

#include <algorithm>

namespace tavlo {
namespace {

enum What { New, Disable, Resume };

}  // namespace

ChangeCurrent::ChangeCurrent() : AxisForm("Curr") {
  what_.AddTo(controls_, {"OptNew", "OptDisable", "OptResume"});
  curr_.AddTo(controls_, "Curr", [this] { return Most(); });
  idle_.AddTo(controls_,
              {"OptIdleCurrent(0)", "OptIdleCurrent(1)", "OptIdleCurrent(2)", "OptIdleCurrent(3)"});
}

void ChangeCurrent::Fill() {
  const Instruction& from = record();
  drive_.Fill(program(), from.Drive);
  what_.Fill(from.Type != ED ? New : from.MotorOn ? Resume : Disable);
  curr_.Fill(from.Current);
  idle_.Fill(std::clamp<int>(from.IdlePct, 0, 3));
}

float ChangeCurrent::Most() const {
  return MaxCurrent(DriveModelOf(program(), Axis()));
}

void ChangeCurrent::ShowHide() {
  const bool is_new = what_.Chosen() == New;
  curr_.Enable(is_new);
  idle_.Enable(is_new);
}

void ChangeCurrent::Write(Instruction& record) const {
  record.Type = what_.Chosen() == New ? CC : ED;
  if (what_.Chosen() != New) record.MotorOn = what_.Chosen() == Resume;
  record.Current = curr_.Amperes();
  record.IdlePct = static_cast<std::int16_t>(idle_.Chosen());
  record.Drive = Axis();
}

}  // namespace tavlo
