// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/axis_config.h"
#include "model/instruction.h"

namespace tavlo {

/// What the hub does when an axis hits a limit switch; the index of the list `LimitList`.
enum LimitAction : std::int16_t { HaltProgram = 0, BranchToLine = 1, ContinueProgram = 2 };

/// A whole program: its lines, its axes and what the main window's lists and boxes say about it.
/// Everything that a file, an image of the hub and a download are made of. Plain values: two programs
/// can stand side by side.
struct Program {
  /// Lines 0..199 exist; the 201st record is only ever read.
  std::array<Instruction, kLines + 1> Prog{};
  AxisConfig Axis{};
  std::int16_t HubIndex = HubOcto;
  std::int16_t LimitList = HaltProgram;
  /// 1-based, as the operator typed it. A file may bring any number, even one with a fraction.
  double LimitBranch = 1;
  /// The firmware that lines and settings are compiled for and decoded by; 0 until a hub was asked.
  float HubVersion = 0;
  /// The program needs the operator terminal.
  bool MMIused = false;
};

/// Gives the lines 0..199 the values of a fresh line and clears `HubVersion`. `Drive`, the flags for
/// MMI sources and every other field without a default keep what they held.
void InitProg(Program& program);

/// Number of the last line in use, 1-based; 1 for an empty program.
[[nodiscard]] std::int16_t LinesInProg(const Program& program);

/// Numbers the Repeat loops and links each End Repeat to its Repeat. Runs after every change of lines.
void ScanLoops(Program& program);

/// Axes of the hub model: 4 on the Hub Quad, else 8.
[[nodiscard]] int HubAxes(const Program& program);
/// The line's axis is the Hub Quad's own inputs and outputs.
[[nodiscard]] bool IsHubIO(const Program& program, int axis);
[[nodiscard]] bool FourOutputAxis(const Program& program, int axis);
/// Some axis of the hub has a drive that is set up by text commands of the digital families.
[[nodiscard]] bool AnyDspAxis(const Program& program);
/// `FourOutputs` of the output editors: the selected axis offers a fourth output.
[[nodiscard]] bool FourOutputs(const Program& program, int axis);

/// The line is where the hub goes when a limit is hit, and shows it.
[[nodiscard]] bool IsLimitTarget(const Program& program, int line);

// An axis index from a record or from the wire may be anything. These read the arrays safely; outside
// the slots there is no drive, no name and the defaults' scale.
[[nodiscard]] int DriveModelOf(const Program& program, int axis);
[[nodiscard]] std::string AxisNameOf(const Program& program, int axis);

/// The text with each double quote replaced by a single one, so that it can stand in a file.
[[nodiscard]] std::string MakeQuotesSingle(std::string_view text);

}  // namespace tavlo
