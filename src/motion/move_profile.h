// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tavlo {

/// The shapes that a move by a length can take, as the dialogs know them.
enum class Shape { PlotTri1, PlotTrap1, PlotDblTrap, PlotTriTrap, PlotV1Trap, PlotV2Trap, PlotV2Tri };
[[nodiscard]] std::string_view ShapeName(Shape shape);

/// A move by a length in the units of its record.
struct PlannedMove {
  /// Steps per revolution of its axis.
  std::int32_t R = 0;
  /// rev/s
  double Speed = 0;
  /// rev/s/s
  std::int32_t Accel = 0;
  std::int32_t Decel = 0;
  /// steps
  std::int32_t Dist = 0;
  /// Whether the speed changes on the way: after `Dist2` steps, to `Speed2` rev/s.
  bool changes_speed = false;
  std::int32_t Dist2 = 0;
  float Speed2 = 0;
};

/// A phase of a move, or its total: seconds and steps.
struct ProfileRow {
  std::string_view label;
  double time;
  double dist;
};

/// A point of the curve: seconds, rev/s, steps.
struct ProfilePoint {
  float time;
  float speed;
  float dist;
};

/// What a move does from its start to its end, computed with constant accelerations. A plateau has no points
/// of its own: a straight line joins those of the phases around it.
struct MoveProfile {
  Shape shape = Shape::PlotTrap1;
  std::vector<ProfileRow> rows;
  /// rev/s
  double peak = 0;
  std::vector<ProfilePoint> points;

  /// That of the last row, the total.
  [[nodiscard]] double TotalTime() const { return rows.back().time; }
};

/// Returns nothing if the arithmetic has no answer, as for a speed of 0.
[[nodiscard]] std::optional<MoveProfile> Analyse(const PlannedMove& move);

/// When and how a move sets an output.
struct OutputChange {
  /// True: at `dist` steps during the move. False: at its end.
  bool during = false;
  std::int32_t dist = 0;
  /// 0 high, 1 low, 2 high pulse, 3 low pulse
  int state = 0;
  /// Length of a pulse, in ms.
  double pulse = 0;
};

/// A point of the output's trace: seconds, level, steps.
struct OutputPoint {
  float time;
  int state;
  float dist;
};

struct OutputTrace {
  /// Seconds and steps at which the output changes.
  double time = 0;
  double dist = 0;
  std::vector<OutputPoint> points;
};

/// Returns the trace of the output, for a move at one speed. A pulse at the end of the move goes on after it;
/// for any pulse the profile gets another point there. A pulse during the move is drawn as a step that stays.
[[nodiscard]] OutputTrace TraceOutput(const PlannedMove& move, const OutputChange& change,
                                      MoveProfile& profile);

}  // namespace tavlo
