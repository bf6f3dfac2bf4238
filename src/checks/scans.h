// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <vector>

#include "model/program.h"

namespace tavlo {

// What stands between a program and its download: each scan walks the lines 0..199 and returns what it finds.
// Lines and axes in findings are 0-based. A scan that does not stop at its first finding returns the last
// one.

/// Lines that move, set up or ask about an axis above the fourth, which a Hub Quad does not have.
[[nodiscard]] std::vector<int> BadMoveorMMIAxis(const Program& program);
/// Lines that use one of the inputs 5 and above of a Hub Quad, which has four of its own.
[[nodiscard]] std::vector<int> In5678used(const Program& program);
/// Lines that use inputs or outputs beyond a Hub Quad's own.
[[nodiscard]] std::vector<int> IOpast5(const Program& program);
/// Clears the bits above the four inputs of a Hub Quad in the masks of its own inputs. Reports nothing.
void FixMultiIn(Program& program);
/// Lines that use output 4 of a drive that has three.
[[nodiscard]] std::vector<int> SetOutput4(const Program& program);

struct MissingPrompt {
  int variable;
  int line;
};
/// A variable that is read although no prompt or learned position fills it.
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
  /// What the prompt asks for: 0 distance, 1 speed, 2 repeat count.
  int prompt_kind;
  /// True: the variable is used as a speed. False: as a distance, or as the count of a Repeat.
  bool as_speed;
};
/// A variable that is filled by a prompt of the wrong kind.
[[nodiscard]] std::optional<WrongPrompt> ScanMMItypes(const Program& program);

struct NoDrive {
  int line;
  int axis;
};
/// A line that uses a drive whose model is "none".
[[nodiscard]] std::optional<NoDrive> CheckNone(const Program& program);

/// Whether a program with Calls has a Return, and whether one with Returns has a Call.
[[nodiscard]] bool CallsOK(const Program& program);
[[nodiscard]] bool ReturnsOK(const Program& program);

struct TwoMoves {
  int axis;
  int first_line;
  int second_line;
};
/// The first move that does not wait although another move on its axis follows.
[[nodiscard]] std::optional<TwoMoves> ScanConcurrent(const Program& program);

[[nodiscard]] int CountRepeats(const Program& program);
[[nodiscard]] int CountEndRepeats(const Program& program);
/// Whether an End Repeat comes while no Repeat is open.
[[nodiscard]] bool ERbeforeRP(const Program& program);

}  // namespace tavlo
