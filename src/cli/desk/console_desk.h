// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

#include "cli/console/console.h"
#include "cli/console/exit_code.h"
#include "cli/console/options.h"
#include "cli/desk/console_services.h"
#include "cli/desk/program_files.h"
#include "cli/desk/progress.h"
#include "cli/desk/settling_boxes.h"
#include "qt/qt_services.h"
#include "session/desk.h"

namespace tavlo::cli {

/// A Desk for an operator at the console. Everything that it is made from must outlive it.
class ConsoleDesk {
 public:
  ConsoleDesk(Source& source, Console& console, HubLine& line, AnswerBy by, ProgramView& view, RunView& run);
  ConsoleDesk(const ConsoleDesk&) = delete;
  ConsoleDesk& operator=(const ConsoleDesk&) = delete;

 private:
  ConsoleBeeper beeper_;
  NoSettings settings_;
  NoDialogs dialogs_;
  NoLoading loading_;
  QtFileStore files_;

 public:
  SettlingBoxes boxes;
  ConsoleProgress progress;
  Desk desk;
};

[[nodiscard]] int LinesInUse(const Program& program);

/// Makes and opens the line of the port. Returns null after a message if that fails.
[[nodiscard]] std::unique_ptr<HubLine> OpenLine(Environment& environment, Console& console,
                                                const LineOptions& options);

/// Whether the hub's identity names a known hub model. Returns false after a message.
[[nodiscard]] bool IsKnownHub(Console& console, std::string_view identity);

/// Returns the exit code of an exchange that failed, and reports the port: the line has been lost, or else
/// the hub failed.
[[nodiscard]] ExitCode HubFailure(Console& console, HubLine& line);

}  // namespace tavlo::cli
