// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <functional>

#include "cli/commands/command.h"
#include "cli/console/key_terminal.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "cli/desk/program_files.h"
#include "cli/desk/settle.h"
#include "cli/desk/trace.h"
#include "cli/run/run_log_file.h"
#include "cli/run/run_program.h"
#include "cli/run/run_session.h"
#include "link/execution.h"
#include "session/source.h"

namespace tavlo::cli {
namespace {

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
    AddFlagOfFile(app, "--verify", verify_, "Read the hub's program first and compare it with FILE");
    AddFlag(app, "--no-status", no_status_, "Print no inputs and outputs");
    AddOutput(app, "--log", log_path_, "Write the log of the run to FILE, as CSV");
    AddAnswerOptions(app, answers_);
    AddJson(app, json_);
  }

  [[nodiscard]] bool PrintsEvents() const override { return true; }
  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    KeyTerminal keys(environment.feed);
    Console console(environment);
    console.ReadLinesOn(keys);
    if (IsStandard(log_path_)) {
      console.Note("the log and the rows of the run both want standard output");
      return ExitCode::Usage;
    }
    if (!log_path_.empty() && IsSameFile(console, path_, log_path_)) return ExitCode::File;
    Source source;
    InitSession(source);
    if (!path_.empty() && !LoadProgram(source, console, path_)) return ExitCode::File;
    const auto line = OpenLine(environment, console, line_options_);
    if (!line) return ExitCode::Port;
    std::optional<Trace> trace;
    if (line_options_.trace) trace.emplace(*line, environment.err);
    bool known = !path_.empty();
    if (known) {
      ProgramCheck check(source, console, *line, answers_.By());
      switch (check.Run(verify_)) {
        case HubHolds::ThisProgram: break;
        case HubHolds::AnotherAccepted: known = false; break;
        case HubHolds::AnotherRefused: return ExitCode::Differs;
        case HubHolds::NotAnswered: return HubFailure(console, *line);
      }
    }
    return RunIt(environment, console, keys, *line, source, known);
  }

 private:
  /// `known`: the source holds the program that the hub runs.
  ExitCode RunIt(Environment& environment, Console& console, KeyTerminal& keys, HubLine& line, Source& source,
                 bool known) {
    RunReporter reporter(console, line.Time(), source, known, json_);
    RunInput input(console, environment.feed, keys, line.Time());
    RunSession session(console, line, reporter, input, {seconds_, !no_status_, known});
    ConsoleDesk desk(source, console, line, answers_.By(), session.View(), session);
    session.Attach(desk.desk, desk.boxes);
    RunLogFile log(console, line.Time(), log_path_, known);
    if (!log.Begin(desk.desk)) return ExitCode::File;
    const auto result =
        OnSettledLine(console, desk.desk, desk.boxes, [&] { return tavlo::Execute(desk.desk); });
    const bool logged = log.Write();
    if (!result) return HubFailure(console, line);
    if (*result != ExecuteResult::Ran) return NotStarted(*result, console, line, desk.boxes);
    const ExitCode code = ExitOf(session.End(), console);
    return code == ExitCode::Done && !logged ? ExitCode::File : code;
  }

  static ExitCode NotStarted(ExecuteResult result, Console& console, HubLine& line,
                             const ConsoleBoxes& boxes) {
    switch (result) {
      case ExecuteResult::DrivesNotOK:
        // Otherwise the hub did not answer when it was asked for its drives.
        if (!boxes.Shown().empty() && boxes.Shown().back().tells == Tells::DrivesRefused) {
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
  std::string log_path_;
  bool verify_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeRunCommand() {
  return std::make_unique<RunCommand>();
}

}  // namespace tavlo::cli
