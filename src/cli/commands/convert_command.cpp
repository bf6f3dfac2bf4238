// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <algorithm>

#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "model/file_repairs.h"
#include "model/wire.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "session/source.h"

namespace tavlo::cli {
namespace {

/// Returns what was changed, as it now is.
std::string WordsOf(const Program& program, const RepairMade& made) {
  switch (made.repair) {
    case Repair::HandWheel: return "the hand wheel instruction became a comment";
    case Repair::ShortPulse:
      return "the pulse became " + Joined(kShortestPulse) + " ms, the shortest there is";
    case Repair::LongComment:
      return "the comment was cut to " + Joined(static_cast<int>(kLongestComment)) + " characters";
    case Repair::DriveInput: return "the input became X0, as the drive's own inputs are counted now";
    case Repair::HighCurrent:
      return "the current became " + Format(program.Axis.DriveCurrent[made.index], "0.00") +
             " A, the highest of the drive model " +
             std::string(ModelName(program.Axis.DriveModel[made.index]));
    case Repair::StepsOnly: return "lengths count in units, no longer in steps";
    case Repair::NoPort: return "the file was saved without a comm port, and holds Comm 1 now";
  }
  return "";
}

/// What a change is of: "line 3: ", "axis 1: ", or nothing for the whole file.
std::string PlaceOf(const RepairMade& made) {
  if (made.repair == Repair::NoPort) return "";
  return (IsOfAxis(made.repair) ? "axis " : "line ") + Joined(made.index + 1) + ": ";
}

/// The new file holds no longer comment, and a reader would cut it. What stands for a hand wheel has been
/// told.
void CutComments(Program& program, Repairs& repairs) {
  for (int line = 0; line < kLines; ++line) {
    const bool told = std::ranges::find(repairs, RepairMade{Repair::HandWheel, line}) != repairs.end();
    CutComment(program, line, told ? nullptr : &repairs);
  }
}

class ConvertCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "convert"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Write a program file of an older version, or of the earlier programmer, as one of this version";
  }
  void AddOptions(CLI::App& app) override {
    AddOldFile(app, old_path_);
    AddNewFile(app, "NEW", new_path_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    if (ResultsCollide(console, json_, new_path_)) return ExitCode::Usage;
    if (IsSameFile(console, old_path_, new_path_)) return ExitCode::File;
    Source source;
    FileFindings found;
    if (!LoadProgram(source, console, old_path_, &found)) return ExitCode::File;
    Repairs repairs = found.repairs;
    CutComments(source.program, repairs);
    std::ranges::stable_sort(
        repairs, {}, [](const RepairMade& made) { return std::pair(IsOfAxis(made.repair), made.index); });
    if (!SaveProgram(source, console, new_path_)) return ExitCode::File;
    TellChanges(console, source.program, repairs);
    Tell(console, source.program, found.version, repairs);
    return ExitCode::Done;
  }

 private:
  void TellChanges(Console& console, const Program& program, const Repairs& repairs) const {
    for (const RepairMade& made : repairs) {
      console.Note(PlaceOf(made) + WordsOf(program, made));
    }
    if (IsStandard(old_path_) || KindByName(old_path_) != FileKind::OskelProg) return;
    console.Note("axis 1: the file does not name its drive model; " +
                 std::string(ModelName(program.Axis.DriveModel[0])) +
                 " was taken: choose the machine's in the Composer");
  }

  void Tell(Console& console, const Program& program, const std::string& version,
            const Repairs& repairs) const {
    if (json_) {
      console.Result(JsonLine(AsJson(program, version, repairs)));
      return;
    }
    const int lines = LinesInUse(program);
    const auto changes = static_cast<int>(repairs.size());
    const std::string proof =
        "Converted " + Joined(lines) + (lines == 1 ? " line" : " lines") + " of version " +
        ShownText(version) + " to " + ShownMessage(ShownName(new_path_, kStandardOutput)) +
        (changes == 0 ? " without a change"
                      : " with " + Joined(changes) + (changes == 1 ? " change" : " changes"));
    // Standard output has the program.
    if (IsStandard(new_path_)) {
      console.Message(proof);
    } else {
      console.Result(proof);
    }
  }

  [[nodiscard]] Json AsJson(const Program& program, const std::string& version,
                            const Repairs& repairs) const {
    Json changes = Json::array();
    for (const RepairMade& made : repairs) {
      const Json number = made.repair == Repair::NoPort ? Json() : Json(made.index + 1);
      changes.push_back({{"line", IsOfAxis(made.repair) ? Json() : number},
                         {"axis", IsOfAxis(made.repair) ? number : Json()},
                         {"change", WordsOf(program, made)}});
    }
    return {{"version", Utf8FromLatin1(version)},
            {"lineCount", LinesInUse(program)},
            {"changes", changes},
            {"file", new_path_}};
  }

  std::string old_path_;
  std::string new_path_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeConvertCommand() {
  return std::make_unique<ConvertCommand>();
}

}  // namespace tavlo::cli
