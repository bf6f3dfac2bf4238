// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <optional>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/halt.h"
#include "hubsim/program/statement.h"

namespace tavlo::hubsim {

/// One axis that the operator turns by hand while a line waits. While the axis is under way for the program
/// it is left alone.
class JogMotor {
 public:
  JogMotor(Machine& machine, const DriveBay& bay, const JogRate& rate)
      : machine_(&machine), bay_(&bay), rate_(rate) {}

  [[nodiscard]] int AxisNumber() const { return rate_.axis; }
  /// Asks for a direction: 1 clockwise, -1 counter-clockwise, 0 to stand. Once a limit switch has stopped the
  /// axis in a direction, that direction is ignored until the other one, or 0, is asked for.
  void Want(int direction);
  [[nodiscard]] int Wanted() const { return wanted_; }
  /// Starts or brakes the axis as was asked for. Returns why it cannot turn; empty if it can.
  [[nodiscard]] std::optional<Halt> Advance(double now);
  /// No motion that it began is under way.
  [[nodiscard]] bool Standing() const { return !ours_; }

 private:
  [[nodiscard]] Axis& Motor() const { return machine_->At(rate_.axis); }

  Machine* machine_;
  const DriveBay* bay_;
  JogRate rate_;
  int wanted_ = 0;
  int blocked_ = 0;
  bool ours_ = false;      ///< the motion under way is this one's
  bool stopping_ = false;  ///< and is being braked by it
};

}  // namespace tavlo::hubsim
