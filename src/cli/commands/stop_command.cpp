// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/desk_on_line.h"
#include "cli/desk/settle.h"

namespace tavlo::cli {
namespace {

class StopCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "stop"; }
  [[nodiscard]] std::string_view Description() const override { return "Stop the machine, asking nothing"; }
  void AddOptions(CLI::App& app) override {
    AddLineOptions(app, line_options_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    const auto on = DeskOnLine::OpenNew(environment, console, line_options_);
    if (!on) {
      console.Note("nothing was sent; if the machine moves, use its own stop");
      return ExitCode::Port;
    }
    const bool silent = StopTalk(on->desk);
    if (!on->desk.Comm1.PortOpen()) return HubFailure(console, on->line);
    const OpenedPort& opened = on->line.opened;
    if (json_) {
      console.Result(JsonLine(WithPort({{"sent", "S"}, {"silent", silent}}, opened)));
    } else {
      console.Result("Sent the stop to the hub" + On(opened));
    }
    if (!silent) console.Note("the hub goes on sending; if the machine moves, use its own stop");
    return ExitCode::Done;
  }

 private:
  LineOptions line_options_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeStopCommand() {
  return std::make_unique<StopCommand>();
}

}  // namespace tavlo::cli
