// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <span>
#include <string>

namespace tavlo {

/// What the command line has for an answer before there is any window.
struct CommandLineAnswer {
  std::string text;
  /// 0 with a text for standard output, 2 with one for standard error.
  int exit_code;
};

/// The answer to `--help`, `--version` and to what the program does not know; nothing to go on and open the
/// window. Options of the window system go by. `arguments` are those behind the program's name.
[[nodiscard]] std::optional<CommandLineAnswer> AnswerCommandLine(std::span<const char* const> arguments);

}  // namespace tavlo
