// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cmath>

namespace tavlo {

/// Returns the value limited to the range. NaN becomes the lower end, so that it never reaches a conversion
/// to a whole number.
[[nodiscard]] inline double Held(double value, double lowest, double highest) {
  return std::fmin(std::fmax(value, lowest), highest);
}

}  // namespace tavlo
