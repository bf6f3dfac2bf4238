// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <cmath>

#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/desk_on_line.h"
#include "cli/desk/settle.h"
#include "link/drive_check.h"
#include "link/upload.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "session/source.h"

namespace tavlo::cli {
namespace {

ExitCode ExitOf(UploadResult result) {
  switch (result) {
    case UploadResult::Done: return ExitCode::Done;
    case UploadResult::Stopped:
    case UploadResult::CannotDecode: return ExitCode::Hub;
    case UploadResult::WrongSum: return ExitCode::Differs;
  }
  return ExitCode::Other;
}

class UploadCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "upload"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Read the program back from the hub and write it to a program file";
  }
  void AddOptions(CLI::App& app) override {
    AddNewFile(app, "FILE", path_);
    AddLineOptions(app, line_options_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    if (ResultsCollide(console, json_, path_)) return ExitCode::Usage;
    const PortName port = line_options_.Name();
    Source source;
    InitSession(source);
    if (port.comm != 0) source.link.OptCom = port.comm - 1;
    const auto on = DeskOnLine::Open(environment, console, line_options_, source, AnswerBy::No);
    if (!on) return ExitCode::Port;
    const auto result = Read(console, *on);
    const ExitCode code = result ? ExitOf(*result) : ExitCode::Hub;
    if (code == ExitCode::Hub) return HubFailure(console, on->line);
    if (code != ExitCode::Done) return code;
    const double seconds = on->own.progress.Seconds();
    if (!SaveProgram(source, console, path_)) return ExitCode::File;
    // What the hub holds is worth keeping all the same.
    static_cast<void>(TellUnknownModels(console, ShownName(path_, kStandardOutput), source.program));
    PrintProof(console, source.program, seconds, on->line.opened);
    return ExitCode::Done;
  }

 private:
  /// The hub cannot be told to stop sending.
  static std::optional<UploadResult> Read(Console& console, DeskOnLine& on) {
    try {
      const auto settled = OnSettledLine(console, on.desk, on.own.boxes, [&] { return Upload(on.desk); });
      return settled.value_or(std::nullopt);
    } catch (const Interrupted&) {
      console.Note("the hub sends on to the end of its memory; leave it alone for five seconds");
      throw;
    }
  }

  void PrintProof(Console& console, const Program& program, double seconds, const OpenedPort& opened) const {
    const std::string firmware = VersionText(program.HubVersion);
    const std::string_view model = kHubModels[program.HubIndex].name;
    const int lines = LinesInUse(program);
    if (json_) {
      console.Result(JsonLine(WithPort({{"firmware", firmware},
                                        {"model", model},
                                        {"lineCount", lines},
                                        {"file", path_},
                                        {"seconds", std::round(seconds * 1000) / 1000}},
                                       opened)));
      return;
    }
    const std::string proof = "Uploaded " + Joined(lines) + (lines == 1 ? " line" : " lines") + " from the " +
                              std::string(model) + ", firmware " + firmware + ", to " +
                              ShownMessage(ShownName(path_, kStandardOutput));
    // Standard output has the program.
    if (IsStandard(path_)) {
      console.Message(proof);
      if (!opened.Text().empty()) console.Message("Port: " + opened.Text());
    } else {
      console.Result(proof);
      console.ResultPort(opened);
    }
  }

  std::string path_;
  LineOptions line_options_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeUploadCommand() {
  return std::make_unique<UploadCommand>();
}

}  // namespace tavlo::cli
