// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cmath>

namespace tavlo {

/// The value forced between two ends. What is not a number becomes the lower end, so that no conversion to
/// a whole number behind it meets one.
[[nodiscard]] inline double Held(double value, double lowest, double highest) {
  return std::fmin(std::fmax(value, lowest), highest);
}

}  // namespace tavlo
