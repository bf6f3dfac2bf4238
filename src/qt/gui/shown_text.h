// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tavlo {

// The core's texts are single bytes. What a program holds (names, comments, prompts) is Latin-1; the path of
// a file is in the file system's own encoding.

[[nodiscard]] QString FromText(std::string_view text);
[[nodiscard]] std::string ToText(const QString& text);
/// The same with blanks in place of line ends and other control characters, which would break one
/// line.
[[nodiscard]] QString InOneLine(std::string_view text);

[[nodiscard]] QString FromPath(std::string_view path);
[[nodiscard]] std::string ToPath(const QString& path);

/// For a message, which may name a file, an axis or an error of the system. It is read as UTF-8 if it is
/// valid UTF-8, which Latin-1 text with accents practically never is; otherwise as Latin-1.
[[nodiscard]] QString FromMessage(std::string_view message);

}  // namespace tavlo
