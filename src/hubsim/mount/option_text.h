// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// "1.38" gives 138. One to three digits, then a point and two digits; anything else is empty.
[[nodiscard]] std::optional<int> ParseHundredths(std::string_view text);
/// "1.38" gives 38. Empty outside 1.00 to 2.27, the revisions that a greeting can carry.
[[nodiscard]] std::optional<int> ParseFirmware(std::string_view text);
/// "1,4,3": model codes by axis, the axes not named having no drive. Codes are 0..50 and 100, a drive that no
/// list knows.
[[nodiscard]] std::optional<std::array<int, kAxisCount>> ParseDrives(std::string_view text);
/// "1.89,2.00": revisions 0.00 to 9.99 by axis in hundredths; the axes not named have those of `others`.
[[nodiscard]] std::optional<std::array<int, kAxisCount>> ParseRevisions(
    std::string_view text, const std::array<int, kAxisCount>& others);

/// A whole number without a sign or blanks.
[[nodiscard]] std::optional<int> ParseWhole(std::string_view text);
/// "fe0102" or "FE 01 02".
[[nodiscard]] std::optional<std::string> ParseHex(std::string_view text);
[[nodiscard]] std::string ToHex(std::string_view bytes);

}  // namespace tavlo::hubsim
