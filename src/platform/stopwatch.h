// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>

#include "platform/services.h"

namespace tavlo {

/// Measures time on a clock that restarts at midnight and that somebody may set. Must be read at least every
/// twelve hours.
class Stopwatch {
 public:
  /// Whoever waits for as long reads it in time.
  static constexpr double kLongestWait = 3600;

  explicit Stopwatch(Clock& clock) : clock_(clock), last_(clock.Timer()) {}

  void Restart() {
    seconds_ = 0;
    last_ = clock_.Timer();
  }

  [[nodiscard]] double Seconds() {
    constexpr double kDay = 86400;
    const double now = clock_.Timer();
    const double step = now - last_;
    last_ = now;
    seconds_ += step < -kDay / 2 ? step + kDay : std::max(step, 0.0);
    return seconds_;
  }

 private:
  Clock& clock_;
  double last_;
  double seconds_ = 0;
};

}  // namespace tavlo
