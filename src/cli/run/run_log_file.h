// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "cli/console/console.h"
#include "session/desk.h"
#include "session/run_log.h"

namespace tavlo::cli {

/// The log of a run in a file that the operator named. Without a name there is none.
class RunLogFile {
 public:
  RunLogFile(Console& console, Clock& clock, std::string path, bool program_known);

  /// Makes the file before anything moves, so that a log that cannot be written keeps the run from beginning,
  /// and lets the desk log its run. Returns false after a message.
  [[nodiscard]] bool Begin(Desk& desk);
  /// Writes what has been logged, however the run ended. Returns false after a message.
  [[nodiscard]] bool Write();

 private:
  Console& console_;
  std::string path_;
  RunLog log_;
};

}  // namespace tavlo::cli
