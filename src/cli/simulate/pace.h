// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <chrono>
#include <optional>

#include "cli/console/interrupts.h"

namespace tavlo::cli {

/// Lets a run wait for the clock on the wall, and end when the operator interrupts it.
class Pace {
 public:
  /// Without a `speedup` the run waits for nothing.
  explicit Pace(std::optional<double> speedup)
      : speedup_(speedup), start_(std::chrono::steady_clock::now()) {}

  [[nodiscard]] bool Waits() const { return speedup_.has_value(); }
  /// Sleeps until so many seconds of the run are over. Throws Interrupted.
  void WaitUntil(double seconds) const;

 private:
  Interrupts interrupts_;
  std::optional<double> speedup_;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace tavlo::cli
