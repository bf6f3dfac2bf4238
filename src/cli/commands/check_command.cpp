// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "checks/chain.h"
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "link/drive_check.h"
#include "platform/encoding.h"

namespace tavlo::cli {
namespace {

std::string_view NameOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::OK: return "OK";
    case Buttons::OKCancel: return "OKCancel";
    case Buttons::YesNo: return "YesNo";
    case Buttons::OKWithoutPort: return "OKWithoutPort";
    case Buttons::RestoreDiscard: return "RestoreDiscard";
  }
  return "";
}

std::string_view NameOf(Icon icon) {
  switch (icon) {
    case Icon::None: return "none";
    case Icon::Stop: return "stop";
    case Icon::Question: return "question";
    case Icon::Exclamation: return "exclamation";
  }
  return "";
}

Json AsJson(const std::vector<Box>& shown, bool passed) {
  Json boxes = Json::array();
  for (const Box& box : shown) {
    boxes.push_back({{"text", Utf8FromLatin1(box.text)},
                     {"title", Utf8FromLatin1(box.title)},
                     {"buttons", NameOf(box.buttons)},
                     {"icon", NameOf(box.icon)}});
  }
  return {{"boxes", boxes}, {"passed", passed}};
}

class CheckCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "check"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Run the checks that stand before a download, without a hub";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddFirmware(app, revision_byte_);
    AddAnswerOptions(app, answers_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    source.program.HubVersion = RevisionOf(static_cast<unsigned char>(revision_byte_));
    NoLine line;
    NoProgramView view;
    NoRunView run;
    ConsoleDesk desk(source, console, line, answers_.By(), view, run);
    const bool passed = CheckProgram(desk.desk.program(), desk.desk.boxes) == CheckResult::Passed;
    if (json_) {
      Json result = AsJson(desk.boxes.Shown(), passed);
      if (!passed) result["error"] = ErrorOf(environment, ExitCode::Refused);
      console.Result(JsonLine(result));
    } else if (passed) {
      console.Result("The program passes every check");
    }
    return passed ? ExitCode::Done : ExitCode::Refused;
  }

 private:
  std::string path_;
  int revision_byte_ = 38;
  AnswerOptions answers_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeCheckCommand() {
  return std::make_unique<CheckCommand>();
}

}  // namespace tavlo::cli
