// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/comparison.h"
#include "cli/desk/desk_on_line.h"
#include "cli/desk/hub_program.h"
#include "cli/desk/settle.h"
#include "link/drive_check.h"
#include "link/polled.h"
#include "link/upload.h"
#include "platform/encoding.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

std::string ShownOr(std::string_view text, std::string_view if_empty) {
  return text.empty() ? std::string(if_empty) : ShownText(text);
}

class VerifyCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "verify"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Compare a program file with the program in the hub";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddLineOptions(app, line_options_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    const auto on = DeskOnLine::Open(environment, console, line_options_, source, AnswerBy::No);
    if (!on) return ExitCode::Port;
    const ImageReading hub = ReadHub(*on, console);
    if (hub.result == UploadResult::WrongSum) return ExitCode::Differs;
    if (hub.result != UploadResult::Done) return HubFailure(console, on->line);
    Program& program = source.program;
    try {
      const CompiledProgram compiled = CompileAsDownloaded(program);
      return Tell(environment, console, CompareWithHub(program, compiled, hub.image), on->line.opened);
    } catch (const EncodeError& error) {
      console.Message(error.what());
      return ExitCode::Refused;
    }
  }

 private:
  /// As an upload begins. A running program is stopped: the hub would talk into its own answer.
  static ImageReading ReadHub(DeskOnLine& on, Console& console) {
    Desk& desk = on.desk;
    const auto identity = OnSettledLine(console, desk, on.own.boxes, [&] {
      StopHub(desk.link());
      return SilentCheckDrive(desk.link()).empty() ? std::string() : CheckDrive(desk);
    });
    const bool known = identity && !identity->empty() && IsKnownHub(console, *identity);
    return known ? ReadIdleHub(desk) : ImageReading();
  }

  [[nodiscard]] ExitCode Tell(Environment& environment, Console& console, const Comparison& found,
                              const OpenedPort& opened) const {
    if (json_) {
      Json result = WithPort(AsJson(found), opened);
      if (!found.Same()) result["error"] = ErrorOf(environment, ExitCode::Differs);
      console.Result(JsonLine(result));
    } else {
      Print(console, found);
      console.ResultPort(opened);
    }
    return found.Same() ? ExitCode::Done : ExitCode::Differs;
  }

  static void Print(Console& console, const Comparison& found) {
    if (found.Same()) {
      console.Result("The hub holds this program");
      return;
    }
    console.Result(found.InWords());
    for (const LineDifference& line : found.lines) {
      const bool only_bytes = line.file == line.hub;
      console.Result("Line " + Joined(line.line) +
                     (only_bytes ? " differs only in bytes: " + ShownText(line.file) : ""));
      console.Result("  file  " + (only_bytes ? HexOf(line.file_bytes) : ShownOr(line.file, "(empty)")));
      console.Result("  hub   " + (only_bytes ? HexOf(line.hub_bytes) : ShownOr(line.hub, "(empty)")));
    }
    for (const SettingDifference& setting : found.settings) {
      const std::string where = setting.axis ? "Axis " + Joined(*setting.axis) + " " : "";
      console.Result(where + setting.field + ": file " + ShownOr(setting.file, "(none)") + ", hub " +
                     ShownOr(setting.hub, "(none)"));
    }
  }

  static Json AsJson(const Comparison& found) {
    Json lines = Json::array();
    for (const LineDifference& line : found.lines) {
      lines.push_back({{"line", line.line},
                       {"file", Utf8FromLatin1(line.file)},
                       {"hub", Utf8FromLatin1(line.hub)},
                       {"fileBytes", HexOf(line.file_bytes)},
                       {"hubBytes", HexOf(line.hub_bytes)}});
    }
    Json settings = Json::array();
    for (const SettingDifference& setting : found.settings) {
      settings.push_back({{"axis", setting.axis ? Json(*setting.axis) : Json()},
                          {"field", setting.field},
                          {"file", Utf8FromLatin1(setting.file)},
                          {"hub", Utf8FromLatin1(setting.hub)}});
    }
    return {{"same", found.Same()}, {"lines", lines}, {"settings", settings}};
  }

  std::string path_;
  LineOptions line_options_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeVerifyCommand() {
  return std::make_unique<VerifyCommand>();
}

}  // namespace tavlo::cli
