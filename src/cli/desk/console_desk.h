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

/// A Desk whose operator sits at the console. Everything it is made from must outlive it.
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

/// Makes and opens the line of the port. Nothing after the message of a failure.
[[nodiscard]] std::unique_ptr<HubLine> OpenLine(Environment& environment, Console& console,
                                                const LineOptions& options);

/// The model that a hub's identity names is one that there is. False after its message.
[[nodiscard]] bool IsKnownHub(Console& console, std::string_view identity);

/// The end of an exchange that went wrong: by the line if that has gone, which it tells, else by the hub.
[[nodiscard]] ExitCode HubFailure(Console& console, HubLine& line);

}  // namespace tavlo::cli
