// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/line_blocks.h"
#include "model/program.h"
#include "session/command_recall.h"
#include "session/history.h"
#include "session/hub_program.h"
#include "session/rows.h"
#include "session/run_panel.h"

namespace tavlo {

inline constexpr std::string_view kUntitled = "untitled";

/// Tells one text from another: its length and a sum over its bytes.
struct TextMark {
  std::size_t bytes = 0;
  std::uint64_t sum = 0;
  bool operator==(const TextMark&) const = default;
};

[[nodiscard]] TextMark MarkOf(std::string_view text);

/// The line to the hub, and what is known about the hub at its other end.
struct LinkState {
  /// A hub operation is under way: Download, Upload and Execute keep out.
  bool Busy = false;
  /// The port vanished during that operation, which will report it at its end.
  bool PortLost = false;
  /// Number of the open port, 1..8; 0 until a port has been opened.
  std::int16_t ComNum = 0;
  /// Index 0..7 of the selected `OptCom`; nothing if no port could be opened.
  std::optional<int> OptCom;
  /// What has arrived from the hub and has not been handled, in order of arrival.
  std::deque<char> received;
  /// Whether a message of the hub is being collected, and what has been collected of it.
  bool InMsg = false;
  std::string MsgBuf;
  /// "?" until a hub's firmware is known, then for example "1.38".
  std::string DriveVersion = "?";
  /// The drive models that the program in the hub expects, from the last reply.
  AxisConfig::Axes<std::int16_t> HubDrives{};
  /// Firmware of each drive, from the last reply.
  std::array<float, kAxisSlots> DriveRev{};
  /// The hub was told to run its program, and nothing has ended the run since: anything may be moving. Is
  /// written by NoteHubRuns().
  bool HubRuns = false;
  /// A program is on its way to the hub or from it; a byte more would spoil it.
  bool Transfer = false;
  /// What answers on this port said of itself last: the byte of its revision and that of its model. Empty as
  /// long as nothing has answered since the port was opened.
  std::string identity;
  /// Is written by NoteHubProgram() and ForgetHub().
  HubProgram held;
  /// Number of a port that has vanished and of which no other has taken the place; 0 if there is none.
  int gone = 0;
  /// A stop has been sent, and the hub is being given the time to take it in.
  bool Stopping = false;
  /// The last run was stopped: what the hub still says about it is neither shown nor answered.
  bool Stopped = false;
};

/// The operator terminal's four lines and the state of its cursor and escapes.
struct DisplayState {
  /// The terminal is running a program, so plain characters are text to show.
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
  /// The line 0..199 that the hub spoke of last: it began it, or stands before it.
  std::optional<int> line;
  /// What the hub held beside the program that was shown when the run began.
  Holds holds = Holds::Unknown;
};

/// Something that the operator may want to know later.
struct Happening {
  /// Seconds since midnight.
  double at = 0;
  std::string text;
};

/// What the rows of the main window show.
struct RowsState {
  std::array<Row, kLines> rows;
  std::vector<Arrow> arrows;
  /// The target that the rows show for `LimitBranch`.
  std::int16_t LimitLine = 1;
};

/// The drive terminal.
struct DriveTerminal {
  /// The terminal is open and takes everything that arrives.
  bool TermActive = false;
  bool TermUsed = false;
  /// What has arrived and has not been handled.
  std::string VOXbuffer = {};
  /// Bytes are being handled.
  bool Draining = false;
  /// The text of the command being logged.
  std::string CmdBuf = {};
  /// Whether a greeting of the hub is being collected, and what has been collected of it.
  bool InPower = false;
  std::string PowerBuf = {};
  /// The last text written to `History` ended a line.
  bool AtLineStart = true;
  bool Logging = false;
  /// Past traffic: commands between dollar signs, and responses.
  std::string History = {};
};

/// The live program of a desktop or a command, and the state of its session. A process has one; tests make as
/// many as they like.
struct Source {
  Program program;
  /// The line being edited, 0-based.
  std::int16_t CurLine = 0;
  /// A dialog that picks or edits this line is up: no other line can become the current one.
  bool Editing = false;
  /// The program differs from what was last saved, loaded or downloaded. MarkUnchanged() clears it.
  bool Changed = false;
  std::string file_name{kUntitled};
  History history;
  /// The files that were read or written in this session, with what they held then.
  std::map<std::string, TextMark> files_seen;
  /// The lines that were cut last, until they are pasted; null if there are none.
  std::shared_ptr<const CutOut> cut_out;
  LinkState link;
  DisplayState display;
  RunState run;
  RowsState shown;
  DriveTerminal VOXterm;
  /// Outlasts the terminal, which forgets all else when it is opened.
  CommandRecall commands;
  /// The newest first. Is written by Happened().
  std::vector<Happening> happened;
};

/// Gives a new session its program, rows, lists and boxes. Opens no port.
void InitSession(Source& source);

/// Returns the line number that `LimitBranch` names, 1-based as the operator counts.
[[nodiscard]] std::int16_t LimitLineOf(const Program& program);

/// Returns a file's name without its folder.
[[nodiscard]] std::string_view BaseName(std::string_view path);

/// Returns the title of the main window: "Tavlo Composer  V1.29.1 - " and the file's name.
[[nodiscard]] std::string Caption(const Source& source);

}  // namespace tavlo
