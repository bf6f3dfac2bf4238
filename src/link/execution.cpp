// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/execution.h"

#include "link/drive_check.h"
#include "link/drive_terminal.h"
#include "link/held_program.h"
#include "link/operation.h"
#include "link/polled.h"
#include "link/run_record.h"
#include "platform/number_format.h"
#include "session/grid.h"
#include "session/happened.h"
#include "session/run_log.h"

namespace tavlo {
namespace {

/// Time that the hub needs to take in a command.
constexpr double kCommandPause = 0.05;
constexpr std::string_view kUpdatedByLine = "Status updated at start of each line";
constexpr std::string_view kUpdatedByInstruction = "Status updated at start of each instruction";
constexpr std::string_view kUpdatedByTime = "Status updated about 10 times/second";
constexpr int kResets = 10;
constexpr double kResetLimit = 6.0;

/// The two windows word the same thing in their own ways.
std::string_view UpdatedWhileRunning(RunWindow window) {
  return window == RunWindow::fakeMMI ? kUpdatedByInstruction : kUpdatedByLine;
}

void ShowRunning(Desk& desk, RunWindow window) {
  RunPanel& panel = desk.source.run.panel;
  panel.Running = true;
  panel.phase = RunPhase::Running;
  panel.Play = Picture::PlayGreen;
  panel.Pause = Picture::PauseGray;
  panel.SingleStep = Picture::StepGray;
  panel.lblUpdate = UpdatedWhileRunning(window);
  desk.run.ControlsChanged();
}

/// The operator has stopped the hub. `ran`: something was known to run there.
void TellStopped(Desk& desk, bool ran) {
  desk.source.run.panel.phase = RunPhase::Stopped;
  desk.run.ControlsChanged();
  Happened(desk, ran ? "Stopped by the operator" + AtLine(desk.source.run) : "Stop sent to the hub");
}

/// Stops the program on the hub. The operator terminal's text ends with it.
void SayStopAndWait(Desk& desk, bool terminal) {
  const bool ran = desk.source.link.HubRuns;
  SayStop(desk.link());
  RecordControl(desk, RunOrderSent::Stop);
  RecordEnd(desk, RunOver::Stopped);
  TellStopped(desk, ran);
  if (terminal) {
    desk.Comm1.RThreshold(1);
    desk.source.display.MMIActive = false;
  }
  desk.loop.WaitSecs(kCommandPause);
  desk.view.ProgCounter(std::nullopt);
}

/// To the drives an "S" would be a letter of some command. The event loop gets no turn before they have the
/// line again: what the operator types meanwhile must not reach the hub.
void StopBehindTerminal(Desk& desk) {
  const bool ran = desk.source.link.HubRuns;
  LeaveTerminal(desk);
  StopHub(desk.link());
  ActivateTerminal(desk);
  TellStopped(desk, ran);
  desk.source.display.MMIActive = false;
  desk.view.ProgCounter(std::nullopt);
}

/// Which window the hub wants for its program: "M" and "X" must come by themselves in one read.
RunWindow AskRunWindow(Desk& desk, const std::string& identity) {
  EventsOff events(desk.Comm1);
  events.RestoreTo(1);
  desk.Comm1.Output("E");
  desk.program().HubVersion = RevisionOf(static_cast<unsigned char>(identity[0]));
  const double start = desk.clock.Timer();
  std::string reply;
  const bool answered = AwaitUntil(desk.link(), start, kReplyLimit, [&] {
    reply = desk.Comm1.Input();
    return reply == "M" || reply == "X";
  });
  if (!answered) return RunWindow::None;
  return reply == "X" ? RunWindow::ExecStatus : RunWindow::fakeMMI;
}

ExecuteResult ExecuteWhileBusy(Desk& desk) {
  StopHub(desk.link());
  const std::string identity = CheckDrive(desk);
  if (identity.empty()) return ExecuteResult::HubSilent;
  if (!IsHub(desk.boxes, identity)) return ExecuteResult::UnknownHub;
  if (!AllDrivesOK(desk.program(), desk.link())) return ExecuteResult::DrivesNotOK;
  const RunWindow window = AskRunWindow(desk, identity);
  if (window == RunWindow::None) {
    TellFailedExchange(
        desk.link(),
        {.text = "The Tavlo Hub is not responding to the execute (E) command.  Is it connected to "
                 "the right port and turned on?",
         .icon = Icon::Question});
    return ExecuteResult::NoAnswer;
  }
  desk.source.run.Halted = false;
  desk.source.run.holds = HubHolds(desk.program(), desk.source.link.held);
  desk.run.ShowModal(window);
  if (desk.log != nullptr) desk.log->Close();
  return ExecuteResult::Ran;
}

}  // namespace

ExecuteResult Execute(Desk& desk) {
  if (desk.source.link.Busy) return ExecuteResult::Busy;
  if (desk.source.Changed) {
    const Answer answer = desk.boxes.MsgBox({.text = "You have changed your program since the last time you "
                                                     "downloaded it.  Do you want to execute anyway?",
                                             .buttons = Buttons::YesNo});
    if (answer != Answer::Yes) return ExecuteResult::Declined;
  }
  return WhileBusy(desk, [&desk] { return ExecuteWhileBusy(desk); });
}

void StartRun(Desk& desk, RunWindow window) {
  desk.source.link.Stopped = false;
  desk.source.run.line.reset();
  NoteHubRuns(desk.link(), true);
  Happened(desk, "Program started");
  // Half a message of an earlier run would take the first bytes of this one for its own.
  DropInput(desk.link());
  if (desk.log != nullptr) desk.log->Begin(desk.source);
  MakeLimitsRed(desk.source.run.panel, desk.program());
  ShowRunning(desk, window);
  for (int axis = 0; axis < kAxes; ++axis) desk.run.StatusChanged(axis);
  if (window == RunWindow::ExecStatus) {
    desk.Comm1.Output("X");
    return;
  }
  desk.Comm1.RThreshold(1);
  desk.source.display.CurRow = 0;
  desk.source.display.EscPending = desk.source.display.RowPending = desk.source.display.RowGot = false;
  for (std::string& line : desk.source.display.textline) line.clear();
  desk.run.TextLinesChanged();
  desk.source.display.MMIActive = true;
  desk.Comm1.Output("M");
}

void StopRun(Desk& desk, RunWindow window) {
  SayStopAndWait(desk, window == RunWindow::fakeMMI);
  HideYelLine(desk.grid(), -1);
  desk.run.Hide();
}

bool CanStop(const Desk& desk) {
  return desk.Comm1.PortOpen() && !desk.source.link.Transfer;
}

void StopHubNow(Desk& desk) {
  LinkState& link = desk.source.link;
  if (!CanStop(desk) || link.Stopping) return;
  if (desk.source.VOXterm.TermActive) {
    StopBehindTerminal(desk);
  } else {
    link.Stopping = true;
    SayStopAndWait(desk, desk.source.display.MMIActive);
    link.Stopping = false;
  }
  ClearAnimation(desk.grid());
}

void CloseRun(Desk& desk, RunWindow window) {
  // Only the status window stops the hub when it is closed by its frame; the emulator sends nothing.
  if (window != RunWindow::ExecStatus) {
    RecordEnd(desk, RunOver::ClosedUnstopped);
    return Happened(desk, "Operator terminal closed: the program runs on");
  }
  SayStop(desk.link());
  RecordControl(desk, RunOrderSent::Stop);
  RecordEnd(desk, RunOver::ClosedAndStopped);
  TellStopped(desk, true);
}

void LeaveRun(Desk& desk) {
  ClearAnimation(desk.grid());
}

void ClickPlay(Desk& desk) {
  if (desk.source.link.Stopped) return;
  RunPanel& panel = desk.source.run.panel;
  panel.SingleStep = Picture::StepGray;
  if (!panel.Running) {
    desk.Comm1.Output("r");
    RecordControl(desk, RunOrderSent::Play);
    panel.Play = Picture::PlayGreen;
    panel.Running = true;
    panel.phase = RunPhase::Running;
    panel.Pause = Picture::PauseGray;
  }
  panel.lblUpdate = UpdatedWhileRunning(desk.run.Active());
  desk.run.ControlsChanged();
}

void ClickPause(Desk& desk) {
  if (desk.source.link.Stopped) return;
  RunPanel& panel = desk.source.run.panel;
  panel.lblUpdate = kUpdatedByTime;
  if (!panel.Running) {
    desk.run.ControlsChanged();
    return;
  }
  desk.Comm1.Output("P");
  RecordControl(desk, RunOrderSent::Pause);
  panel.Play = Picture::PlayGray;
  panel.Running = false;
  panel.phase = RunPhase::Pausing;
  // The status window waits for the hub before it shows red, the emulator does not.
  if (desk.run.Active() == RunWindow::fakeMMI) panel.Pause = Picture::PauseRed;
  desk.run.ControlsChanged();
  desk.loop.WaitSecs(kCommandPause);
  // The wait ran the event loop: the run may be over, or may have been resumed.
  if (panel.Running || desk.run.Active() == RunWindow::None) return;
  ClearAnimation(desk.grid());
  if (panel.SingleStep != Picture::StepYellow) panel.Pause = Picture::PauseRed;
  desk.run.ControlsChanged();
}

void ClickSingleStep(Desk& desk) {
  RunPanel& panel = desk.source.run.panel;
  const bool paused_and_idle = panel.Play == Picture::PlayGray && panel.SingleStep != Picture::StepYellow;
  if (desk.source.link.Stopped || !paused_and_idle) return;
  panel.SingleStep = Picture::StepYellow;
  panel.phase = RunPhase::Stepping;
  panel.Pause = Picture::PauseGray;
  desk.run.ControlsChanged();
  desk.Comm1.Output("T");
  RecordControl(desk, RunOrderSent::SingleStep);
}

void ClickReset(Desk& desk) {
  if (desk.source.link.Stopped) return;
  desk.Comm1.Output("0");
  RecordControl(desk, RunOrderSent::Reset);
  desk.view.AutoScroll(0);
}

void StepDone(Desk& desk) {
  desk.source.run.panel.SingleStep = Picture::StepGray;
  desk.source.run.panel.Pause = Picture::PauseRed;
  desk.source.run.panel.phase = RunPhase::Paused;
  desk.run.ControlsChanged();
}

void StandBefore(Desk& desk, int line) {
  RunState& run = desk.source.run;
  run.line = line;
  if (run.panel.phase != RunPhase::Pausing) return;
  run.panel.phase = RunPhase::Paused;
  desk.run.ControlsChanged();
  Happened(desk, "Paused" + AtLine(run));
}

std::string AtLine(const RunState& run) {
  return run.line ? " at line " + Joined(*run.line + 1) : std::string();
}

char KeyByte(MmiKey key) {
  constexpr std::string_view kBytes = "0123456789.+-\r\bABCD";
  static_assert(kBytes.size() == static_cast<std::size_t>(MmiKey::arrowright) + 1);
  return kBytes[static_cast<std::size_t>(key)];
}

void PressKey(Desk& desk, MmiKey key) {
  if (!desk.source.display.MMIActive) return;
  const char byte = KeyByte(key);
  desk.Comm1.Output({&byte, 1});
  RecordKey(desk, key);
}

void ResetDrive(const Link& link, EventLoop& loop) {
  loop.Yield();
  const EventsOff events(link.Comm1);
  const double start = link.clock.Timer();
  for (int pass = 0; pass < kResets; ++pass) {
    link.Comm1.Output("R");
    if (AwaitExactly(link, "Y", start, kResetLimit)) continue;
    TellFailedExchange(
        link, {.text = "I sent the reset command to the drive, but it did not respond.  Please reset the "
                       "drive manually by turning it off.",
               .title = "Can't reset",
               .icon = Icon::Exclamation});
    return;
  }
}

}  // namespace tavlo
