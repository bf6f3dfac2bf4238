// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/execution.h"

#include "desk/grid.h"
#include "link/drive_check.h"
#include "link/polled.h"

namespace tavlo {
namespace {

constexpr double kStopPause = 0.05;
constexpr int kResets = 10;
constexpr double kResetLimit = 6.0;

/// Which window the hub wants for its program: "M" and "X" must come by themselves in one read.
RunWindow AskRunWindow(Desk& desk, const std::string& identity) {
  EventsOff events(desk.Comm1);
  events.RestoreTo(1);
  desk.Comm1.Output("E");
  desk.program().HubVersion = RevisionOf(static_cast<unsigned char>(identity[0]));
  const double start = desk.clock.Timer();
  std::string reply;
  const bool answered = AwaitUntil(desk, start, kReplyLimit, [&] {
    reply = desk.Comm1.Input();
    return reply == "M" || reply == "X";
  });
  if (!answered) return RunWindow::None;
  return reply == "X" ? RunWindow::ExecStatus : RunWindow::fakeMMI;
}

ExecuteResult ExecuteWhileBusy(Desk& desk) {
  desk.Comm1.Output("S");
  const std::string identity = CheckDrive(desk);
  if (identity.empty()) return ExecuteResult::HubSilent;
  if (!AllDrivesOK(desk)) return ExecuteResult::DrivesNotOK;
  const RunWindow window = AskRunWindow(desk, identity);
  if (window == RunWindow::None) {
    MsgBox(
        desk,
        "The Tavlo Hub is not responding to the execute (E) command.  Is it connected to the right port and "
        "turned on?",
        Icon::Question);
    return ExecuteResult::NoAnswer;
  }
  desk.source.Halted = false;
  desk.run.ShowModal(window);
  return ExecuteResult::Ran;
}

}  // namespace

ExecuteResult Execute(Desk& desk) {
  if (desk.source.Busy) return ExecuteResult::Busy;
  if (desk.source.Changed) {
    const Answer answer =
        MsgBox(desk,
               "You have changed your program since the last time you downloaded it.  Do you want "
               "to execute anyway?",
               Icon::None, kApplicationTitle, Buttons::YesNo);
    if (answer != Answer::Yes) return ExecuteResult::Declined;
  }
  desk.source.Busy = true;
  const ExecuteResult result = ExecuteWhileBusy(desk);
  desk.source.Busy = false;
  return result;
}

void StartRun(Desk& desk, RunWindow window) {
  desk.source.Stopped = false;
  if (window == RunWindow::ExecStatus) {
    desk.Comm1.Output("X");
    return;
  }
  desk.Comm1.RThreshold(1);
  desk.source.CurRow = 0;
  desk.source.EscPending = desk.source.RowPending = desk.source.RowGot = false;
  for (std::string& line : desk.source.textline) line.clear();
  desk.run.TextLinesChanged();
  desk.source.MMIActive = true;
  desk.Comm1.Output("M");
}

void StopRun(Desk& desk, RunWindow window) {
  desk.Comm1.Output("S");
  desk.source.Stopped = true;
  if (window == RunWindow::fakeMMI) {
    desk.Comm1.RThreshold(1);
    desk.source.MMIActive = false;
  }
  WaitSecs(desk, kStopPause);
  desk.view.ProgCounter(std::nullopt);
  HideYelLine(desk, -1);
  desk.run.Hide();
}

void CloseRun(Desk& desk, RunWindow window) {
  // Only the status window stops the hub when it is closed by its frame; the emulator sends nothing.
  if (window == RunWindow::ExecStatus) desk.Comm1.Output("S");
}

void LeaveRun(Desk& desk) {
  ClearAnimation(desk);
}

void ResetDrive(Desk& desk) {
  desk.loop.Yield();
  const EventsOff events(desk.Comm1);
  const double start = desk.clock.Timer();
  for (int pass = 0; pass < kResets; ++pass) {
    desk.Comm1.Output("R");
    if (AwaitExactly(desk, "Y", start, kResetLimit)) continue;
    MsgBox(
        desk,
        "I sent the reset command to the drive, but it did not respond.  Please reset the drive manually by "
        "turning it off.",
        Icon::Exclamation, "Can't reset");
    return;
  }
}

}  // namespace tavlo
