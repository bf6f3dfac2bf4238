// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// How the Execute button came to its end.
enum class ExecuteResult {
  Ran,         ///< a run window was shown and has been hidden again
  Busy,        ///< another operation with the hub is under way
  Declined,    ///< the operator does not run a changed program
  HubSilent,   ///< the hub did not say who it is
  UnknownHub,  ///< what answers is no hub that is known
  DrivesNotOK,
  NoAnswer,  ///< to the command to execute
};

/// The `execbutton`: asks the hub about itself and its drives, has it prepare to execute and opens the
/// run window that it asks for.
ExecuteResult Execute(Desk& desk);

// What the two run windows do at their events.

/// The window has come up through Execute: starts the program. Not called again when the window gets the
/// focus back from a box, because that would restart the machine behind the operator's back.
void StartRun(Desk& desk, RunWindow window);
/// `btnStop`. Hides the window; after it nothing goes out without a new act of the operator.
void StopRun(Desk& desk, RunWindow window);
/// The operator closed the window by its frame.
void CloseRun(Desk& desk, RunWindow window);
/// The window lost the focus or was hidden.
void LeaveRun(Desk& desk);

/// `Play`, `Pause`, `SingleStep` and `btnReset`: resume, pause, one line of a paused program, and back to the
/// first line. Nothing happens after Stop.
void ClickPlay(Desk& desk);
void ClickPause(Desk& desk);
void ClickSingleStep(Desk& desk);
void ClickReset(Desk& desk);
/// The hub has told the end of a single step.
void StepDone(Desk& desk);

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
/// What a key sends.
[[nodiscard]] char KeyByte(MmiKey key);
/// Sends it, at once and without echo, while the emulator runs a program.
void PressKey(Desk& desk, MmiKey key);

/// Sends ten "R" and awaits a "Y" for each, six seconds for all together.
void ResetDrive(const Link& link, EventLoop& loop);

}  // namespace tavlo
