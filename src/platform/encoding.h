// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

namespace tavlo {

/// Returns 0..255, whatever the sign of a char.
[[nodiscard]] constexpr int CodeOf(char c) {
  return static_cast<unsigned char>(c);
}

/// Returns a program's text in UTF-8. Such texts are single bytes, each the code point 0..255.
[[nodiscard]] std::string Utf8FromLatin1(std::string_view text);

/// The same, safe for one row of a terminal. A control character, which may come from a file and would act on
/// the terminal, is shown as \x and its code.
[[nodiscard]] std::string ShownText(std::string_view latin1);

/// Returns a message for the operator in UTF-8. It may mix texts of programs, which are single bytes, with
/// file names in UTF-8: whatever is valid UTF-8 is kept. Control characters are shown as by ShownText().
[[nodiscard]] std::string ShownMessage(std::string_view text);

/// Returns two lower-case hex digits for each byte, without blanks.
[[nodiscard]] std::string HexOf(std::string_view bytes);

}  // namespace tavlo
