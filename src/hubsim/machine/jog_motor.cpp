// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/jog_motor.h"

#include <utility>

#include "hubsim/machine/cannot_move.h"

namespace tavlo::hubsim {

void JogMotor::Want(int direction) {
  if (direction != blocked_) blocked_ = 0;
  wanted_ = blocked_ == 0 ? direction : 0;
}

std::optional<Halt> JogMotor::Advance(double now) {
  if (Motor().Idle()) ours_ = stopping_ = false;
  if (ours_ && !stopping_ && !Motor().Endless()) blocked_ = std::exchange(wanted_, 0);
  if (!ours_) {
    if (wanted_ == 0 || !Motor().Idle()) return std::nullopt;
    if (const auto halt = CannotMove(rate_.axis, *machine_, *bay_)) return halt;
    const double accel = machine_->StepsPerSecond2(rate_.axis, rate_.accel);
    Motor().RunOn(wanted_, {machine_->StepsPerSecond(rate_.axis, rate_.speed), accel, accel}, now);
    ours_ = true;
    return std::nullopt;
  }
  if (!stopping_ && wanted_ != Motor().Direction()) {
    Motor().Stop(now);
    stopping_ = true;
  }
  return std::nullopt;
}

}  // namespace tavlo::hubsim
