// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <vector>

#include "hubsim/hub.h"

namespace tavlo::cli {

/// Finds out that a program goes round without an end while no time passes, as one does that asks for an
/// input again and again.
class Circling {
 public:
  /// Time has passed, or something was done to the machine.
  void Restart();
  /// A line is about to run. Returns true if the program has come back to it twice by the same lines and has
  /// changed nothing by that: it will go on so until something else changes.
  [[nodiscard]] bool Closes(const hubsim::Hub& hub, int line);
  /// The lines of that round.
  [[nodiscard]] const std::vector<int>& Round() const { return round_; }

 private:
  /// All that lines which take no time can change, and the line that comes next.
  struct Moment {
    int line = 0;
    hubsim::Flow flow;
    std::array<int, hubsim::kVariableCount> variables{};
    struct AxisState {
      double position = 0;
      double speed = 0;
      double amps = 0;
      bool motor_on = false;
      int outputs = 0;
      bool operator==(const AxisState&) const = default;
    };
    std::array<AxisState, hubsim::kAxisCount> axes{};

    bool operator==(const Moment&) const = default;
  };
  [[nodiscard]] static Moment Of(const hubsim::Hub& hub, int line);

  int lines_ = 0;
  // A moment is kept for twice as many lines each time, so that it lies in the round at last.
  bool kept_ = false;
  Moment moment_;
  std::size_t lines_to_keep_it_ = 1;
  std::vector<int> since_;
  std::vector<int> round_;
};

}  // namespace tavlo::cli
