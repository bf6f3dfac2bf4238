// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <memory>
#include <optional>

#include "hubsim/interaction.h"
#include "hubsim/line_runner.h"

namespace tavlo::hubsim {

/// One axis that the operator turns by hand while a line waits. It leaves an axis alone that is under way for
/// the program.
class JogMotor {
 public:
  JogMotor(const LineContext& context, const JogRate& rate)
      : machine_(&context.machine), bay_(&context.bay), rate_(rate) {}

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

/// Waits for ENTER; meanwhile the arrow keys turn two axes.
[[nodiscard]] std::unique_ptr<Interaction> WaitForEnter(const EnterStatement& prompt,
                                                        const LineContext& context);

/// Waits for an input; meanwhile the jog inputs of the axis's drive turn it.
[[nodiscard]] std::unique_ptr<Interaction> WaitWithJog(const WaitInputStatement& wait,
                                                       const LineContext& context);

}  // namespace tavlo::hubsim
