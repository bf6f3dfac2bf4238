// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "hubsim/program/io.h"
#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// Levels of all inputs and outputs. A set bit is high, which is the open, inactive state; all start high.
class IoBoard {
 public:
  IoBoard();

  /// True if the level changed. Remembers the edge.
  bool SetInput(int axis, int input, bool high);
  [[nodiscard]] bool Input(int axis, int input) const;
  /// Bits 0..7 are inputs 1..8.
  [[nodiscard]] std::uint8_t MainInputs(int axis) const;
  /// Bit i is Xi.
  [[nodiscard]] std::uint8_t XInputs(int axis) const;
  /// Bits 0..3 the main outputs, 4..6 Y1..Y3.
  [[nodiscard]] std::uint8_t Outputs(int axis) const;

  /// Whether the condition holds. An edge does if it was seen since the last `ForgetEdges` of this input.
  [[nodiscard]] bool Holds(const InputRef& input, Condition condition) const;
  void ForgetEdges(const InputRef& input);
  void ForgetAllEdges();

  /// Sets an output at `now`; a pulse falls back after `width_s`, unless another action on the same output
  /// comes before that.
  void Act(int axis, int output, OutputAction action, double width_s, double now);
  void ReleaseOutputs();
  [[nodiscard]] std::optional<double> NextEvent() const;
  /// Ends the pulses that are due at `now`.
  void Advance(double now);

 private:
  struct Pulse {
    double end;
    int axis;
    int output;
    bool level_after;
  };

  void SetOutput(int axis, int output, bool high);

  std::array<std::uint16_t, kAxisCount> inputs_{};
  std::array<std::uint16_t, kAxisCount> risen_{};
  std::array<std::uint16_t, kAxisCount> fallen_{};
  std::array<std::uint8_t, kAxisCount> outputs_{};
  std::vector<Pulse> pulses_;
};

}  // namespace tavlo::hubsim
