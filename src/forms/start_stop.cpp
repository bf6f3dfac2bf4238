// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/start_stop.h"

#include <algorithm>

namespace tavlo {
namespace {

// In the order in which they are offered.
constexpr std::array kOffered = {StartAxis, StopAxis, ChangeSpeed, StopAll};

}  // namespace

StartStop::StartStop() : MoveForm({.distance = false, .decel = false, .execution = false}) {
  what_.AddTo(controls_, {"optStartAxis", "optStopAxis", "optChangeSpeed", "optStopAll"});
}

SSSub StartStop::Chosen() const {
  return what_.Chosen() < 0 ? StopAll : kOffered[static_cast<std::size_t>(what_.Chosen())];
}

void StartStop::Fill() {
  MoveForm::Fill();
  const auto* const found = std::ranges::find(kOffered, record().SubType);
  what_.Fill(static_cast<int>(found == kOffered.end() ? kOffered.size() - 1 : found - kOffered.begin()));
}

void StartStop::ShowHide() {
  MoveForm::ShowHide();
  const SSSub chosen = Chosen();
  const bool starts = chosen == StartAxis;
  const bool has_speed = starts || chosen == ChangeSpeed;
  speed_.Enable(has_speed && !speed_variable_.IsOn());
  speed_variable_.Enable(has_speed);
  direction_.Enable(starts);
  accel_.Enable(starts);
  drive_.Enable(chosen != StopAll);
}

void StartStop::Write(Instruction& record) const {
  MoveForm::Write(record);
  record.Type = SS;
  record.SubType = Chosen();
}

}  // namespace tavlo
