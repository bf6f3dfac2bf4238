// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

/// What the main window shows of the program. Everything it needs to paint is in `Source`; these only
/// say what has changed. None of them runs the event loop.
class ProgramView {
 public:
  virtual ~ProgramView() = default;
  virtual void RowChanged(int line) = 0;
  virtual void AllRowsChanged() = 0;
  virtual void ArrowsChanged() = 0;
  /// The rows of `LblDriveDesc`.
  virtual void DrivesChanged() = 0;
  /// `ModelList`, `DriveVersion`, the `OptCom` that is on.
  virtual void HubChanged() = 0;
  /// `LimitList` and `LimitBranch`.
  virtual void LimitChanged() = 0;
  virtual void CaptionChanged() = 0;
  /// Brings a row into view, without moving anything while it can be seen.
  virtual void AutoScroll(int line) = 0;
  /// Makes the row the current one and brings it into view.
  virtual void GoTo(int line) = 0;
  /// The marker beside the row in execution; nothing hides it.
  virtual void ProgCounter(std::optional<int> line) = 0;
};

/// The two windows that stand while a program runs. Both carry the tag "status".
enum class RunWindow { None, ExecStatus, fakeMMI };

/// What the panel of a drive fault shows.
struct ServoFaultPanel {
  std::string caption;
  std::string FaultMessage;
  /// Labels by bit of the code.
  std::array<std::string, 14> Label1;
  int code = 0;
  /// Of the drive, from 1.
  int axis = 0;
};

/// The windows of a run.
class RunView {
 public:
  virtual ~RunView() = default;
  /// Which run window is up. A box on top of it does not make it inactive.
  [[nodiscard]] virtual RunWindow Active() const = 0;
  /// Shows the window, which sends the command that starts the program, and returns when it is hidden.
  virtual void ShowModal(RunWindow window) = 0;
  /// Hides the run window that is up, if one is.
  virtual void Hide() = 0;
  /// The lights of an axis, 0..7, in `RunState::panel`.
  virtual void StatusChanged(int axis) = 0;
  /// The pictures of the controls and `lblUpdate`, there too.
  virtual void ControlsChanged() = 0;
  /// `textline` of the operator terminal has changed.
  virtual void TextLinesChanged() = 0;
  /// Shows the panel and returns when it is closed; while it is up, only refreshes it.
  virtual void ShowServoFault(const ServoFaultPanel& panel) = 0;
};

/// The drive terminal: shows the `History` of `Source::VOXterm`.
class TerminalView {
 public:
  virtual ~TerminalView() = default;
  /// Shows the terminal, which turns the passthrough on, and returns when it is closed.
  virtual void ShowModal() = 0;
  /// This has been added at the end.
  virtual void HistoryGrew(std::string_view added) = 0;
  /// The older part has been cut off.
  virtual void HistoryCut() = 0;
};

/// The dialogs that edit a line.
class EditorWindows {
 public:
  virtual ~EditorWindows() = default;
  /// Lets the operator pick what stands on `CurLine`. Modal.
  virtual void ShowPickProg() = 0;
  /// The editor of `CurLine`'s kind. Modal.
  virtual void ShowInstDialog() = 0;
};

}  // namespace tavlo
