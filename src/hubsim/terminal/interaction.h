// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>

#include "hubsim/program/halt.h"

namespace tavlo::hubsim {

/// What a program stands still for.
enum class WaitsFor : std::uint8_t {
  Nothing,
  Acknowledge,  ///< the PC has not shown the line yet
  Resume,       ///< paused in front of a line
  Motion,
  Time,
  Input,
  Value,    ///< a value is entered on the keypad
  Enter,    ///< the keypad's ENTER, perhaps with jogging
  YesOrNo,  ///< "+" or "-"
  MenuKey,  ///< a number key
};

/// A line under way that has to do with the operator: the keypad, a hand wheel, inputs that jog. It is made
/// when the line begins and gone when the line is over; what it was given to work on outlives it. Times are
/// machine seconds.
class Interaction {
 public:
  virtual ~Interaction() = default;

  [[nodiscard]] virtual WaitsFor Waits() const = 0;
  /// A key of the operator terminal, as its byte.
  virtual void Key(char /*key*/, double /*now*/) {}
  /// The hand wheel of an axis was turned. Returns false if the line does not follow that wheel.
  virtual bool TurnKnob(int /*axis*/, int /*counts*/, double /*now*/) { return false; }
  /// Carries out what is due at `now`; called whenever something may have changed.
  virtual void Advance(double /*now*/) {}
  [[nodiscard]] virtual std::optional<double> NextEvent() const { return std::nullopt; }
  /// The line is left before it is over: brakes what it moves.
  virtual void Leave(double /*now*/) {}

  /// The line to go on with; empty while this one is not over.
  [[nodiscard]] virtual std::optional<int> Next() const = 0;
  /// Why the program must be halted.
  [[nodiscard]] virtual std::optional<Halt> Trouble() const { return std::nullopt; }
};

}  // namespace tavlo::hubsim
