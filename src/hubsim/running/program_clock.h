// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

namespace tavlo::hubsim {

/// Program time, which runs `speedup` times as fast as the clock on the wall. Starts at 0 with the first
/// time it is given.
class ProgramClock {
 public:
  explicit ProgramClock(double speedup) : speedup_(speedup > 0 ? speedup : 1) {}

  void StartAt(double wall) {
    if (started_) return;
    started_ = true;
    epoch_ = wall;
  }
  [[nodiscard]] double ToProgram(double wall) const { return (wall - epoch_) * speedup_; }
  [[nodiscard]] double ToWall(double program) const { return epoch_ + program / speedup_; }

 private:
  double speedup_;
  double epoch_ = 0;
  bool started_ = false;
};

}  // namespace tavlo::hubsim
