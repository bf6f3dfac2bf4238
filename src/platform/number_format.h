// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

/// Returns the text of a value by a format picture: "0" is a forced digit, "#" an optional one, "." the
/// point, and "," among the digits asks for groups of three. Does not depend on the locale.
///
/// Rounds half away from zero on the value's 15 significant decimal digits; a value that shows as zero shows
/// no sign. "####" of a value that rounds to 0 is the empty text.
[[nodiscard]] std::string Format(double value, std::string_view picture);

/// Returns a number as it reads when it is joined into a text: up to 15 significant digits, a leading zero
/// before the point, no blanks: "0.01".
[[nodiscard]] std::string Joined(double value);
/// The same for a 32-bit float, whose decimals are good for 7 digits: 1.53f reads "1.53".
[[nodiscard]] std::string Joined(float value);
[[nodiscard]] std::string Joined(int value);

/// Returns a number as it reads when it is printed: preceded by a blank or its sign, followed by a blank,
/// without a leading zero: " .01 ".
[[nodiscard]] std::string Printed(double value);

/// Returns a number as it stands in a file's records: the shortest decimal that reads back to the value, with
/// no leading zero before the point, and in E form from 1E+07 for a Single (1E+15 for a Double): "3", ".5",
/// "1E+07".
[[nodiscard]] std::string Written(float value);
[[nodiscard]] std::string Written(double value);

/// Returns the numeric value of a text: skips leading blanks, takes the longest number at the start (sign,
/// digits, point, E or D exponent) and ignores the rest. Returns 0 if there is no number.
[[nodiscard]] double Val(std::string_view text);

/// Reads a whole text as a number; blanks around it are allowed. Returns nothing if it is not a number.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text);

/// Rounds to the nearest whole number, ties to even. The result may lie outside any integer type.
[[nodiscard]] double RoundHalfEven(double value);

}  // namespace tavlo
