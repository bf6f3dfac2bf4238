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

/// What the hub does when an axis hits a limit switch: an index of the list `LimitList`.
enum LimitAction : std::int16_t { HaltProgram = 0, BranchToLine = 1, ContinueProgram = 2 };

/// A whole program: its lines, its axes and the values of the main window's lists and boxes. A file, an image
/// of the hub and a download are made from it. Plain values: two programs can stand side by side.
struct Program {
  /// The lines are 0..199; the 201st record is read but never written.
  std::array<Instruction, kLines + 1> Prog{};
  AxisConfig Axis{};
  std::int16_t HubIndex = HubOcto;
  std::int16_t LimitList = HaltProgram;
  /// 1-based, as the operator typed it. A file may hold any number, even one with a fraction.
  double LimitBranch = 1;
  /// The firmware for which lines and settings are compiled and decoded; 0 until a hub has been asked.
  float HubVersion = 0;
  /// The program needs the operator terminal.
  bool MMIused = false;
};

/// Sets the lines 0..199 to the values of a new line and `HubVersion` to 0. `Drive`, the flags for MMI
/// sources and every other field without a default keep their values.
void InitProg(Program& program);

/// Returns the number of the last line in use, 1-based; 1 for an empty program.
[[nodiscard]] std::int16_t LinesInProg(const Program& program);

/// Numbers the Repeat loops and links each End Repeat to its Repeat. Must run after every change of lines.
void ScanLoops(Program& program);

/// Returns the number of axes of the hub model: 4 on the Hub Quad, otherwise 8.
[[nodiscard]] int HubAxes(const Program& program);
/// Whether the axis stands for the Hub Quad's own inputs and outputs.
[[nodiscard]] bool IsHubIO(const Program& program, int axis);
[[nodiscard]] bool FourOutputAxis(const Program& program, int axis);
/// Whether an axis of the hub has a drive of the digital families, which are set up by text commands.
[[nodiscard]] bool AnyDspAxis(const Program& program);
/// `FourOutputs` of the output editors: whether the selected axis offers a fourth output.
[[nodiscard]] bool FourOutputs(const Program& program, int axis);

/// Whether the hub goes to this line when a limit is hit and the row shows it.
[[nodiscard]] bool IsLimitTarget(const Program& program, int line);

// An axis index from a record or from the wire may be anything. These functions read the arrays safely: for
// an index without a slot there is no drive and no name, and the scale is the default.
[[nodiscard]] int DriveModelOf(const Program& program, int axis);
[[nodiscard]] std::string AxisNameOf(const Program& program, int axis);

/// Returns the text with each double quote replaced by a single quote, so that a file can hold it.
[[nodiscard]] std::string MakeQuotesSingle(std::string_view text);

}  // namespace tavlo
