// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/hub_messages.h"

#include <algorithm>
#include <array>
#include <optional>

#include "link/drive_check.h"
#include "link/execution.h"
#include "link/held_program.h"
#include "link/polled.h"
#include "link/run_record.h"
#include "platform/number_format.h"
#include "session/grid.h"
#include "session/happened.h"

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
  /// The axis that the header carries, where it does.
  int axis = 0;
};

bool IsAxis(int axis) {
  return axis >= 0 && axis < kAxes;
}

/// Its faults are worded as those of a motor without a servo.
bool IsStepper(int model) {
  return PelmarModel(model) || DreskModel(model);
}

/// Lets the machine go on to its next line.
void Acknowledge(Desk& desk) {
  desk.Comm1.Output("I");
}

/// A halt ends the run: its window goes first, so that the question stands alone.
void EndRun(Desk& desk) {
  RecordEnd(desk, RunOver::Halted);
  desk.source.run.Halted = true;
  desk.source.run.panel.phase = RunPhase::Stopped;
  NoteHubRuns(desk.link(), false);
  desk.source.display.MMIActive = false;
  desk.run.Hide();
}

void StoppedFor(Desk& desk, const std::string& why) {
  Happened(desk, "Stopped" + AtLine(desk.source.run) + ": " + why);
}

void AskForReset(Desk& desk, Tells tells, const std::string& title, const std::string& text) {
  const Answer answer = desk.boxes.MsgBox(
      {.text = text, .title = title, .buttons = Buttons::YesNo, .icon = Icon::Exclamation, .tells = tells});
  if (answer != Answer::Yes) return;
  RecordControl(desk, RunOrderSent::ResetHub);
  ResetDrive(desk.link(), desk.loop);
}

void LimitHit(Desk& desk, const Message& m) {
  StoppedFor(desk, "limit switch, axis " + Joined(m.b2 + 1));
  EndRun(desk);
  ClearAnimation(desk.grid());
  desk.Comm1.RThreshold(1);
  AskForReset(
      desk, Tells::LimitHit, "LIMIT",
      "Program halted: drive " + Joined(m.b2 + 1) + " (" + AxisNameOf(desk.program(), m.b2) +
          ") hit a limit.  Should I reset the hub now?."
          " If one of the drives is a servo and has faulted, its LED will be displaying an error code.  That "
          "condition can only be reset by interrupting power to the system.");
  ClearAnimation(desk.grid());
}

void StopButton(Desk& desk, const Message&) {
  StoppedFor(desk, "the STOP button on the drive");
  EndRun(desk);
  desk.Comm1.RThreshold(1);
  AskForReset(desk, Tells::StopButton, "STOP",
              "The STOP button on the drive has been pressed. Should I reset the drive now?");
}

void StackOverflow(Desk& desk, const Message& m) {
  Happened(desk, "Stopped at line " + Joined(m.b2 + 1) + ": stack overflow");
  EndRun(desk);
  AskForReset(
      desk, Tells::StackOverflow, "Stack Overflow",
      "Line " + Joined(m.b2 + 1) +
          " of your program has caused a stack overflow.  You have made too many Calls without Returns. "
          "Should I reset the drive now?");
}

void StackUnderflow(Desk& desk, const Message& m) {
  Happened(desk, "Stopped at line " + Joined(m.b2 + 1) + ": stack underflow");
  EndRun(desk);
  AskForReset(
      desk, Tells::StackUnderflow, "Stack Underflow",
      "Line " + Joined(m.b2 + 1) +
          " of your program has caused a stack underflow.  Your program reached a Return instruction without "
          "making a Call. Should I reset the drive now?");
}

void OldFirmware(Desk& desk, const Message& m) {
  Happened(desk, "Old firmware in drive " + Joined(m.b2 + 1));
  desk.boxes.MsgBox(
      {.text = "The firmware in drive " + Joined(m.b2 + 1) + " (rev " +
               Joined(RevisionOf(static_cast<unsigned char>(m.b3))) +
               ") is too old to run this program.  Please change drives or call about a firmware upgrade.)",
       .title = "Old firmware"});
}

void WrongDrive(Desk& desk, const Message& m) {
  Happened(desk, "Drive " + Joined(m.b2 + 1) + " is another one than expected");
  desk.boxes.MsgBox({.text = "Drive " + Joined(m.b2 + 1) + " is supposed to be a " +
                             std::string(ModelName(m.b4)) + ", but is really a " +
                             std::string(ModelName(m.b3)),
                     .title = "Wrong drive"});
}

void DriveLost(Desk& desk, const Message& m) {
  Happened(desk, "Drive " + Joined(m.b2 + 1) + " is not responding");
  desk.boxes.MsgBox(
      {.text = "Drive " + Joined(m.b2 + 1) + " is not responding.", .title = "Drive not found"});
}

void MoveProgCounter(Desk& desk, const Message& m) {
  const int line = m.b3 * 16 + m.b4;
  if (m.b2 != 1) {
    desk.view.ProgCounter(std::nullopt);
  } else if (line < kLines) {
    desk.view.ProgCounter(line);
    StandBefore(desk, line);
  }
}

/// "Fault on axis 2: over voltage", with all alarms of the panel.
std::string FaultText(const ServoFaultPanel& panel) {
  std::string text = "Fault on axis " + Joined(panel.axis);
  const char* joint = ": ";
  for (std::size_t bit = 0; bit < panel.Label1.size(); ++bit) {
    if ((panel.code >> bit & 1) == 0) continue;
    text += joint + panel.Label1[bit];
    joint = ", ";
  }
  return text;
}

void Greet(Desk& desk, const Message& m) {
  DispDrive(desk, m.b2, m.b3);
}

void StartLine(Desk& desk, const Message& m) {
  if (m.Line() < kLines) desk.source.run.line = m.Line();
  ShowLine(desk.grid(), m.Line());
  Acknowledge(desk);
}

void PassLine(Desk& desk, const Message& m) {
  ShowRedLine(desk.grid(), m.Line());
  Acknowledge(desk);
}

/// When a message counts; otherwise it is dropped.
enum class Condition {
  Always,
  AxisExists,  ///< the first payload byte is an axis
  NotStopped,  ///< a line of a run that was stopped is neither shown nor answered
  RunShown,    ///< status is for the run windows alone
};

/// What a header means. `headers` counts those of one kind: 8 where the header itself carries the axis.
struct MessageRow {
  HubHeader first;
  int headers;
  Condition condition;
  void (*handle)(Desk& desk, const Message& m);
};

constexpr std::array kMessages = {
    MessageRow{HubHeader::Greeting, 1, Condition::Always, Greet},
    MessageRow{HubHeader::LineStarted, 1, Condition::NotStopped, StartLine},
    MessageRow{HubHeader::StepDone, 1, Condition::RunShown,
               [](Desk& desk, const Message&) { StepDone(desk); }},
    MessageRow{HubHeader::LimitHit, 1, Condition::AxisExists, LimitHit},
    MessageRow{HubHeader::StopButton, 1, Condition::Always, StopButton},
    MessageRow{HubHeader::OldFirmware, 1, Condition::AxisExists, OldFirmware},
    MessageRow{HubHeader::WrongDrive, 1, Condition::AxisExists, WrongDrive},
    MessageRow{
        HubHeader::DriveStatus, kAxes, Condition::RunShown,
        [](Desk& desk, const Message& m) { ShowStatus(desk.lights(), m.axis, m.b3 * 16 + m.b2, m.b4); }},
    MessageRow{HubHeader::DriveLost, 1, Condition::AxisExists, DriveLost},
    MessageRow{HubHeader::StackOverflow, 1, Condition::Always, StackOverflow},
    MessageRow{HubHeader::StackUnderflow, 1, Condition::Always, StackUnderflow},
    MessageRow{HubHeader::LineFinished, 1, Condition::NotStopped,
               [](Desk& desk, const Message& m) { HideYelLine(desk.grid(), m.Line()); }},
    MessageRow{HubHeader::LineConcurrent, 1, Condition::NotStopped, PassLine},
    MessageRow{HubHeader::ProgramCounter, 1, Condition::NotStopped, MoveProgCounter},
    MessageRow{HubHeader::ExtendedOutputs, kAxes, Condition::RunShown,
               [](Desk& desk, const Message& m) { ShowOutStatus(desk.lights(), m.axis, m.b2); }},
    MessageRow{HubHeader::ExtendedInputs, kAxes, Condition::RunShown,
               [](Desk& desk, const Message& m) { ShowXStatus(desk.lights(), m.axis, m.b3 * 16 + m.b2); }},
    MessageRow{HubHeader::DriveDisabled, 1, Condition::AxisExists,
               [](Desk& desk, const Message& m) { ServoNotOn(desk, m.b2 + 1); }},
    MessageRow{HubHeader::DriveFault, 1, Condition::AxisExists,
               [](Desk& desk, const Message& m) { ServoError(desk, m.b2 + 1, m.b3 * 128 + m.b4); }},
};
static_assert(kMessages.size() == 18);

bool Counts(const Desk& desk, Condition condition, const Message& m) {
  switch (condition) {
    case Condition::Always: return true;
    case Condition::AxisExists: return IsAxis(m.b2);
    case Condition::NotStopped: return !desk.source.link.Stopped;
    case Condition::RunShown: return desk.run.Active() != RunWindow::None;
  }
  return false;
}

}  // namespace

void HandleMsg(Desk& desk, std::string_view message) {
  Message m(message);
  const auto* const row = std::ranges::find_if(kMessages, [&m](const MessageRow& candidate) {
    const int first = static_cast<int>(candidate.first);
    return m.header >= first && m.header < first + candidate.headers;
  });
  const bool known = row != kMessages.end();
  RecordMessage(desk, known ? std::optional(row->first) : std::nullopt, message);
  if (!known || !Counts(desk, row->condition, m)) return;
  m.axis = m.header - static_cast<int>(row->first);
  row->handle(desk, m);
  RecordLights(desk, row->first, m.axis);
}

void DispDrive(Desk& desk, int revision, int hub_code) {
  desk.Comm1.RThreshold(1);
  RecordEnd(desk, RunOver::HubSwitchedOn);
  // A hub that comes up has forgotten what it was doing.
  desk.source.link.Stopped = false;
  const bool known = !desk.source.link.identity.empty();
  NoteHubRuns(desk.link(), false);
  ForgetHub(desk.link());
  NoteIdentity(desk.link(), std::string{static_cast<char>(revision), static_cast<char>(hub_code)});
  desk.source.run.panel.phase = RunPhase::Stopped;
  Happened(desk, known ? "The hub was switched on again" : "The hub was switched on");
  desk.program().HubVersion = RevisionOf(static_cast<unsigned char>(revision));
  if (HubOfCode(hub_code)) {
    desk.Comm1.Output("*0");
    desk.beeper.Beep();
    ShowHub(desk, hub_code);
  } else {
    TellUnknownDevice(desk.boxes);
  }
  desk.run.Hide();
  desk.source.display.MMIActive = false;
}

void ServoNotOn(Desk& desk, int axis) {
  StoppedFor(desk, "drive disabled, axis " + Joined(axis));
  desk.boxes.MsgBox(
      {.text = "Your program is attempting to execute a move on axis " + Joined(axis) +
               " but the drive is disabled.  This error can occur if a Change Current instruction in your "
               "program has turned the current off.  Otherwise, you should connect the drive to Servo "
               "Trim (for Zenu servo drives) or Setup Desk (for Dresk drives) and make sure it is "
               "programmed for use with the Hub.  You must cycle power to reset this error.",
       .title = "Drive Error",
       .icon = Icon::Stop,
       .tells = Tells::DriveDisabled});
  EndRun(desk);
  ClearAnimation(desk.grid());
}

std::array<std::string, 14> FaultLabels(const Program& program, int axis) {
  const int model = DriveModelOf(program, axis);
  const bool stepper = IsStepper(model);
  return {"Position Limit",
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
}

void ServoError(Desk& desk, int axis, int code) {
  const bool stepper = IsStepper(DriveModelOf(desk.program(), axis - 1));
  ServoFaultPanel panel;
  panel.caption = "Drive Error";
  panel.Label1 = FaultLabels(desk.program(), axis - 1);
  panel.FaultMessage = "We are experiencing a " + std::string(stepper ? "" : "servo ") + "fault on axis " +
                       Joined(axis) + ". The program has been halted.";
  panel.code = code;
  panel.axis = axis;
  Happened(desk, FaultText(panel));
  EndRun(desk);
  ClearAnimation(desk.grid());
  desk.run.ShowServoFault(panel);
}

}  // namespace tavlo
