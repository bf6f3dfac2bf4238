// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

// What is done to a machine, as an operator writes it: axes and inputs count from 1.

/// Returns the words of a line, which blanks and tabs part.
[[nodiscard]] std::vector<std::string_view> SplitWords(std::string_view line);
/// Returns 0..7 for "1" to "8".
[[nodiscard]] std::optional<int> ParseAxis(std::string_view word);
/// Returns 0..7 for "1" to "8", a drive's main inputs, and 8..15 for "X0" to "X7", in capitals or not.
[[nodiscard]] std::optional<int> ParseInput(std::string_view word);
/// Returns the code of a drive's faults: of a number from 0 to 16383, a bit each, or of the name of one.
[[nodiscard]] std::optional<int> ParseFault(std::string_view word);
/// Reads by how many counts a hand wheel is turned, at most `kMostKnobCounts` either way.
[[nodiscard]] std::optional<int> ParseCounts(std::string_view word);

/// Reads a whole number without a sign or blanks.
[[nodiscard]] std::optional<int> ParseWhole(std::string_view text);
/// Reads bytes as "fe0102" or "FE 01 02".
[[nodiscard]] std::optional<std::string> ParseHex(std::string_view text);
[[nodiscard]] std::string ToHex(std::string_view bytes);

}  // namespace tavlo::hubsim
