// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/program/axis_settings.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace tavlo::hubsim {
namespace {

constexpr std::size_t kCurrentAt = 0;
constexpr std::size_t kLimitKindAt = 3;
constexpr std::size_t kModelAt = 4;
constexpr std::size_t kFreeStepsAt = 5;
constexpr std::size_t kStepsPerUnitAt = 8;
constexpr std::size_t kSpeedFactorAt = 24;
constexpr std::size_t kSettingsAt = 31;

constexpr std::uint8_t kLimitsNotUsed = '3';
constexpr double kUsualStepsPerRev = 20000;

/// Resolutions that a stepper drive can be set to, the usual one first: it wins where the block leaves a
/// choice.
constexpr std::array<double, 16> kResolutions{20000, 200,   400,   1000,  2000,  5000,  10000, 12800,
                                              18000, 21600, 25000, 25400, 25600, 36000, 50000, 50800};

bool Explains(double steps_per_rev, double steps_per_unit, double factor) {
  return std::nearbyint(steps_per_unit * kSpeedUnitsPerRev / steps_per_rev) == factor;
}

/// Servo drives take any number of steps per revolution, the others one of `kResolutions`.
bool TakesFreeSteps(int model) {
  return (model >= 8 && model <= 18) || (model >= 20 && model <= 25) || (model >= 48 && model <= 50);
}

double NearestResolution(double per_unit, double factor) {
  const double ideal = factor > 0 ? per_unit * kSpeedUnitsPerRev / factor : kUsualStepsPerRev;
  double best = 0;
  for (const double steps : kResolutions) {
    if (!Explains(steps, per_unit, factor)) continue;
    if (best == 0 || std::abs(steps - ideal) < std::abs(best - ideal)) best = steps;
  }
  return best;
}

/// The resolution in force is not in the block. The speed factor, steps per unit * 40 / steps per revolution,
/// leads back to it; the free steps are the answer where the drive takes them and they explain the factor.
double StepsPerRev(AxisBlock block) {
  const double free_steps = Read2(block, kFreeStepsAt);
  const double per_unit = Read3(block, kStepsPerUnitAt);
  const double factor = Read3(block, kSpeedFactorAt);
  const bool free_fits = free_steps >= 1 && Explains(free_steps, per_unit, factor);
  if (TakesFreeSteps(block[kModelAt]) && free_fits) return free_steps;
  const double listed = NearestResolution(per_unit, factor);
  if (listed > 0) return listed;
  if (free_fits) return free_steps;
  return factor > 0 && per_unit > 0 ? per_unit * kSpeedUnitsPerRev / factor : kUsualStepsPerRev;
}

LimitAction LimitActionOf(std::uint8_t byte) {
  if (byte == 1) return LimitAction::Branch;
  if (byte == 2) return LimitAction::Continue;
  return LimitAction::Halt;
}

}  // namespace

AxisSettings ReadAxisSettings(AxisBlock block) {
  AxisSettings settings;
  settings.model = block[kModelAt];
  settings.steps_per_rev = StepsPerRev(block);
  settings.steps_per_unit = Read3(block, kStepsPerUnitAt);
  settings.speed_factor = Read3(block, kSpeedFactorAt);
  settings.current_amps = block[kCurrentAt] + block[kCurrentAt + 1] / 100.0;
  settings.limits_used = block[kLimitKindAt] != kLimitsNotUsed;
  return settings;
}

HubSettings ReadHubSettings(const Memory& memory) {
  HubSettings settings;
  settings.uses_terminal = memory.Axis(0)[kSettingsAt] != 0;
  settings.limit_action = LimitActionOf(memory.Axis(3)[kSettingsAt]);
  settings.limit_line = memory.Axis(4)[kSettingsAt];
  return settings;
}

}  // namespace tavlo::hubsim
