// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "cli/desk/console_desk.h"
#include "codegen/compile.h"

namespace tavlo::cli {

/// What the hub holds, seen from the file that a run was given.
enum class HubHolds {
  ThisProgram,
  AnotherAccepted,  ///< and the operator runs it all the same
  AnotherRefused,
  NotAnswered,  ///< told
};

/// Compares the program in the hub with the one that is to be shown, before it is started. The hub is
/// stopped.
class ProgramCheck {
 public:
  ProgramCheck(Source& source, Console& console, HubLine& line, AnswerBy by)
      : console_(console), own_(source, console, line, by, view_, run_) {}

  /// By the hub's sum of its last download; with `verify`, and where it has none, by all that it holds.
  [[nodiscard]] HubHolds Run(bool verify);

 private:
  [[nodiscard]] HubHolds CompareSums();
  [[nodiscard]] HubHolds CompareMemory();
  [[nodiscard]] HubHolds AskAboutAnother(std::string_view what);

  Console& console_;
  NoProgramView view_;
  NoRunView run_;
  ConsoleDesk own_;
};

}  // namespace tavlo::cli
