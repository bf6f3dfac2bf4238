// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <span>
#include <string>

namespace tavlo {

/// What the command line asks for that is answered before there is any window.
struct CommandLineAnswer {
  std::string text;
  /// 0 with a text for standard output, 2 with a text for standard error.
  int exit_code;
};

/// Returns the answer to `--help`, `--version`, unknown options and a second file; nothing if the program
/// should go on and open its window. Options of the window system are skipped. `arguments` are those after
/// the program's name.
[[nodiscard]] std::optional<CommandLineAnswer> AnswerCommandLine(std::span<const char* const> arguments);

/// Returns the program file that the command line names; empty if there is none. For arguments that need no
/// answer.
[[nodiscard]] std::string FileToOpen(std::span<const char* const> arguments);

}  // namespace tavlo
