// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// How the Execute button's work ended.
enum class ExecuteResult {
  Ran,         ///< a run window was shown and has been hidden again
  Busy,        ///< another operation with the hub is under way
  Declined,    ///< the operator chose not to run a changed program
  HubSilent,   ///< the hub did not identify itself
  UnknownHub,  ///< the device that answers is not a known hub
  DrivesNotOK,
  NoAnswer,  ///< to the command to execute
};

/// The `execbutton`: asks the hub about itself and its drives, has it prepare to execute, and opens the run
/// window that the hub asks for.
ExecuteResult Execute(Desk& desk);

// What the two run windows do at their events.

/// Execute has shown the window: starts the program. Must not be called when the window regains the focus
/// from a box: that would restart the machine without the operator's knowledge.
void StartRun(Desk& desk, RunWindow window);
/// `btnStop`. Hides the window. From then on nothing is sent until the operator acts again.
void StopRun(Desk& desk, RunWindow window);
/// Whether a stop can be sent now: a port is open, and no transfer is under way.
[[nodiscard]] bool CanStop(const Desk& desk);
/// `StopButton`, and Escape while the hub runs, where no run window is up whose `btnStop` does it: its window
/// was closed by its frame, and the hub went on. Does what that `btnStop` would have done. While the drive
/// terminal has the line, takes it back from the drives first and gives it to them again afterwards. Does
/// nothing if no stop can be sent, or while the last one is being taken in.
void StopHubNow(Desk& desk);
/// The operator closed the window with the button in its frame.
void CloseRun(Desk& desk, RunWindow window);
/// The window lost the focus or was hidden.
void LeaveRun(Desk& desk);

/// `Play`, `Pause`, `SingleStep` and `btnReset`: resume, pause, run one line of a paused program, and return
/// to the first line. They do nothing after Stop.
void ClickPlay(Desk& desk);
void ClickPause(Desk& desk);
void ClickSingleStep(Desk& desk);
void ClickReset(Desk& desk);
/// The hub has reported the end of a single step.
void StepDone(Desk& desk);
/// The hub's marker stands beside this line 0..199. If the operator has paused the program, it stands still
/// there now.
void StandBefore(Desk& desk, int line);

/// Returns " at line 12" with the line that the hub spoke of last; empty if it spoke of none in this run.
[[nodiscard]] std::string AtLine(const RunState& run);

/// The keys of the operator terminal.
enum class MmiKey {
  Digit0,
  Digit1,
  Digit2,
  Digit3,
  Digit4,
  Digit5,
  Digit6,
  Digit7,
  Digit8,
  Digit9,
  dot,
  yes,
  no,
  enter,
  bksp,
  arrowup,
  arrowdown,
  arrowleft,
  arrowright
};
/// The byte that a key sends.
[[nodiscard]] char KeyByte(MmiKey key);
/// Sends the key's byte at once, without echo. Only while the emulator runs a program.
void PressKey(Desk& desk, MmiKey key);

/// Sends "R" ten times and waits for a "Y" each time, six seconds in all.
void ResetDrive(const Link& link, EventLoop& loop);

}  // namespace tavlo
