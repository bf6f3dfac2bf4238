// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/program.h"

namespace tavlo {

/// Highest acceleration of every model, rev/s/s.
inline constexpr int kMaxAccel = 3000;
/// Longest move and farthest position, steps.
inline constexpr int kMaxSteps = 16000000;

/// Steps per revolution behind `StepResCode` 0..15.
inline constexpr std::array<std::int32_t, 16> kStepsPerRev = {
    200, 400, 1000, 2000, 5000, 10000, 12800, 18000, 20000, 21600, 25000, 25400, 25600, 36000, 50000, 50800};
/// The code of the free resolution.
inline constexpr int kFreeResolution = 16;
/// The model with a step list of its own, which has all of these resolutions.
inline constexpr int kOwnStepListModel = 3;

// An axis without a slot has the resolution 0 and no drive.

/// Returns the effective steps per revolution: the fixed value that `StepResCode` stands for, or the free one
/// for code 16; 0 for any other code.
[[nodiscard]] std::int32_t GetStepsPerRev(const Program& program, int axis);

/// Whether values of the axis are shown and taken in its user units.
[[nodiscard]] bool UsesUnits(const Program& program, int axis);

/// Convert a speed or an acceleration from user units to revolutions, and back. They ignore `UseUnits`.
[[nodiscard]] double UserToRev(const Program& program, double x, int axis);
[[nodiscard]] double RevToUser(const Program& program, double x, int axis);

/// Return the value in user units if the axis uses them, otherwise unchanged.
[[nodiscard]] double ShownSpeed(const Program& program, double rev_s, int axis);
[[nodiscard]] double ShownDist(const Program& program, double steps, int axis);

[[nodiscard]] std::string FormatDist(const Program& program, double steps, int axis);
[[nodiscard]] std::string FormatSpeed(const Program& program, double rev_s, int axis);
[[nodiscard]] std::string FormatAccel(const Program& program, double rev_s2, int axis);
[[nodiscard]] std::string_view AccelFormatFor(const Program& program, int axis);

/// Limits by drive model, in rev/s and rev/s/s.
[[nodiscard]] double MinSpeed(const Program& program, int axis);
[[nodiscard]] double MaxSpeed(const Program& program, int axis);
[[nodiscard]] int MinAccel(const Program& program, int axis);

/// Returns x rounded down to four decimals.
[[nodiscard]] double Round4(double x);

// The arithmetic of the entry boxes. Each function takes the text as typed and returns the value, forced into
// its range, with the text that replaces what was typed. No text is ever refused.

struct SpeedEntry {
  double rev_s;
  std::string text;
  int slider;
};
/// A speed as typed: limited, then rounded down to a multiple of 50 steps/s. One step of the slider is 0.025
/// rev/s.
[[nodiscard]] SpeedEntry CleanUpSpeed(const Program& program, std::string_view text, int axis);

struct Speed2Entry {
  double rev_s;
  std::string text;
};
/// The second speed of a move, never above the first.
[[nodiscard]] Speed2Entry CleanUpSpeed2(const Program& program, std::string_view text, int axis,
                                        double first_rev_s);

struct AccelEntry {
  std::string text;
  int slider;
};
[[nodiscard]] AccelEntry CleanUpAccel(const Program& program, std::string_view text, int axis);
/// Reads a jog acceleration in the units of the axis, whether the axis uses them or not.
[[nodiscard]] AccelEntry CleanUpJogAccel(const Program& program, std::string_view text, int axis);

struct DistEntry {
  std::int32_t steps;
  std::string text;
};
[[nodiscard]] DistEntry CleanUpDist(const Program& program, std::string_view text, int axis);
/// A position may be negative; `steps` keeps the sign.
[[nodiscard]] DistEntry CleanUpPosition(const Program& program, std::string_view text, int axis);

struct DelayEntry {
  std::string text;
  /// Steps of 10 ms.
  int slider;
};
/// A dwell of so many hundredths of a second, as seconds.
[[nodiscard]] std::string FormatRetDelay(std::int32_t hundredths);
[[nodiscard]] DelayEntry CleanUpRetDelay(std::string_view text);

/// A repeat count: whole, 1 to 32767.
[[nodiscard]] std::int32_t CleanUpCount(std::string_view text);

struct SliderEnds {
  int speed_min;
  int speed_max;
  int accel_min;
};
[[nodiscard]] SliderEnds BarEnds(const Program& program, int axis);

/// What the axes' units were before the hardware settings were edited.
struct OldUnits {
  AxisConfig::Axes<std::int32_t> U{};
  AxisConfig::Axes<std::int32_t> R{};
};
[[nodiscard]] OldUnits UnitsOf(const Program& program);

// Rescale every line so that what the operator sees in user units stays the same. Must be called in this
// order.
void ScaleDist(Program& program, const OldUnits& old);
void ScaleSpeed(Program& program, const OldUnits& old);
void ScaleAccel(Program& program, const OldUnits& old);

/// Returns how many lines that tell an axis how far, how fast or how steeply differ in `after`, which is
/// `before` with other settings of its axes, rescaled.
[[nodiscard]] int LinesRescaled(const Program& before, const Program& after);

}  // namespace tavlo
