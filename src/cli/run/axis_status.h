// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "cli/console/json_text.h"
#include "session/desk.h"

namespace tavlo::cli {

/// What is on among the inputs and outputs that an axis has.
class AxisStatus {
 public:
  AxisStatus() = default;
  /// As the run window's panel shows it; axis 0..7.
  AxisStatus(const Source& source, int axis);

  bool operator==(const AxisStatus&) const = default;

  /// "in 2 X1<tab>out -": a dash for nothing, a question mark for what the drive does not report.
  [[nodiscard]] std::string Text() const;
  /// Adds the four lists of numbers, null for what the drive does not report.
  void AddTo(Json& json) const;

 private:
  /// Numbers from 1 of the lights of each row; nothing for a row that cannot be known.
  std::array<std::optional<std::vector<int>>, kLedRows.size()> on_{
      {std::vector<int>{}, std::vector<int>{}, std::vector<int>{}, std::vector<int>{}}};
};

}  // namespace tavlo::cli
