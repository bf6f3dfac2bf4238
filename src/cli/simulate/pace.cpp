// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/pace.h"

#include <poll.h>

#include <algorithm>
#include <cmath>

#include "cli/console/environment.h"

namespace tavlo::cli {
namespace {

/// A wait that is too long for the system's count of milliseconds is taken up again.
constexpr double kLongestSleep = 3600;

}  // namespace

void Pace::WaitUntil(double seconds) const {
  for (;;) {
    if (Interrupts::Pending()) throw Interrupted{Interrupts::TimeOver()};
    if (!speedup_) return;
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    const double left = seconds / *speedup_ - passed.count();
    if (left <= 0) return;
    pollfd interrupted = {Interrupts::Descriptor(), POLLIN, 0};
    poll(&interrupted, 1, static_cast<int>(std::ceil(std::min(left, kLongestSleep) * 1000)));
  }
}

}  // namespace tavlo::cli
