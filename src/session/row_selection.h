// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <cstdlib>

#include "model/line_blocks.h"

namespace tavlo {

/// The rows on which the next command acts: from the row at which the operator set out to the current one. At
/// first, and unless the operator extends it, it is the current row alone.
class RowSelection {
 public:
  [[nodiscard]] int Current() const { return current_; }
  [[nodiscard]] LineRange Rows() const {
    return {std::min(anchor_, current_), std::abs(current_ - anchor_) + 1};
  }
  [[nodiscard]] bool Holds(int line) const { return Rows().Holds(line); }
  /// Whether it is more than the current row.
  [[nodiscard]] bool IsRange() const { return anchor_ != current_; }

  // A row outside 0..199 is replaced by the nearest one.

  /// Makes the row the current one, and the whole selection.
  void GoTo(int line) { anchor_ = current_ = Nearest(line); }
  /// Makes the row the current one. The rows between it and where the selection began are selected.
  void ExtendTo(int line) { current_ = Nearest(line); }
  /// Selects these rows; the last of them becomes the current one.
  void Select(LineRange rows) {
    GoTo(rows.first);
    ExtendTo(rows.Last());
  }

  bool operator==(const RowSelection&) const = default;

 private:
  [[nodiscard]] static int Nearest(int line) { return std::clamp(line, 0, kLines - 1); }

  int anchor_ = 0;
  int current_ = 0;
};

}  // namespace tavlo
