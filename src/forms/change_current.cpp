// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/change_current.h"

#include <algorithm>

#include "platform/number_format.h"

namespace tavlo {
namespace {

enum What { New, Disable, Resume };

}  // namespace

ChangeCurrent::ChangeCurrent() : AxisForm("Curr") {
  what_.AddTo(controls_, {"OptNew", "OptDisable", "OptResume"});
  controls_.Add("Curr", &curr_, [this] { CleanUpCurrent(); });
  idle_.AddTo(controls_,
              {"OptIdleCurrent(0)", "OptIdleCurrent(1)", "OptIdleCurrent(2)", "OptIdleCurrent(3)"});
}

void ChangeCurrent::Fill() {
  const Instruction& from = record();
  drive_.Fill(program(), from.Drive);
  what_.Fill(from.Type != ED ? New : from.MotorOn ? Resume : Disable);
  PutCurrent(from.Current);
  idle_.Fill(std::clamp<int>(from.IdlePct, 0, 3));
}

void ChangeCurrent::PutCurrent(float amperes) {
  current_ = amperes;
  curr_.text = Format(amperes, "0.00");
  curr_.touched = false;
}

void ChangeCurrent::SetUnits() {
  curr_.touched = true;
  CleanUpCurrent();
}

void ChangeCurrent::CleanUpCurrent() {
  const float highest = MaxCurrent(DriveModelOf(program(), Axis()));
  if (!curr_.touched && current_ >= 0 && current_ <= highest) return;
  const double entered = curr_.touched ? Val(curr_.text) : current_;
  const double held = std::clamp(entered, 0.0, static_cast<double>(highest));
  // To the digits that are shown.
  PutCurrent(static_cast<float>(RoundHalfEven(held * 100) / 100));
}

void ChangeCurrent::ShowHide() {
  const bool is_new = what_.Chosen() == New;
  curr_.enabled = is_new;
  idle_.Enable(is_new);
}

void ChangeCurrent::Write(Instruction& record) const {
  record.Type = what_.Chosen() == New ? CC : ED;
  if (what_.Chosen() != New) record.MotorOn = what_.Chosen() == Resume;
  record.Current = current_;
  record.IdlePct = static_cast<std::int16_t>(idle_.Chosen());
  record.Drive = Axis();
}

}  // namespace tavlo
