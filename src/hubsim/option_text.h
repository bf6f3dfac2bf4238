// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// Returns 138 for "1.38". Empty for anything but one to three digits, a point and two digits.
[[nodiscard]] std::optional<int> ParseHundredths(std::string_view text);
/// Returns 38 for "1.38". Empty outside 1.00 to 2.27, the revisions that a greeting can carry.
[[nodiscard]] std::optional<int> ParseFirmware(std::string_view text);
/// Reads model codes by axis, as "1,4,3"; an axis that is not named has no drive. Codes are 0..50, and 100
/// for a drive that no list knows.
[[nodiscard]] std::optional<std::array<int, kAxisCount>> ParseDrives(std::string_view text);
/// Reads revisions from 0.00 to 9.99 by axis, as "1.89,2.00", into hundredths; an axis that is not named has
/// that of `others`.
[[nodiscard]] std::optional<std::array<int, kAxisCount>> ParseRevisions(
    std::string_view text, const std::array<int, kAxisCount>& others);

/// Reads a whole number without a sign or blanks.
[[nodiscard]] std::optional<int> ParseWhole(std::string_view text);
/// Reads bytes as "fe0102" or "FE 01 02".
[[nodiscard]] std::optional<std::string> ParseHex(std::string_view text);
[[nodiscard]] std::string ToHex(std::string_view bytes);

}  // namespace tavlo::hubsim
