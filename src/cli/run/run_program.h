// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "cli/desk/console_desk.h"
#include "codegen/compile.h"

namespace tavlo::cli {

/// What the hub holds, compared with the file that the run was given.
enum class HubHolds {
  ThisProgram,
  AnotherAccepted,  ///< and the operator chose to run it
  AnotherRefused,
  NotAnswered,  ///< the hub could not be asked, which has been reported
};

/// Stops the hub and compares its program with the one that is to be shown, before a run is started.
class ProgramCheck {
 public:
  ProgramCheck(Source& source, Console& console, HubLine& line, AnswerBy by)
      : console_(console), own_(source, console, line, by, view_, run_) {}

  /// Compares the hub's sum of its last download. With `verify`, or if the hub has no sum, compares all that
  /// the hub holds.
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
