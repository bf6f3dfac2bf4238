// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "cli/desk/output_files.h"
#include "cli/simulate/memory_line.h"
#include "cli/simulate/pace.h"
#include "cli/simulate/run_words.h"
#include "cli/simulate/simulation.h"
#include "cli/simulate/time_line_json.h"
#include "cli/simulate/time_line_rows.h"
#include "cli/simulate/tracks_picture.h"
#include "hubsim/option_text.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

/// Machine time after which a program that does not end is left.
constexpr double kUsualLimit = 3600;
constexpr double kLowestSpeedup = 0.001;
constexpr double kHighestSpeedup = 1e6;
constexpr std::size_t kLongestScript = 1U << 20U;

/// What is told and kept of a run while it goes on.
class Show : public Watcher {
 public:
  Show(Console& console, const Source& source, const hubsim::Hub& hub, double start, const Pace& pace)
      : rows(console, source), json(source), tracks(hub, start), console_(console), pace_(pace) {}

  void Saw(const Happening& happening) override {
    if (prints_rows) rows.Saw(happening);
    if (keeps_json) json.Saw(happening);
    if (keeps_tracks) tracks.Saw(happening);
  }
  [[nodiscard]] bool Passes(double from, double to) override {
    if (keeps_tracks) tracks.Passes(from, to);
    if (pace_.Waits()) rows.Send();
    pace_.WaitUntil(to);
    return console_.ResultsArrive();
  }

  bool prints_rows = false;
  bool keeps_json = false;
  bool keeps_tracks = false;
  TimeLineRows rows;
  TimeLineJson json;
  SpeedTracks tracks;

 private:
  Console& console_;
  const Pace& pace_;
};

class SimulateCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "simulate"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Run a program on a simulated hub and print its time line";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddFirmware(app, revision_byte_);
    AddChecked(app, "--drives", drives_, "CODES",
               "Model codes of the plugged drives by axis, as 1,4,3; without it, those of the program",
               [](const std::string& text) {
                 return hubsim::ParseDrives(text) ? "" : "'" + text + "' is no list of drives, such as 1,4,3";
               });
    AddChecked(app, "--speedup", speedup_, "X", "Print the time line as it happens, X times as fast",
               [](const std::string& text) {
                 const double speedup = ParseNumber(text).value_or(0);
                 const bool fits = speedup >= kLowestSpeedup && speedup <= kHighestSpeedup;
                 return fits ? "" : "'" + text + "' is no number from 0.001 to 1000000";
               });
    AddInput(app, "--inputs", inputs_path_,
             "Read what the world and the operator do from FILE, or - for standard input");
    AddSeconds(app, "--for", seconds_, "Leave a program that still runs after SECONDS; 3600 if not given");
    AddOutput(app, "--svg", svg_path_, "Write the speeds of the axes to FILE, or - for standard output");
    AddAnswerOptions(app, answers_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    if (ResultsCollide(console, json_, svg_path_)) return ExitCode::Usage;
    for (const std::string& input : {path_, inputs_path_}) {
      if (!svg_path_.empty() && IsSameFile(console, input, svg_path_)) return ExitCode::File;
    }
    if (IsStandard(path_) && IsStandard(inputs_path_)) {
      console.Note("the program and its inputs cannot both come from standard input");
      return ExitCode::Usage;
    }
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    const auto script = ReadScript(console);
    if (!script) return ExitCode::File;
    MemoryLine line(Options(source.program));
    const ExitCode put = PutIntoHub(console, source, line);
    return put == ExitCode::Done ? Run(environment, console, source, line, *script) : put;
  }

 private:
  [[nodiscard]] hubsim::HubOptions Options(const Program& program) const {
    hubsim::HubOptions options;
    options.model = program.HubIndex == HubQuad ? hubsim::HubModel::Quad : hubsim::HubModel::Octo;
    options.firmware = static_cast<std::uint8_t>(revision_byte_);
    if (!drives_.empty()) options.drives = hubsim::ParseDrives(drives_);
    return options;
  }

  /// Nothing after the messages of a script that cannot be read.
  [[nodiscard]] std::optional<InputScript> ReadScript(Console& console) const {
    if (inputs_path_.empty()) return InputScript();
    std::string reason;
    const auto text = ReadFile(console, inputs_path_, kLongestScript, reason);
    if (!text) {
      console.Note("cannot read " + inputs_path_ + ": " + reason);
      return std::nullopt;
    }
    std::vector<ScriptError> errors;
    InputScript script = ReadInputScript(*text, errors);
    for (const ScriptError& error : errors) {
      console.Note(ShownName(inputs_path_, "standard input") + ":" + Joined(error.row) + ": " +
                   error.message);
    }
    return errors.empty() ? std::optional(script) : std::nullopt;
  }

  /// Downloads the program as into any hub, and checks the drives as before a run.
  [[nodiscard]] ExitCode PutIntoHub(Console& console, Source& source, MemoryLine& line) const {
    NoProgramView view;
    NoRunView run;
    ConsoleDesk desk(source, console, line, answers_.By(), view, run);
    const auto result = Download(desk.desk);
    if (!result) return ExitCode::Hub;
    if (*result == DownloadResult::Refused || *result == DownloadResult::CannotCompile) {
      return ExitCode::Refused;
    }
    if (*result != DownloadResult::Done) return ExitCode::Hub;
    // The drives that the program names are there unless others were named here.
    const bool drives_fit = drives_.empty() || AllDrivesOK(desk.desk.program(), desk.desk.link());
    return drives_fit ? ExitCode::Done : ExitCode::Refused;
  }

  [[nodiscard]] ExitCode Run(Environment& environment, Console& console, const Source& source,
                             MemoryLine& line, const InputScript& script) const {
    const double limit = seconds_.value_or(kUsualLimit);
    const Pace pace(speedup_.empty() ? std::nullopt : ParseNumber(speedup_));
    if (pace.Waits()) console.Inform("the simulation runs; Ctrl-C ends it");
    Show show(console, source, line.Hub(), line.Now(), pace);
    show.prints_rows = !json_ && !IsStandard(svg_path_);
    show.keeps_json = json_;
    show.keeps_tracks = !svg_path_.empty();
    const RunSummary summary = Simulation(line.Hub(), line.Now(), script, show).Run(limit);
    const ExitCode code = ExitOf(summary.ending);
    if (show.prints_rows) show.rows.Summarise(summary, limit);
    if (show.keeps_tracks) {
      show.tracks.End(summary);
      if (!WriteOutput(console, svg_path_, SvgOf(show.tracks, source.program))) return ExitCode::File;
    }
    // That nobody takes the results is told of every command.
    if (code != ExitCode::Done && summary.ending != Ending::Stopped) {
      console.Note(EndingText(summary, limit));
    }
    if (json_) {
      const Json error = code != ExitCode::Done ? ErrorOf(environment, code) : Json();
      console.Bytes(show.json.Document(summary, limit, error) + '\n');
    }
    return code;
  }

  std::string path_;
  int revision_byte_ = 38;
  std::string drives_;
  std::string speedup_;
  std::string inputs_path_;
  std::optional<double> seconds_;
  std::string svg_path_;
  AnswerOptions answers_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeSimulateCommand() {
  return std::make_unique<SimulateCommand>();
}

}  // namespace tavlo::cli
