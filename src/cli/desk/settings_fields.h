// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo::cli {

/// A setting that a file and a hub do not agree about. Texts are single bytes.
struct SettingDifference {
  /// 1..8; nothing for a setting of the whole hub.
  std::optional<int> axis;
  std::string field;
  std::string file;
  std::string hub;
  bool operator==(const SettingDifference&) const = default;
};

/// Compares two times 256 bytes of axis settings, field by field. Any two bytes that differ give a row:
/// where both sides read the same the bytes themselves stand behind.
[[nodiscard]] std::vector<SettingDifference> CompareSettings(std::string_view file, std::string_view hub);

}  // namespace tavlo::cli
