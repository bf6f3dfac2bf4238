// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>

#include "cli/command.h"
#include "cli/console_desk.h"
#include "cli/key_terminal.h"
#include "cli/options.h"
#include "cli/run_session.h"
#include "cli/trace.h"
#include "desk/main_window.h"
#include "link/execution.h"

namespace tavlo::cli {
namespace {

/// Titles of the boxes by which the drives are refused; any other box of that check tells of a hub that
/// did not answer.
constexpr std::array<std::string_view, 3> kDriveRefusals = {"Old Firmware", "Missing drive", "Wrong drive"};

ExitCode ExitOf(RunEnd end, Console& console) {
  switch (end) {
    case RunEnd::Interrupted: return ExitCode::Interrupted;
    case RunEnd::Stopped:
    case RunEnd::TimeOver: return ExitCode::Done;
    case RunEnd::Halted: return ExitCode::Halted;
    case RunEnd::Restarted:
      console.Note("the hub has been switched off and on; its program does not run any more");
      return ExitCode::Halted;
    case RunEnd::PortLost:
      console.Note("the port has gone; check the cable. The hub's program may still be running");
      return ExitCode::Port;
    case RunEnd::OutputLost:
    case RunEnd::None: return ExitCode::Other;
  }
  return ExitCode::Other;
}

class RunCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "run"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Run the program in the hub and print each line as it runs";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, false);
    AddLineOptions(app, line_options_);
    AddSeconds(app, "--for", seconds_, "Stop the program after SECONDS");
    app.add_flag("--no-status", no_status_, "Print no inputs and outputs");
    AddAnswerOptions(app, answers_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    KeyTerminal keys(environment.feed);
    Environment asking = environment;
    if (environment.read_line) {
      asking.read_line = [&] {
        const LineTerminal lines(keys);
        return environment.read_line();
      };
    }
    Console console(asking);
    Source source;
    InitSession(source);
    if (!path_.empty() && !LoadProgram(source, console, path_)) return ExitCode::File;
    const auto line = OpenLine(environment, console, line_options_.Name());
    if (!line) return ExitCode::Port;
    std::optional<Trace> trace;
    if (line_options_.trace) trace.emplace(*line, environment.err);
    RunReporter reporter(console, line->Time(), source, !path_.empty(), json_);
    RunInput input(console, environment.feed, keys, line->Time());
    RunSession session(console, *line, reporter, input, {seconds_, !no_status_, !path_.empty()});
    ConsoleDesk desk(source, console, *line, answers_.By(), session.View(), session);
    session.Attach(desk.desk);
    const ExecuteResult result = tavlo::Execute(desk.desk);
    return result == ExecuteResult::Ran ? ExitOf(session.End(), console)
                                        : NotStarted(result, console, *line, desk.boxes);
  }

 private:
  static ExitCode NotStarted(ExecuteResult result, Console& console, HubLine& line,
                             const ConsoleBoxes& boxes) {
    switch (result) {
      case ExecuteResult::DrivesNotOK:
        if (std::ranges::find(kDriveRefusals, boxes.LastTitle()) != kDriveRefusals.end()) {
          return ExitCode::Refused;
        }
        return HubFailure(console, line);
      case ExecuteResult::HubSilent:
      case ExecuteResult::UnknownHub:
      case ExecuteResult::NoAnswer: return HubFailure(console, line);
      case ExecuteResult::Declined: return ExitCode::Refused;
      case ExecuteResult::Busy:
      case ExecuteResult::Ran: return ExitCode::Other;
    }
    return ExitCode::Other;
  }

  std::string path_;
  LineOptions line_options_;
  AnswerOptions answers_;
  std::optional<double> seconds_;
  bool no_status_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeRunCommand() {
  return std::make_unique<RunCommand>();
}

}  // namespace tavlo::cli
