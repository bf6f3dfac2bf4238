// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <array>

#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/desk_on_line.h"
#include "cli/desk/settle.h"
#include "link/drive_check.h"
#include "link/polled.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

/// No drive reports this revision.
constexpr float kNotRead = -1;

struct HubReport {
  std::string_view model;
  int model_code = 0;
  std::string firmware;
  int axes = 0;
  DriveList drives;
  std::array<float, kAxisSlots> revisions{};
};

std::string Padded(std::string text, std::size_t width) {
  if (text.size() < width) text.resize(width, ' ');
  return text;
}

class IdentifyCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "identify"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Ask the hub for its model, its firmware and its drives";
  }
  void AddOptions(CLI::App& app) override {
    AddLineOptions(app, line_options_);
    AddNoStop(app, no_stop_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    const auto on = DeskOnLine::OpenNew(environment, console, line_options_);
    if (!on) return ExitCode::Port;
    const auto report = no_stop_ ? AskHub(on->desk, console) : StopAndAskHub(*on, console);
    if (!report) return HubFailure(console, on->line);
    if (json_) {
      console.Result(JsonLine(WithPort(AsJson(*report), on->line.opened)));
    } else {
      Print(console, *report);
      console.ResultPort(on->line.opened);
    }
    return ExitCode::Done;
  }

 private:
  /// To a hub that waits at a prompt the question is a key, which may turn an axis.
  static std::optional<HubReport> StopAndAskHub(DeskOnLine& on, Console& console) {
    const auto report = OnSettledLine(console, on.desk, on.own.boxes, [&] {
      StopHub(on.desk.link());
      return AskHub(on.desk, console);
    });
    return report.value_or(std::nullopt);
  }

  static std::optional<HubReport> AskHub(Desk& desk, Console& console) {
    const std::string identity = CheckDrive(desk);
    if (identity.empty() || !IsKnownHub(console, identity)) return std::nullopt;
    HubReport report;
    report.model_code = static_cast<unsigned char>(identity[1]);
    report.model = kHubModels[desk.program().HubIndex].name;
    report.firmware = VersionOfByte(static_cast<unsigned char>(identity[0]));
    report.axes = HubAxes(desk.program());
    const EventsOff events(desk.Comm1);
    const auto drives = ReadDriveList(desk.link(), HubAxes(desk.program()));
    if (!drives) return std::nullopt;
    report.drives = *drives;
    report.revisions.fill(kNotRead);
    ScanDrivesRV(desk.link(), HubAxes(desk.program()), report.revisions);
    return report.revisions[0] == kNotRead ? std::nullopt : std::optional(report);
  }

  static void Print(Console& console, const HubReport& report) {
    constexpr std::size_t kAxisWidth = 6;
    constexpr std::size_t kModelWidth = 16;
    console.Result(std::string(report.model) + ", firmware " + report.firmware);
    console.Result(Padded("Axis", kAxisWidth) + Padded("Expected", kModelWidth) +
                   Padded("Plugged in", kModelWidth) + "Firmware");
    for (int axis = 0; axis < report.axes; ++axis) {
      const int actual = report.drives.actual[axis];
      console.Result(Padded(Joined(axis + 1), kAxisWidth) +
                     Padded(std::string(ModelName(report.drives.expected[axis])), kModelWidth) +
                     Padded(std::string(ModelName(actual)), kModelWidth) +
                     (actual == 0 ? "-" : VersionText(report.revisions[axis])));
    }
  }

  static Json AsJson(const HubReport& report) {
    Json axes = Json::array();
    for (int axis = 0; axis < report.axes; ++axis) {
      const int expected = report.drives.expected[axis];
      const int actual = report.drives.actual[axis];
      axes.push_back({{"axis", axis + 1},
                      {"expectedCode", expected},
                      {"expected", ModelName(expected)},
                      {"pluggedCode", actual},
                      {"plugged", ModelName(actual)},
                      {"firmware", actual == 0 ? Json() : Json(VersionText(report.revisions[axis]))}});
    }
    return {{"model", report.model},
            {"modelCode", report.model_code},
            {"firmware", report.firmware},
            {"axes", axes}};
  }

  LineOptions line_options_;
  bool no_stop_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeIdentifyCommand() {
  return std::make_unique<IdentifyCommand>();
}

}  // namespace tavlo::cli
