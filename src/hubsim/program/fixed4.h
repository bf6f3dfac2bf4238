// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>

namespace tavlo::hubsim {

/// A number with four decimals, counted in ten-thousandths.
using Fixed4 = std::int64_t;
inline constexpr Fixed4 kFixed4One = 10000;

}  // namespace tavlo::hubsim
