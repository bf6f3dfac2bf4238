// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "model/kinds.h"
#include "platform/encoding.h"
#include "session/rows.h"
#include "text/short_desc.h"

namespace tavlo::cli {
namespace {

class ShowCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "show"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Print the lines of a program file that are in use";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    if (json_) {
      console.Result(JsonLine(AsJson(source)));
    } else {
      PrintRows(environment, source);
    }
    return ExitCode::Done;
  }

 private:
  static bool InUse(const Source& source, int line) { return source.program.Prog[line].Type != NO; }

  static void PrintRows(Environment& environment, const Source& source) {
    for (int line = 0; line < kLines; ++line) {
      if (!InUse(source, line)) continue;
      environment.out << line + 1 << '\t' << ShownText(ShownCaption(source.shown.rows[line].desc)) << '\n';
    }
  }

  static Json AsJson(const Source& source) {
    Json lines = Json::array();
    for (int line = 0; line < kLines; ++line) {
      if (!InUse(source, line)) continue;
      lines.push_back({{"line", line + 1},
                       {"type", Mnemonic(source.program.Prog[line].Type)},
                       {"text", Utf8FromLatin1(ShownCaption(source.shown.rows[line].desc))}});
    }
    return {{"lines", lines}};
  }

  std::string path_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeShowCommand() {
  return std::make_unique<ShowCommand>();
}

}  // namespace tavlo::cli
