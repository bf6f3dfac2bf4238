// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/run_record.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "link/drive_check.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "session/run_log.h"

namespace tavlo {
namespace {

/// What the three bytes behind a header name.
enum class Names : std::uint8_t { Nothing, Line, LastLine, Axis, Other };

struct RecordRow {
  HubHeader meaning;
  RunEventKind kind;
  Names names;
};

/// All but the three kinds of status, whose changes are recorded when they are shown.
constexpr std::array kRecords = {
    RecordRow{HubHeader::Greeting, RunEventKind::HubSwitchedOn, Names::Other},
    RecordRow{HubHeader::LineStarted, RunEventKind::LineStarted, Names::Line},
    RecordRow{HubHeader::StepDone, RunEventKind::StepDone, Names::Nothing},
    RecordRow{HubHeader::LimitHit, RunEventKind::LimitHit, Names::Axis},
    RecordRow{HubHeader::StopButton, RunEventKind::StopButton, Names::Nothing},
    RecordRow{HubHeader::OldFirmware, RunEventKind::OldFirmware, Names::Axis},
    RecordRow{HubHeader::WrongDrive, RunEventKind::WrongDrive, Names::Axis},
    RecordRow{HubHeader::DriveLost, RunEventKind::DriveLost, Names::Axis},
    RecordRow{HubHeader::StackOverflow, RunEventKind::StackOverflow, Names::LastLine},
    RecordRow{HubHeader::StackUnderflow, RunEventKind::StackUnderflow, Names::LastLine},
    RecordRow{HubHeader::LineFinished, RunEventKind::LineFinished, Names::Line},
    RecordRow{HubHeader::LineConcurrent, RunEventKind::LineGoesOn, Names::Line},
    RecordRow{HubHeader::ProgramCounter, RunEventKind::ProgramCounter, Names::Other},
    RecordRow{HubHeader::DriveDisabled, RunEventKind::DriveDisabled, Names::Axis},
    RecordRow{HubHeader::DriveFault, RunEventKind::DriveFault, Names::Axis},
};

/// The rows of lights that a kind of status may tell of.
std::span<const LedRow> LightsOf(HubHeader meaning, bool has_main) {
  static constexpr std::array kStatus = {LedRow::INlo, LedRow::OUTlo, LedRow::OUTY};
  static constexpr std::array kCutStatus = {LedRow::INX, LedRow::OUTY};
  static constexpr std::array kInputs = {LedRow::INX};
  static constexpr std::array kOutputs = {LedRow::OUTlo, LedRow::OUTY};
  if (meaning == HubHeader::ExtendedInputs) return kInputs;
  if (meaning == HubHeader::ExtendedOutputs) return kOutputs;
  if (meaning != HubHeader::DriveStatus) return {};
  return has_main ? std::span<const LedRow>(kStatus) : kCutStatus;
}

bool IsStatus(HubHeader meaning) {
  return !LightsOf(meaning, true).empty();
}

int At(std::string_view bytes, std::size_t i) {
  return static_cast<unsigned char>(bytes[i]);
}

std::string AlarmsOf(const Program& program, int axis, int code) {
  const auto labels = FaultLabels(program, axis);
  std::string alarms;
  for (std::size_t bit = 0; bit < labels.size(); ++bit) {
    if ((code >> bit & 1) != 0) alarms += (alarms.empty() ? "" : "; ") + labels[bit];
  }
  return alarms;
}

std::string Revision(int byte) {
  return Format(RevisionOf(static_cast<unsigned char>(byte)), "0.00");
}

/// Adds what only one kind of message carries.
void AddDetails(const Program& program, std::string_view message, RunEvent& event) {
  const int b2 = At(message, 1);
  const int b3 = At(message, 2);
  const int b4 = At(message, 3);
  switch (event.kind) {
    case RunEventKind::HubSwitchedOn: {
      const auto hub = HubOfCode(b3);
      const std::string_view model = hub ? kHubModels[*hub].name : "unknown model";
      event.text = std::string(model) + ", firmware " + Revision(b2);
      break;
    }
    case RunEventKind::ProgramCounter:
      if (b2 == 1) event.line = static_cast<std::int16_t>(b3 * 16 + b4);
      event.text = b2 == 1 ? "shown" : "hidden";
      break;
    case RunEventKind::OldFirmware: event.text = Revision(b3); break;
    case RunEventKind::WrongDrive:
      event.text = "is a " + std::string(ModelName(b3)) + ", should be a " + std::string(ModelName(b4));
      break;
    case RunEventKind::DriveFault:
      event.code = b3 * 128 + b4;
      event.text = AlarmsOf(program, b2, event.code);
      break;
    case RunEventKind::LineStarted:
    case RunEventKind::LineGoesOn:
    case RunEventKind::LineFinished:
    case RunEventKind::StepDone:
    case RunEventKind::State:
    case RunEventKind::Input:
    case RunEventKind::Output:
    case RunEventKind::Display:
    case RunEventKind::Key:
    case RunEventKind::Control:
    case RunEventKind::LimitHit:
    case RunEventKind::StopButton:
    case RunEventKind::StackOverflow:
    case RunEventKind::StackUnderflow:
    case RunEventKind::DriveDisabled:
    case RunEventKind::DriveLost:
    case RunEventKind::OtherMessage:
    case RunEventKind::End: break;
  }
}

/// A message that means nothing, or names an axis that does not exist, is recorded by its bytes.
RunEvent EventOf(const Program& program, const RecordRow* row, std::string_view message) {
  const int b2 = At(message, 1);
  const bool understood = row != nullptr && (row->names != Names::Axis || b2 < kAxes);
  if (!understood) return {.kind = RunEventKind::OtherMessage, .text = HexOf(message)};
  RunEvent event{.kind = row->kind};
  switch (row->names) {
    case Names::Nothing:
    case Names::Other: break;
    case Names::Line: event.line = static_cast<std::int16_t>(b2 * 16 + At(message, 2)); break;
    case Names::LastLine: event.line = static_cast<std::int16_t>(b2); break;
    case Names::Axis: event.axis = static_cast<std::int8_t>(b2); break;
  }
  AddDetails(program, message, event);
  return event;
}

constexpr std::array<std::string_view, 19> kKeyNames = {
    "0",   "1",   "2",  "3",     "4",         "5",        "6",          "7",          "8",          "9",
    "dot", "yes", "no", "enter", "backspace", "arrow up", "arrow down", "arrow left", "arrow right"};
static_assert(kKeyNames.size() == static_cast<std::size_t>(MmiKey::arrowright) + 1);

std::string_view NameOf(RunOrderSent order) {
  switch (order) {
    case RunOrderSent::Play: return "play";
    case RunOrderSent::Pause: return "pause";
    case RunOrderSent::SingleStep: return "single step";
    case RunOrderSent::Reset: return "reset";
    case RunOrderSent::Stop: return "stop";
    case RunOrderSent::ResetHub: return "reset hub";
  }
  return {};
}

std::string_view NameOf(RunOver why) {
  switch (why) {
    case RunOver::Stopped: return "stopped";
    case RunOver::ClosedAndStopped: return "window closed and hub stopped";
    case RunOver::ClosedUnstopped: return "window closed and hub not stopped";
    case RunOver::Halted: return "halted";
    case RunOver::HubSwitchedOn: return "hub switched on";
    case RunOver::PortGone: return "port gone";
  }
  return {};
}

}  // namespace

void RecordMessage(Desk& desk, std::optional<HubHeader> meaning, std::string_view message) {
  if (desk.log == nullptr || !desk.log->Open() || (meaning && IsStatus(*meaning))) return;
  const auto* const row = std::ranges::find_if(
      kRecords, [&](const RecordRow& candidate) { return candidate.meaning == meaning; });
  desk.log->Add(EventOf(desk.program(), row == kRecords.end() ? nullptr : row, message));
}

void RecordLights(Desk& desk, HubHeader meaning, int axis) {
  if (desk.log == nullptr || !IsStatus(meaning)) return;
  desk.log->ShowLights(axis, LightsOf(meaning, ShowsLed(desk.program(), LedRow::INlo, axis, 0)));
}

void RecordText(Desk& desk) {
  if (desk.log != nullptr) desk.log->TextComes();
}

void RecordKey(Desk& desk, MmiKey key) {
  if (desk.log == nullptr) return;
  desk.log->Add({.kind = RunEventKind::Key, .text = std::string(kKeyNames[static_cast<std::size_t>(key)])});
}

void RecordControl(Desk& desk, RunOrderSent order) {
  if (desk.log == nullptr) return;
  desk.log->Add({.kind = RunEventKind::Control, .text = std::string(NameOf(order))});
}

void RecordEnd(Desk& desk, RunOver why) {
  if (desk.log != nullptr) desk.log->End(NameOf(why));
}

}  // namespace tavlo
