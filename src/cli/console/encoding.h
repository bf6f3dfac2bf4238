// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

namespace tavlo::cli {

/// A program's texts are single bytes, each the code point 0..255.
[[nodiscard]] std::string Utf8FromLatin1(std::string_view text);

/// The same, fit for one row of a terminal: a control character, which a file may bring and a terminal
/// would obey, shows as \x and its code.
[[nodiscard]] std::string ShownText(std::string_view latin1);

/// A message for the operator. Texts of programs in it are single bytes, names of files are UTF-8 already:
/// what is valid UTF-8 stays. Control characters show as in ShownText().
[[nodiscard]] std::string ShownMessage(std::string_view text);

/// Two lower-case digits a byte, no blanks.
[[nodiscard]] std::string HexOf(std::string_view bytes);

}  // namespace tavlo::cli
