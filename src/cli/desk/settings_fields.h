// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo::cli {

/// A setting that differs between a file and a hub. Its texts are single bytes.
struct SettingDifference {
  /// 1..8; empty for a setting of the whole hub.
  std::optional<int> axis;
  std::string field;
  std::string file;
  std::string hub;
  bool operator==(const SettingDifference&) const = default;
};

/// Compares two blocks of 256 bytes of axis settings, field by field. Any differing byte produces a row. If a
/// field reads the same on both sides, its bytes are added to the texts.
[[nodiscard]] std::vector<SettingDifference> CompareSettings(std::string_view file, std::string_view hub);

}  // namespace tavlo::cli
