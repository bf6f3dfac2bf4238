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
#include "session/rows.h"
#include "session/run_panel.h"

namespace tavlo {

inline constexpr std::string_view kUntitled = "untitled";

/// The line to the hub, and what is known of the hub at its other end.
struct LinkState {
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
  /// "?" until a hub's firmware is known, then as "1.38".
  std::string DriveVersion = "?";
  /// The drive models that the hub's own program expects, as last asked.
  AxisConfig::Axes<std::int16_t> HubDrives{};
  /// Firmware of each drive, as last read.
  std::array<float, kAxisSlots> DriveRev{};
  /// The hub was told to run its program, and nothing has been seen to end that.
  bool HubRuns = false;
  /// The last run has been stopped: what the hub still says of it is neither shown nor answered.
  bool Stopped = false;
};

/// The operator terminal's four lines and the state of its cursor and escapes.
struct DisplayState {
  /// It is running a program, so plain characters are its text.
  bool MMIActive = false;
  std::array<std::string, 4> textline;
  bool EscPending = false;
  bool RowPending = false;
  bool RowGot = false;
  std::int16_t RowValue = 0;
  std::int16_t CurRow = 0;
};

/// A run of the program.
struct RunState {
  /// What the run window shows.
  RunPanel panel{};
  /// The hub has reported a halt or a fault since the last run began.
  bool Halted = false;
};

/// What the rows of the main window show.
struct RowsState {
  std::array<Row, kLines> rows;
  std::vector<Arrow> arrows;
  /// The target that they show for `LimitBranch`.
  std::int16_t LimitLine = 1;
};

/// The drive terminal.
struct DriveTerminal {
  /// It is open and takes everything that comes.
  bool TermActive = false;
  bool TermUsed = false;
  /// What has come and has not been looked at.
  std::string VOXbuffer = {};
  /// Bytes are being worked off.
  bool Draining = false;
  /// The text of the command being logged.
  std::string CmdBuf = {};
  /// A greeting of the hub is being collected, and what has been collected of it.
  bool InPower = false;
  std::string PowerBuf = {};
  /// The last thing written to `History` ended a line.
  bool AtLineStart = true;
  bool Logging = false;
  /// Past traffic: commands between dollar signs, and responses.
  std::string History = {};
};

/// The live program of a desktop or a command and the state of its session. One for a process; tests make
/// as many as they like.
struct Source {
  Program program;
  /// The line being edited, 0-based.
  std::int16_t CurLine = 0;
  /// The program differs from what was last saved, loaded or downloaded.
  bool Changed = false;
  std::string file_name{kUntitled};
  LinkState link;
  DisplayState display;
  RunState run;
  RowsState shown;
  DriveTerminal VOXterm;
};

/// Gives a new session its program, rows, lists and boxes, and opens no port.
void InitSession(Source& source);

/// The number of the line that `LimitBranch` names, as the operator counts.
[[nodiscard]] std::int16_t LimitLineOf(const Program& program);

/// What the main window's frame says: "Tavlo Composer  V1.29.1 - " and the file's name.
[[nodiscard]] std::string Caption(const Source& source);

}  // namespace tavlo
