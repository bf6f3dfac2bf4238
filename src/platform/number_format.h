// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

/// Text of a value by a format picture: "0" a forced digit, "#" an optional one, "." the point,
/// "," among the digits groups of three. No locale is ever in play.
///
/// Rounds half away from zero on the value's 15 significant decimal digits; a value that shows as
/// zero shows no sign. "####" of a value that rounds to 0 is the empty text.
[[nodiscard]] std::string Format(double value, std::string_view picture);

/// A number as it reads when it is joined into a text: up to 15 significant digits, a leading zero
/// before the point, no blanks: "0.01".
[[nodiscard]] std::string Joined(double value);
/// The same for a 32-bit float, whose decimal is good for 7 digits: 1.53f reads "1.53".
[[nodiscard]] std::string Joined(float value);
[[nodiscard]] std::string Joined(int value);

/// A number as it reads when printed as a number: a blank or the sign before it, a blank behind,
/// no leading zero: " .01 ".
[[nodiscard]] std::string Printed(double value);

/// A number in a file's records: the shortest decimal that reads back to the value, with no leading
/// zero before the point and E form from 1E+07 for a Single (1E+15 for a Double): "3", ".5", "1E+07".
[[nodiscard]] std::string Written(float value);
[[nodiscard]] std::string Written(double value);

/// Numeric value of a text: leading blanks are skipped, the longest number at the start counts
/// (sign, digits, point, E or D exponent), what stands behind is ignored; 0 without a number.
[[nodiscard]] double Val(std::string_view text);

/// Strict reading of a whole text as a number, blanks around it allowed. Nothing if it is not one.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text);

/// Rounds to the nearest whole number, ties to even. The result may lie outside any integer type.
[[nodiscard]] double RoundHalfEven(double value);

}  // namespace tavlo
