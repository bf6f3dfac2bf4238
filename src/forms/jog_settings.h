// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "forms/entries.h"

namespace tavlo {

/// How an axis is jogged while a line waits: a speed and an acceleration without sliders.
///
/// What was typed is read in the units of the axis, whether the axis uses them or not. An entry that nobody
/// touched keeps the record's value, or the nearest one in range.
class JogSettings {
 public:
  using Caption = std::string (*)(AxisUnits units);
  /// What stands behind the two entries.
  explicit JogSettings(Caption speed = SpeedUnit, Caption accel = AccelUnit)
      : speed_caption_(speed), accel_caption_(accel) {}

  struct Names {
    std::string_view speed;
    std::string_view speed_unit;
    std::string_view accel;
    std::string_view accel_unit;
  };
  void AddTo(ControlTable& controls, const Names& names, const std::function<AxisUnits()>& units);
  void Fill(AxisUnits units, float rev_s, std::int32_t rev_s2);
  void CleanUp(AxisUnits units);
  /// The units have changed: what the boxes show counts in the new ones, as if it were typed.
  void ReadAnew(AxisUnits units);
  void Enable(bool enabled) {
    speed_.enabled = accel_.enabled = speed_unit_.enabled = accel_unit_.enabled = enabled;
  }

  /// rev/s
  [[nodiscard]] float Speed() const { return rev_s_; }
  /// rev/s/s
  [[nodiscard]] std::int32_t Accel() const { return rev_s2_; }

 private:
  void LabelUnits(AxisUnits units);
  void CleanUpSpeed(AxisUnits units);
  void CleanUpAccel(AxisUnits units);

  Caption speed_caption_;
  Caption accel_caption_;
  TextBox speed_;
  Label speed_unit_;
  float rev_s_ = 0;
  TextBox accel_;
  Label accel_unit_;
  std::int32_t rev_s2_ = 0;
};

}  // namespace tavlo
