// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "model/drive_scan.h"
#include "model/program.h"

namespace tavlo {

/// What the main window shows of the program. All that it needs to paint is in `Source`; these functions only
/// say what has changed. None of them runs the event loop.
class ProgramView {
 public:
  virtual ~ProgramView() = default;
  virtual void RowChanged(int line) = 0;
  virtual void AllRowsChanged() = 0;
  virtual void ArrowsChanged() = 0;
  /// The rows of `LblDriveDesc`.
  virtual void DrivesChanged() = 0;
  /// `ModelList`, `DriveVersion`, the selected `OptCom`, or what is known of the hub and its program.
  virtual void HubChanged() = 0;
  /// `LimitList` or `LimitBranch`.
  virtual void LimitChanged() = 0;
  virtual void CaptionChanged() = 0;
  /// Brings a row into view; moves nothing if it can be seen already.
  virtual void AutoScroll(int line) = 0;
  /// Makes the row the current one and brings it into view.
  virtual void GoTo(int line) = 0;
  /// Shows the marker beside the row that executes; without a line, hides it.
  virtual void ProgCounter(std::optional<int> line) = 0;
  /// `StopButton`: whether anything may be moving, and whether a stop can be sent.
  virtual void StopChanged() = 0;
  /// There is a new event in `Source::happened`.
  virtual void SomethingHappened() = 0;
  /// Says for a moment why nothing happened, or what was done in passing. Asks for nothing.
  virtual void Note(std::string_view text) = 0;
};

/// The two windows that are shown while a program runs. Both carry the tag "status".
enum class RunWindow { None, ExecStatus, fakeMMI };

/// What the window of a drive fault shows.
struct ServoFaultPanel {
  std::string caption;
  std::string FaultMessage;
  /// Labels, by bit of the code.
  std::array<std::string, 14> Label1;
  int code = 0;
  /// The drive's axis, from 1.
  int axis = 0;
};

struct Source;

/// Keeps a session for the case that its end takes the operator by surprise.
class SessionKeeper {
 public:
  virtual ~SessionKeeper() = default;
  /// The program, its file or whether it is saved has changed, or a run has begun or ended.
  virtual void Keep(const Source& source) = 0;
};

/// The windows of a run.
class RunView {
 public:
  virtual ~RunView() = default;
  /// Returns the run window that is up. A box on top of it does not make it inactive.
  [[nodiscard]] virtual RunWindow Active() const = 0;
  /// Shows the window, which sends the command that starts the program. Returns when the window is hidden.
  virtual void ShowModal(RunWindow window) = 0;
  /// Hides the run window that is up, if any.
  virtual void Hide() = 0;
  /// The lights of an axis, 0..7, in `RunState::panel` have changed.
  virtual void StatusChanged(int axis) = 0;
  /// The pictures of the controls or `lblUpdate`, also in `RunState::panel`, have changed.
  virtual void ControlsChanged() = 0;
  /// `textline` of the operator terminal has changed.
  virtual void TextLinesChanged() = 0;
  /// Shows the panel and returns when it is closed. If it is up already, only refreshes it.
  virtual void ShowServoFault(const ServoFaultPanel& panel) = 0;
};

/// The drive terminal: shows `History` of `Source::VOXterm`.
class TerminalView {
 public:
  virtual ~TerminalView() = default;
  /// Shows the terminal, which turns the passthrough on. Returns when it is closed.
  virtual void ShowModal() = 0;
  /// `added` has been appended.
  virtual void HistoryGrew(std::string_view added) = 0;
  /// The older part has been cut off.
  virtual void HistoryCut() = 0;
};

/// What a button of the picker asks for.
struct Picked {
  enum class What { Kind, Insert, Delete };
  What what = What::Kind;
  /// The kind of line, for that.
  int type = 0;
};

/// The page with which a dialog comes up, if it has more than one.
enum class DialogPage { AsLeft, Analysis };

/// The dialogs that edit a program.
class EditorWindows {
 public:
  virtual ~EditorWindows() = default;
  /// Lets the operator pick what stands on a line. Each press goes to `act`, which returns whether the picker
  /// may close; it closes without one when it is cancelled. Modal.
  virtual void ShowPickProg(int line, const std::function<bool(const Picked&)>& act) = 0;
  /// Lets the operator edit a line 0..199 of the program in the dialog of its kind. Returns whether it was
  /// written: not if the dialog was cancelled or the kind has none. Modal.
  virtual bool Edit(Program& program, int line, DialogPage page) = 0;
  /// Lets the operator edit the settings of the axes, after which the lines have been rescaled. `scan` asks
  /// the hub which drives are plugged in. Returns whether they were written. Modal.
  virtual bool EditHardware(Program& program, const std::function<DriveScan()>& scan) = 0;
};

}  // namespace tavlo
