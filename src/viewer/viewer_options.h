// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <span>
#include <string>

namespace tavlo::viewer {

/// What the viewer prints instead of showing a window.
struct PrintedAnswer {
  std::string text;
  int exit_code = 0;
};

/// Returns the answer to `--help` and `--version`; nothing if the viewer should go on and show its window.
[[nodiscard]] std::optional<PrintedAnswer> AnswerOptions(std::span<const char* const> arguments);

}  // namespace tavlo::viewer
