// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "cli/desk/output_files.h"
#include "codegen/compile.h"
#include "link/drive_check.h"
#include "model/program_queries.h"
#include "platform/encoding.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

class CompileCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "compile"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Compile a program file to the bytes of the hub";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddFirmware(app, revision_byte_);
    AddImageToWrite(app, image_path_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    if (ResultsCollide(console, json_, image_path_)) return ExitCode::Usage;
    if (!image_path_.empty() && IsSameFile(console, path_, image_path_)) return ExitCode::File;
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    Program& program = source.program;
    program.HubVersion = RevisionOf(static_cast<unsigned char>(revision_byte_));
    program.MMIused = ProgHasMMI(program);
    CompiledProgram compiled;
    try {
      compiled = CompileProgram(program);
    } catch (const EncodeError& error) {
      console.Message(error.what());
      return ExitCode::Refused;
    }
    TellLongPool(console, compiled);
    if (!image_path_.empty() && !WriteOutput(console, image_path_, ImageOf(compiled))) return ExitCode::File;
    if (json_) {
      console.Result(JsonLine(AsJson(compiled)));
    } else if (image_path_.empty()) {
      PrintSummary(console, LinesInUse(program), compiled);
    }
    return ExitCode::Done;
  }

 private:
  static void TellLongPool(Console& console, const CompiledProgram& compiled) {
    const int size = static_cast<int>(compiled.pool.size());
    if (size <= kPoolBytes) return;
    console.Note("the prompt texts take " + Joined(size) + " bytes; the hub keeps the first " +
                 Joined(kPoolBytes));
  }

  static void PrintSummary(Console& console, int lines, const CompiledProgram& compiled) {
    console.Result("Lines in use\t" + Joined(lines));
    console.Result("Pool bytes\t" + Joined(static_cast<int>(compiled.pool.size())));
    console.Result("Checksum\t" + Joined(compiled.checksum));
  }

  [[nodiscard]] Json AsJson(const CompiledProgram& compiled) const {
    Json lines = Json::array();
    for (const std::string& line : compiled.lines) lines.push_back(HexOf(line));
    return {{"firmware", VersionOfByte(revision_byte_)},
            {"lines", lines},
            {"system", HexOf(compiled.system)},
            {"pool", HexOf(compiled.pool)},
            {"checksum", compiled.checksum}};
  }

  std::string path_;
  std::string image_path_;
  int revision_byte_ = 38;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeCompileCommand() {
  return std::make_unique<CompileCommand>();
}

}  // namespace tavlo::cli
