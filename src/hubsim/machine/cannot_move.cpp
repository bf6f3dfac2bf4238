// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/cannot_move.h"

namespace tavlo::hubsim {

std::optional<Halt> CannotMove(int axis, const Machine& machine, const DriveBay& bay) {
  if (bay.PluggedModel(axis) == 0) return Halt{HaltKind::DriveLost, axis, 0};
  if (!machine.MotorOn(axis)) return Halt{HaltKind::DriveDisabled, axis, 0};
  return std::nullopt;
}

}  // namespace tavlo::hubsim
