// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>

#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// A speed on the wire counts fortieths of a revolution a second.
inline constexpr double kSpeedUnitsPerRev = 40;

/// What the hub reads from the 32-byte block of one axis.
struct AxisSettings {
  int model = 0;
  double steps_per_rev = 0;
  double steps_per_unit = 0;
  double speed_factor = 0;  ///< fortieths of rev/s in one unit a second, as the PC rounded it
  double current_amps = 0;
  bool limits_used = true;
};

enum class LimitAction : std::uint8_t { Halt = 0, Branch = 1, Continue = 2 };

/// Settings of the whole hub, which stand in the last bytes of some axes' blocks.
struct HubSettings {
  bool uses_terminal = false;
  LimitAction limit_action = LimitAction::Halt;
  int limit_line = 0;  ///< 0-based
};

[[nodiscard]] AxisSettings ReadAxisSettings(AxisBlock block);
[[nodiscard]] HubSettings ReadHubSettings(const Memory& memory);

}  // namespace tavlo::hubsim
