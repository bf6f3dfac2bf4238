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

/// Which of the inputs and outputs of an axis are on.
class AxisStatus {
 public:
  AxisStatus() = default;
  /// Reads them from the panel of the run window; axis 0..7.
  AxisStatus(const Source& source, int axis);

  bool operator==(const AxisStatus&) const = default;

  /// Returns "in 2 X1<tab>out -": a dash stands for none, a question mark for what the drive does not report.
  [[nodiscard]] std::string Text() const;
  /// Adds the four lists of numbers; null for what the drive does not report.
  void AddTo(Json& json) const;

 private:
  /// For each row, the numbers of the lights that are on, from 1; nothing for a row that is not known.
  std::array<std::optional<std::vector<int>>, kLedRows.size()> on_{
      {std::vector<int>{}, std::vector<int>{}, std::vector<int>{}, std::vector<int>{}}};
};

}  // namespace tavlo::cli
