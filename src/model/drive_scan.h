// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>

#include "model/axis_config.h"

namespace tavlo {

/// What a scan found on an axis.
struct FoundDrive {
  /// Its model code, 0 for no drive; nothing if no answer came or no model has the identity that it reported.
  std::optional<int> model;
  /// Its firmware; nothing if no answer came.
  std::optional<float> revision;
};
using DriveScan = std::array<FoundDrive, kAxes>;

}  // namespace tavlo
