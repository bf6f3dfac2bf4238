// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "forms/entries.h"

namespace tavlo {

/// A form of a line on an axis: `Drive`.
class AxisForm : public Form {
 protected:
  explicit AxisForm(std::string_view first) : Form(first) {
    drive_.AddTo(controls_, [this] { SetUnits(); });
  }

  [[nodiscard]] std::int16_t Axis() const { return drive_.Axis(); }
  [[nodiscard]] AxisUnits Units() const { return {program(), drive_.Axis()}; }
  /// The operator chose another axis: the numbers stay as typed, their meaning moves to it.
  virtual void SetUnits() = 0;

  AxisList drive_;
};

}  // namespace tavlo
