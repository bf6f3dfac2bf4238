// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <optional>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/halt.h"
#include "hubsim/program/statement.h"

namespace tavlo::hubsim {

/// One axis that the operator turns by hand while a line waits. It leaves an axis alone that is under way for
/// the program.
class JogMotor {
 public:
  JogMotor(Machine& machine, const DriveBay& bay, const JogRate& rate)
      : machine_(&machine), bay_(&bay), rate_(rate) {}

  [[nodiscard]] int AxisNumber() const { return rate_.axis; }
  /// Wants the axis to turn: 1 clockwise, -1 counter-clockwise, 0 not at all. A direction in which a limit
  /// switch stopped the axis is not taken before another one, or none, was wanted.
  void Want(int direction);
  [[nodiscard]] int Wanted() const { return wanted_; }
  /// Brings the axis nearer to what is wanted. Empty, or why it cannot turn.
  [[nodiscard]] std::optional<Halt> Advance(double now);
  /// Nothing of its doing is under way.
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
