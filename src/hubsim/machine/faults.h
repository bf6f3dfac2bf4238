// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <string_view>

namespace tavlo::hubsim {

/// The faults of a drive by the bit of the fault code that stands for each, as a person calls them.
inline constexpr std::array<std::string_view, 14> kFaultNames{
    "position-limit", "ccw-limit", "cw-limit", "overtemp", "regen", "overvoltage", "undervoltage",
    "motor-short",    "hall",      "encoder",  "comm",     "save",  "timing",      "foldback",
};
/// Fault codes are below this.
inline constexpr int kFaultCodes = 1 << kFaultNames.size();

}  // namespace tavlo::hubsim
