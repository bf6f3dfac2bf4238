// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <algorithm>

#include "cli/simulate/simulation.h"
#include "link/hub_messages.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

struct HaltRow {
  HubHeader header;
  std::string_view cause;
  std::string_view text;
  bool names_axis;
};
constexpr std::array kHalts = {
    HaltRow{HubHeader::LimitHit, "limit", "a limit was hit on axis", true},
    HaltRow{HubHeader::StopButton, "stopButton", "the stop button was pressed", false},
    HaltRow{HubHeader::DriveLost, "driveLost", "no drive answers on axis", true},
    HaltRow{HubHeader::StackOverflow, "stackOverflow", "too many Calls without Returns", false},
    HaltRow{HubHeader::StackUnderflow, "stackUnderflow", "a Return without a Call", false},
    HaltRow{HubHeader::DriveDisabled, "driveDisabled", "the drive is disabled that is to move axis", true},
    HaltRow{HubHeader::DriveFault, "driveFault", "the drive reports a fault on axis", true},
};

/// What happens in a moment is kept until the moment is over, but no more of it than this.
constexpr std::size_t kMostHeldBack = 10000;

}  // namespace

void Simulation::TakeMessage(int header, int b2, int b3, int b4) {
  const int line = std::min(b2 * 16 + b3, hubsim::kLineCount - 1);
  switch (static_cast<HubHeader>(header)) {
    case HubHeader::LineStarted: return LineStarted(line);
    case HubHeader::LineFinished: return LineFinished(line);
    case HubHeader::LineConcurrent:
      ++owed_;
      Tell(Happened::WentOn, line);
      return LookAtOutputs();
    case HubHeader::LimitHit:
    case HubHeader::StopButton:
    case HubHeader::DriveLost:
    case HubHeader::StackOverflow:
    case HubHeader::StackUnderflow:
    case HubHeader::DriveDisabled:
    case HubHeader::DriveFault: return TakeHalt(header, b2, b3, b4);
    // The inputs are the script's, the outputs are looked at, and nobody pauses the program.
    case HubHeader::Greeting:
    case HubHeader::StepDone:
    case HubHeader::OldFirmware:
    case HubHeader::WrongDrive:
    case HubHeader::DriveStatus:
    case HubHeader::ProgramCounter:
    case HubHeader::ExtendedOutputs:
    case HubHeader::ExtendedInputs: break;
  }
}

void Simulation::LineStarted(int line) {
  if (moment_.size() > kMostHeldBack) TellAll();
  ++owed_;
  ++lines_in_moment_;
  started_ = last_line_ = line;
  ++runs_[static_cast<std::size_t>(line)];
  starts_.emplace_back(line, moment_.size());
  Tell(Happened::Started, line);
}

void Simulation::LineFinished(int line) {
  if (held_start_ == line) TellHeldStart();
  const auto ended =
      std::ranges::find_if(waits_, [line](const Wait& wait) { return wait.line == line && !wait.polls; });
  if (ended != waits_.end()) {
    EndWait(*ended);
    waits_.erase(ended);
  }
  auto places = NewPlaces();
  Tell(Happened::Finished, line).places = std::move(places);
  LookAtOutputs();
}

void Simulation::LookAtOutputs() {
  for (int axis = 0; axis < hubsim::kAxisCount; ++axis) {
    int& before = outputs_[static_cast<std::size_t>(axis)];
    const int outputs = hub_.Axis(axis).outputs;
    for (int output = 0; outputs != before && output < hubsim::kOutputCount; ++output) {
      if (((outputs ^ before) >> output & 1) == 0) continue;
      Happening& happening = Tell(Happened::Output);
      happening.axis = axis;
      happening.output = output;
      happening.high = (outputs >> output & 1) != 0;
    }
    before = outputs;
  }
}

void Simulation::LookAtDisplay() {
  text_came_ = false;
  for (std::size_t row = 0; row < display_.size(); ++row) {
    if (display_[row] == hub_.Display()[row]) continue;
    display_[row] = hub_.Display()[row];
    Happening& happening = Tell(Happened::Display);
    happening.row = static_cast<int>(row);
    happening.text = display_[row];
  }
}

std::vector<AxisPlace> Simulation::NewPlaces() {
  std::vector<AxisPlace> places;
  for (int axis = 0; axis < hub_.AxisCount(); ++axis) {
    const hubsim::AxisView view = hub_.Axis(axis);
    double& before = places_[static_cast<std::size_t>(axis)];
    if (view.moving || view.position_steps == before) continue;
    before = view.position_steps;
    places.push_back({axis, before});
  }
  return places;
}

void Simulation::TakeHalt(int header, int b2, int b3, int b4) {
  const auto* row = std::ranges::find(kHalts, static_cast<HubHeader>(header), &HaltRow::header);
  std::string text(row->text);
  if (row->names_axis) text += " " + Joined(b2 + 1);
  if (row->header == HubHeader::DriveFault) text += ", code " + Joined(b3 * 128 + b4);
  halt_ = HaltReport{row->cause, text, last_line_, Seconds()};
  owed_ = 0;
  started_.reset();
  held_ = false;
}

}  // namespace tavlo::cli
