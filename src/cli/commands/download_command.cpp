// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <cmath>

#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/desk_on_line.h"
#include "cli/desk/settle.h"
#include "codegen/compile.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

ExitCode ExitOf(DownloadResult result) {
  switch (result) {
    case DownloadResult::Done: return ExitCode::Done;
    case DownloadResult::Refused:
    case DownloadResult::CannotCompile: return ExitCode::Refused;
    case DownloadResult::NoAnswer:
    case DownloadResult::StoppedInLines:
    case DownloadResult::StoppedInSystem:
    case DownloadResult::StoppedInPool:
    case DownloadResult::NoSum: return ExitCode::Hub;
    case DownloadResult::WrongSum: return ExitCode::Differs;
  }
  return ExitCode::Other;
}

class DownloadCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "download"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Send a program file to the hub and have the hub prove it by its sum";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddLineOptions(app, line_options_);
    AddAnswerOptions(app, answers_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    const auto on = DeskOnLine::Open(environment, console, line_options_, source, answers_.By());
    if (!on) return ExitCode::Port;
    return Transfer(console, *on);
  }

 private:
  [[nodiscard]] ExitCode Transfer(Console& console, DeskOnLine& on) const {
    try {
      const auto settled = OnSettledLine(console, on.desk, on.own.boxes, [&] { return Download(on.desk); });
      const auto result = settled.value_or(std::nullopt);
      const ExitCode code = result ? ExitOf(*result) : ExitCode::Hub;
      if (code == ExitCode::Hub) return HubFailure(console, on.line);
      if (code == ExitCode::Done) PrintProof(console, on.own, on.line.opened);
      return code;
    } catch (const Interrupted&) {
      if (on.own.progress.Started()) {
        console.Note("the program in the hub is not whole; download it again before you run it");
      }
      throw;
    }
  }

  /// What the hub has confirmed: compiling once more gives the very bytes that were sent.
  void PrintProof(Console& console, ConsoleDesk& desk, const OpenedPort& opened) const {
    Program& program = desk.desk.program();
    const double seconds = desk.progress.Seconds();
    const CompiledProgram compiled = CompileProgram(program);
    const std::string firmware = VersionText(program.HubVersion);
    if (json_) {
      console.Result(JsonLine(WithPort({{"firmware", firmware},
                                        {"model", kHubModels[program.HubIndex].name},
                                        {"bytes", desk.progress.BytesDone()},
                                        {"checksum", compiled.checksum},
                                        {"seconds", std::round(seconds * 1000) / 1000}},
                                       opened)));
      return;
    }
    console.Result("Downloaded " + Joined(desk.progress.BytesDone()) + " bytes to the " +
                   std::string(kHubModels[program.HubIndex].name) + ", firmware " + firmware +
                   "; it confirms the sum " + Joined(compiled.checksum));
    console.ResultPort(opened);
  }

  std::string path_;
  LineOptions line_options_;
  AnswerOptions answers_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeDownloadCommand() {
  return std::make_unique<DownloadCommand>();
}

}  // namespace tavlo::cli
