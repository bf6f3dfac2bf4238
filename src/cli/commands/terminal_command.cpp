// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/options.h"
#include "cli/desk/desk_on_line.h"
#include "cli/desk/settle.h"
#include "cli/run/terminal_session.h"
#include "link/drive_check.h"
#include "link/drive_terminal.h"
#include "link/polled.h"

namespace tavlo::cli {
namespace {

/// The drives answer within a few hundredths of a second.
constexpr double kWaitSeconds = 0.5;

ExitCode ExitOf(TerminalEnd end, Console& console) {
  switch (end) {
    // Either is how a terminal is closed.
    case TerminalEnd::EndOfInput:
    case TerminalEnd::Interrupted: return ExitCode::Done;
    case TerminalEnd::PortLost: console.Note("the port has gone; check the cable"); return ExitCode::Port;
    case TerminalEnd::OutputLost: return ExitCode::Other;
  }
  return ExitCode::Other;
}

class TerminalCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "terminal"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Pass text commands to the drives behind the hub and print what they answer";
  }
  void AddOptions(CLI::App& app) override {
    AddLineOptions(app, line_options_);
    AddNoStop(app, no_stop_);
    AddSeconds(app, "--wait", wait_seconds_,
               "How long a command from a file or a pipe has for its answer; 0.5 unless told");
    AddJson(app, json_);
  }

  [[nodiscard]] bool PrintsEvents() const override { return true; }
  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    const auto on = DeskOnLine::OpenNew(environment, console, line_options_);
    if (!on) return ExitCode::Port;
    const std::string identity = no_stop_ ? CheckDrive(on->desk) : StopAndCheck(*on, console);
    if (identity.empty() || !IsKnownHub(console, identity)) return HubFailure(console, on->line);
    if (!TerminalAllowed(on->desk.source)) {
      console.Note("the drive terminal needs a hub of firmware 1.19 or later; this one has " +
                   on->desk.source.link.DriveVersion);
      return ExitCode::Refused;
    }
    TerminalSession session(environment, on->line, on->desk, {wait_seconds_.value_or(kWaitSeconds), json_});
    on->desk.terminal = &session;
    on->line.LimitTo(std::nullopt);
    console.Inform("the drive terminal is open" + On(on->line.opened) +
                   "; the end of input or Ctrl-C closes it");
    return ExitOf(session.Run(), console);
  }

 private:
  /// To a hub that waits at a prompt the question is a key, which may turn an axis.
  static std::string StopAndCheck(DeskOnLine& on, Console& console) {
    const auto identity = OnSettledLine(console, on.desk, on.own.boxes, [&] {
      StopHub(on.desk.link());
      return CheckDrive(on.desk);
    });
    return identity.value_or("");
  }

  LineOptions line_options_;
  bool no_stop_ = false;
  std::optional<double> wait_seconds_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeTerminalCommand() {
  return std::make_unique<TerminalCommand>();
}

}  // namespace tavlo::cli
