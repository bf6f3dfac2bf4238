// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "model/axis_config.h"
#include "model/wire.h"

namespace tavlo {

/// The fields of an axis's block of settings, in the order of its bytes. The system string is written from
/// these rows, the decoder reads by them, and a comparison names differences by them.
enum class AxisField : std::uint8_t {
  Current,        ///< whole amperes and hundredths
  IdleSetting,    ///< `IdleCode`, 16 for a servo
  LimitSwitches,  ///< '5' closed, '6' open, '3' not used
  DriveModel,
  StepsPerRev,  ///< the hub never sees 0
  DriveKind,    ///< the kind of drive that the hub knows; follows from the model
  StepsPerUnit,
  UnitName,       ///< its length, then 4 characters
  AxisName,       ///< 8 characters
  SpeedFactor,    ///< follows from the steps
  SecondCurrent,  ///< peak or idle current
  ThirdCurrent,   ///< current while accelerating
  HubSettings,    ///< settings of the whole hub, in the blocks of chosen axes; see `kHubSettings`
};

struct AxisFieldRow {
  AxisField field;
  std::size_t at;
  std::size_t width;
  std::string_view name;
};

inline constexpr auto kAxisLayout = std::to_array<AxisFieldRow>({
    {AxisField::Current, 0, 2, "current"},
    {AxisField::IdleSetting, 2, 1, "idle setting"},
    {AxisField::LimitSwitches, 3, 1, "limit switches"},
    {AxisField::DriveModel, 4, 1, "drive model"},
    {AxisField::StepsPerRev, 5, 2, "steps per revolution"},
    {AxisField::DriveKind, 7, 1, "drive kind"},
    {AxisField::StepsPerUnit, 8, 3, "steps per unit"},
    {AxisField::UnitName, 11, 5, "unit name"},
    {AxisField::AxisName, 16, 8, "axis name"},
    {AxisField::SpeedFactor, 24, 3, "speed factor"},
    {AxisField::SecondCurrent, 27, 2, "second current"},
    {AxisField::ThirdCurrent, 29, 2, "third current"},
    {AxisField::HubSettings, 31, 1, "spare byte"},
});

/// Settings of the whole hub. Each is some bits of the last byte of a chosen axis's block.
enum class HubSetting : std::uint8_t {
  TerminalUsed,
  SameUnits,
  SameLimits,
  SameSpare,
  SpareBits,
  LimitAction,
  LimitLine,  ///< 0-based
};

struct HubSettingRow {
  HubSetting setting;
  int axis;
  int mask;
  int shift;
  std::string_view name;
};

inline constexpr auto kHubSettings = std::to_array<HubSettingRow>({
    {HubSetting::TerminalUsed, 0, 255, 0, "operator terminal used"},
    {HubSetting::SameUnits, 2, 1, 0, "same units for all axes"},
    {HubSetting::SameLimits, 2, 2, 1, "same limits for all axes"},
    {HubSetting::SameSpare, 2, 4, 2, "same spare setting for all axes"},
    {HubSetting::SpareBits, 2, 248, 3, "spare bits"},
    {HubSetting::LimitAction, 3, 255, 0, "limit action"},
    {HubSetting::LimitLine, 4, 255, 0, "limit line"},
});

namespace axis_layout {

constexpr bool FieldsFillTheBlock() {
  std::size_t end = 0;
  for (const AxisFieldRow& row : kAxisLayout) {
    if (row.at != end) return false;
    end += row.width;
  }
  return end == kAxisBlockBytes;
}
static_assert(FieldsFillTheBlock(), "every byte belongs to one field");
static_assert(kAxisBlockBytes * kAxes == kSystemBytes);

constexpr bool SettingsFillTheirBytes() {
  for (int axis = 0; axis < kAxes; ++axis) {
    int bits = 0;
    for (const HubSettingRow& row : kHubSettings) {
      if (row.axis != axis) continue;
      if ((bits & row.mask) != 0 || (row.mask >> row.shift & 1) == 0) return false;
      bits |= row.mask;
    }
    if (bits != 0 && bits != 255) return false;
  }
  return true;
}
static_assert(SettingsFillTheirBytes(), "every bit of such a byte belongs to one setting");

}  // namespace axis_layout

}  // namespace tavlo
