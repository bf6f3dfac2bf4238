// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string_view>

namespace tavlo::cli {

/// What a command returns to the shell.
enum class ExitCode : int {
  Done = 0,
  Other = 1,
  Usage = 2,
  Refused = 3,
  File = 4,
  Port = 5,
  Hub = 6,
  Differs = 7,
  Halted = 8,
  Waits = 9,
  Interrupted = 130,
};

struct ExitCodeRow {
  ExitCode code;
  std::string_view meaning;
};

inline constexpr std::array<ExitCodeRow, 11> kExitCodes = {{
    {ExitCode::Done, "done"},
    {ExitCode::Other, "something else went wrong"},
    {ExitCode::Usage, "the command line is not understood"},
    {ExitCode::Refused, "the program was refused by a check"},
    {ExitCode::File, "a file cannot be read or written"},
    {ExitCode::Port, "the port cannot be opened, or has gone"},
    {ExitCode::Hub, "the hub is silent or answers wrongly"},
    {ExitCode::Differs, "the sum differs, or the hub holds another program"},
    {ExitCode::Halted, "the hub reported a halt, a fault or a restart"},
    {ExitCode::Waits, "the simulated program waits for ever"},
    {ExitCode::Interrupted, "interrupted"},
}};

[[nodiscard]] constexpr std::string_view MeaningOf(ExitCode code) {
  for (const ExitCodeRow& row : kExitCodes) {
    if (row.code == code) return row.meaning;
  }
  return "";
}

}  // namespace tavlo::cli
