// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "hubsim/failure.h"
#include "hubsim/memory.h"

namespace tavlo::hubsim {

/// The value is the model byte on the wire.
enum class HubModel : std::uint8_t { kOcto = 8, kQuad = 24 };

/// A plugged drive whose identity no list knows.
inline constexpr int kUnlistedDrive = 100;

/// What one simulated hub is like.
struct HubOptions {
  HubModel model = HubModel::kOcto;
  /// Revision byte: hundredths above 1.00, so 38 is 1.38. At most 127, for a greeting has to carry it.
  std::uint8_t firmware = 38;
  /// Model code of the drive on each axis, 0 none, `kUnlistedDrive` an unknown one.
  /// Without it, each axis has the drive that the downloaded program expects.
  std::optional<std::array<int, kAxisCount>> drives;
  /// Revision of each drive in hundredths, 0..999.
  std::array<int, kAxisCount> drive_revisions{200, 200, 200, 200, 200, 200, 200, 200};
  /// Moves and waits take 1/speedup of their time. Nothing on the wire goes faster.
  double speedup = 1;
  FailurePlan failure;
  /// Send the power-up greeting at once.
  bool greet = false;
};

}  // namespace tavlo::hubsim
