// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/hub_messages.h"

#include <optional>

#include "desk/grid.h"
#include "link/drive_check.h"
#include "link/execution.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

/// A message taken apart.
struct Message {
  explicit Message(std::string_view bytes)
      : header(At(bytes, 0)), b2(At(bytes, 1)), b3(At(bytes, 2)), b4(At(bytes, 3)) {}

  static int At(std::string_view bytes, std::size_t i) { return static_cast<unsigned char>(bytes[i]); }
  [[nodiscard]] int Line() const { return b2 * 16 + b3; }

  int header;
  int b2;
  int b3;
  int b4;
};

bool IsAxis(int axis) {
  return axis >= 0 && axis < kAxes;
}

/// The axis that the header itself carries, if it is one of the eight of this kind.
std::optional<int> AxisOfHeader(int header, HubHeader first) {
  const int axis = header - static_cast<int>(first);
  return IsAxis(axis) ? std::optional(axis) : std::nullopt;
}

void Acknowledge(Desk& desk) {
  desk.Comm1.Output("I");
}

/// A halt ends the run: its window goes first, so that the question stands alone.
void EndRun(Desk& desk) {
  desk.source.Halted = true;
  desk.source.MMIActive = false;
  desk.run.Hide();
}

void AskForReset(Desk& desk, std::string_view title, const std::string& text) {
  if (MsgBox(desk, text, Icon::Exclamation, title, Buttons::YesNo) == Answer::Yes) ResetDrive(desk);
}

void LimitHit(Desk& desk, int axis) {
  EndRun(desk);
  ClearAnimation(desk);
  desk.Comm1.RThreshold(1);
  AskForReset(
      desk, "LIMIT",
      "Program halted: drive " + Joined(axis + 1) + " (" + AxisNameOf(desk.program(), axis) +
          ") hit a limit.  Should I reset the hub now?."
          " If one of the drives is a servo and has faulted, its LED will be displaying an error code.  That "
          "condition can only be reset by interrupting power to the system.");
  ClearAnimation(desk);
}

void StopButton(Desk& desk) {
  EndRun(desk);
  desk.Comm1.RThreshold(1);
  AskForReset(desk, "STOP", "The STOP button on the drive has been pressed. Should I reset the drive now?");
}

void StackOverflow(Desk& desk, int line) {
  EndRun(desk);
  AskForReset(
      desk, "Stack Overflow",
      "Line " + Joined(line + 1) +
          " of your program has caused a stack overflow.  You have made too many Calls without Returns. "
          "Should I reset the drive now?");
}

void StackUnderflow(Desk& desk, int line) {
  EndRun(desk);
  AskForReset(
      desk, "Stack Underflow",
      "Line " + Joined(line + 1) +
          " of your program has caused a stack underflow.  Your program reached a Return instruction without "
          "making a Call. Should I reset the drive now?");
}

void OldFirmware(Desk& desk, const Message& m) {
  MsgBox(desk,
         "The firmware in drive " + Joined(m.b2 + 1) + " (rev " +
             Joined(RevisionOf(static_cast<unsigned char>(m.b3))) +
             ") is too old to run this program.  Please change drives or call about a firmware upgrade.)",
         Icon::None, "Old firmware");
}

void WrongDrive(Desk& desk, const Message& m) {
  MsgBox(desk,
         "Drive " + Joined(m.b2 + 1) + " is supposed to be a " + std::string(ModelName(m.b4)) +
             ", but is really a " + std::string(ModelName(m.b3)),
         Icon::None, "Wrong drive");
}

void DriveLost(Desk& desk, int axis) {
  MsgBox(desk, "Drive " + Joined(axis + 1) + " is not responding.", Icon::None, "Drive not found");
}

void MoveProgCounter(Desk& desk, const Message& m) {
  const int line = m.b3 * 16 + m.b4;
  desk.view.ProgCounter(m.b2 == 1 && line < kLines ? std::optional(line) : std::nullopt);
}

/// Messages whose header carries the axis.
void HandleStatus(Desk& desk, const Message& m) {
  if (const auto axis = AxisOfHeader(m.header, HubHeader::DriveStatus)) {
    desk.run.ShowStatus(*axis, m.b3 * 16 + m.b2, m.b4);
  } else if (const auto out_axis = AxisOfHeader(m.header, HubHeader::ExtendedOutputs)) {
    desk.run.ShowOutStatus(*out_axis, m.b2);
  } else if (const auto in_axis = AxisOfHeader(m.header, HubHeader::ExtendedInputs)) {
    desk.run.ShowXStatus(*in_axis, m.b3 * 16 + m.b2);
  }
}

/// Messages that name an axis in their first byte.
void HandleAxisMessage(Desk& desk, const Message& m) {
  if (!IsAxis(m.b2)) return;
  switch (static_cast<HubHeader>(m.header)) {
    case HubHeader::LimitHit: LimitHit(desk, m.b2); break;
    case HubHeader::OldFirmware: OldFirmware(desk, m); break;
    case HubHeader::WrongDrive: WrongDrive(desk, m); break;
    case HubHeader::DriveLost: DriveLost(desk, m.b2); break;
    case HubHeader::DriveDisabled: ServoNotOn(desk, m.b2 + 1); break;
    case HubHeader::DriveFault: ServoError(desk, m.b2 + 1, m.b3 * 128 + m.b4); break;
    default: break;
  }
}

}  // namespace

void HandleMsg(Desk& desk, std::string_view message) {
  const Message m(message);
  switch (static_cast<HubHeader>(m.header)) {
    case HubHeader::Greeting: DispDrive(desk, message); break;
    case HubHeader::LineStarted:
      ShowLine(desk, m.Line());
      Acknowledge(desk);
      break;
    case HubHeader::LineConcurrent:
      ShowRedLine(desk, m.Line());
      Acknowledge(desk);
      break;
    case HubHeader::LineFinished: HideYelLine(desk, m.Line()); break;
    case HubHeader::StepDone: desk.run.StepDone(); break;
    case HubHeader::StopButton: StopButton(desk); break;
    case HubHeader::StackOverflow: StackOverflow(desk, m.b2); break;
    case HubHeader::StackUnderflow: StackUnderflow(desk, m.b2); break;
    case HubHeader::ProgramCounter: MoveProgCounter(desk, m); break;
    case HubHeader::LimitHit:
    case HubHeader::OldFirmware:
    case HubHeader::WrongDrive:
    case HubHeader::DriveLost:
    case HubHeader::DriveDisabled:
    case HubHeader::DriveFault: HandleAxisMessage(desk, m); break;
    case HubHeader::DriveStatus:
    case HubHeader::ExtendedOutputs:
    case HubHeader::ExtendedInputs:
    default: HandleStatus(desk, m); break;
  }
}

void DispDrive(Desk& desk, std::string_view message) {
  const Message m(message);
  desk.Comm1.RThreshold(1);
  desk.program().HubVersion = RevisionOf(static_cast<unsigned char>(m.b2));
  const bool known = m.b3 == kHubModels[HubOcto].code || m.b3 == kHubModels[HubQuad].code;
  if (known) {
    desk.Comm1.Output("*0");
    desk.source.DriveVersion = VersionText(desk.program().HubVersion);
    desk.beeper.Beep();
    ShowHub(desk, m.b3);
  } else {
    MsgBox(desk, "Unknown device detected on comm port.", Icon::None, "Unknown device");
  }
  desk.run.Hide();
  desk.source.MMIActive = false;
}

void ServoNotOn(Desk& desk, int axis) {
  MsgBox(desk,
         "Your program is attempting to execute a move on axis " + Joined(axis) +
             " but the drive is disabled.  This error can occur if a Change Current instruction in your "
             "program has "
             "turned the current off.  Otherwise, you should connect the drive to Servo Trim (for Zenu servo "
             "drives) "
             "or Setup Desk (for Dresk drives) and make sure it is programmed for use with the Hub.  You "
             "must cycle "
             "power to reset this error.",
         Icon::Stop, "Drive Error");
  EndRun(desk);
  ClearAnimation(desk);
}

void ServoError(Desk& desk, int axis, int code) {
  const int model = DriveModelOf(desk.program(), axis - 1);
  const bool stepper = PelmarModel(model) || DreskModel(model);
  ServoFaultPanel panel;
  panel.caption = "Drive Error";
  panel.Label1 = {"Position Limit",
                  "CCW Limit",
                  "CW Limit",
                  "drive overtemp",
                  DreskModel(model) ? "reserved" : "excess regen",
                  "over voltage",
                  "under voltage",
                  "motor short",
                  stepper ? "open motor winding" : "bad hall sensor",
                  "bad encoder",
                  "comm error",
                  "save failed",
                  stepper ? "move while disabled" : "timing wiz failed",
                  stepper ? "motor resistance" : "current foldback"};
  panel.FaultMessage = "We are experiencing a " + std::string(stepper ? "" : "servo ") + "fault on axis " +
                       Joined(axis) + ". The program has been halted.";
  panel.code = code;
  EndRun(desk);
  ClearAnimation(desk);
  desk.run.ShowServoFault(panel);
}

}  // namespace tavlo
