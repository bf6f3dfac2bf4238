// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <vector>

#include "model/program.h"

namespace tavlo {

// What stands between a program and its download: each scan walks the lines 0..199 and gives what it
// finds. Lines and axes in findings are 0-based. Where a scan does not stop at its first finding, the last
// one wins.

/// Lines that move, set up or ask about an axis beyond the fourth, which a Hub Quad does not have.
[[nodiscard]] std::vector<int> BadMoveorMMIAxis(const Program& program);
/// Lines that use input 5 or higher of a Hub Quad's own.
[[nodiscard]] std::vector<int> In5678used(const Program& program);
/// Lines that use inputs or outputs beyond a Hub Quad's own.
[[nodiscard]] std::vector<int> IOpast5(const Program& program);
/// Cuts the masks of a Hub Quad's own inputs to the four that there are. Raises no flag.
void FixMultiIn(Program& program);
/// Lines that use output 4 of a drive with three.
[[nodiscard]] std::vector<int> SetOutput4(const Program& program);

struct MissingPrompt {
  int variable;
  int line;
};
/// A variable that is read while no prompt or learned position fills it.
[[nodiscard]] std::optional<MissingPrompt> ScanProgMMI(const Program& program);

struct SpeedPrompt {
  int axis;
  int line;
};
/// A speed prompt whose axis has more than 40 steps per revolution to a step per unit.
[[nodiscard]] std::optional<SpeedPrompt> ScanMMIspeeds(const Program& program);

struct WrongPrompt {
  int variable;
  int line;
  int prompt_line;
  /// What the prompt asks for, 0 distance, 1 speed, 2 repeat count.
  int prompt_kind;
  /// The variable is used as a speed; else as a distance, or by a Repeat as its count.
  bool as_speed;
};
/// A variable that a prompt of another kind fills.
[[nodiscard]] std::optional<WrongPrompt> ScanMMItypes(const Program& program);

struct NoDrive {
  int line;
  int axis;
};
/// A line that uses a drive whose model is "none".
[[nodiscard]] std::optional<NoDrive> CheckNone(const Program& program);

/// Calls have at least one Return, and Returns at least one Call.
[[nodiscard]] bool CallsOK(const Program& program);
[[nodiscard]] bool ReturnsOK(const Program& program);

struct TwoMoves {
  int axis;
  int first_line;
  int second_line;
};
/// The first move that does not wait and is followed by another on its axis.
[[nodiscard]] std::optional<TwoMoves> ScanConcurrent(const Program& program);

[[nodiscard]] int CountRepeats(const Program& program);
[[nodiscard]] int CountEndRepeats(const Program& program);
/// Some End Repeat has no Repeat open before it.
[[nodiscard]] bool ERbeforeRP(const Program& program);

}  // namespace tavlo
