// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"
#include "platform/serial_port.h"
#include "platform/services.h"
#include "session/rows.h"
#include "session/run_panel.h"
#include "session/views.h"

namespace tavlo {

inline constexpr std::string_view kUntitled = "untitled";

/// What the drive terminal holds.
struct DriveTerminal {
  /// The text of the command being logged.
  std::string CmdBuf;
  /// A greeting of the hub is being collected, and what has been collected of it.
  bool InPower = false;
  std::string PowerBuf;
  /// The last thing written to `History` ended a line.
  bool AtLineStart = true;
  bool Logging = false;
  /// Bytes are being worked off.
  bool Draining = false;
  /// Past traffic: commands between dollar signs, and responses.
  std::string History;
};

/// The live program of a desktop or a command and the flags of its session. One for a process; tests make
/// as many as they like.
struct Source {
  Program program;
  /// The line being edited, 0-based.
  std::int16_t CurLine = 0;
  /// The program differs from what was last saved, loaded or downloaded.
  bool Changed = false;
  /// A hub operation is under way: Download, Upload and Execute keep out.
  bool Busy = false;
  /// The port has gone in the middle of that operation, which tells it at its end.
  bool PortLost = false;

  /// Number of the open port, 1..8; 0 until one has been opened.
  std::int16_t ComNum = 0;
  /// Index 0..7 of the `OptCom` that is on; none after no port could be opened.
  std::optional<int> OptCom;
  /// What has come from the hub and has not been looked at, in the order in which it came.
  std::string received;
  /// A hub message is being collected, and what has been collected of it.
  bool InMsg = false;
  std::string MsgBuf;
  /// The operator terminal is running a program, so plain characters are its text.
  bool MMIActive = false;
  /// The drive terminal is open and takes everything.
  bool TermActive = false;
  bool TermUsed = false;
  std::string VOXbuffer;
  DriveTerminal VOXterm;
  /// The operator terminal's four lines and the state of its cursor and escapes.
  std::array<std::string, 4> textline;
  bool EscPending = false;
  bool RowPending = false;
  bool RowGot = false;
  std::int16_t RowValue = 0;
  std::int16_t CurRow = 0;
  /// What the run window shows.
  RunPanel panel{};
  /// The drive models that the hub's own program expects, as last asked.
  AxisConfig::Axes<std::int16_t> HubDrives{};
  /// Firmware of each drive, as last read.
  std::array<float, kAxisSlots> DriveRev{};

  /// The hub has reported a halt or a fault since the last run began.
  bool Halted = false;
  /// The last run has been stopped: what the hub still says of it is neither shown nor answered.
  bool Stopped = false;
  /// The hub was told to run its program, and nothing has been seen to end that.
  bool HubRuns = false;

  /// "?" until a hub's firmware is known, then as "1.38".
  std::string DriveVersion = "?";
  /// The target that the rows show for `LimitBranch`.
  std::int16_t LimitLine = 1;
  std::string file_name{kUntitled};
  std::array<Row, kLines> rows;
  std::vector<Arrow> arrows;
};

/// What a handler of the desktop works on and with. The command line and the tests fill it with
/// implementations of their own.
struct Desk {
  Source& source;
  SerialPort& Comm1;
  MessageBoxes& boxes;
  Clock& clock;
  EventLoop& loop;
  Beeper& beeper;
  ProgramView& view;
  RunView& run;
  ProgressForm& downbox;
  ProgressForm& upbox;
  SettingsStore& settings;
  FileDialogs& dialogs;
  FileStore& files;
  LoadingForm& loading;
  /// Nothing while there are no dialogs to edit with.
  EditorWindows* editors = nullptr;
  /// Nothing while there is no drive terminal.
  TerminalView* terminal = nullptr;

  [[nodiscard]] Program& program() const { return source.program; }
};

/// Shows the box and returns the operator's answer.
Answer MsgBox(Desk& desk, Box box);

/// The same for what is wrong with a line 0..199: the main window goes to it first. Every check that names a
/// line tells it in this way.
Answer MsgBoxAbout(Desk& desk, std::optional<int> line, Box box);

/// Yields to the event loop until the time has passed.
void WaitSecs(Desk& desk, double seconds);

}  // namespace tavlo
