// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "forms/axis_form.h"
#include "forms/input_block.h"
#include "forms/input_rows.h"

namespace tavlo {

/// What the dialogs of lines that ask for inputs share: one input of a drive, or on a Hub Quad of the hub
/// itself, or several at once.
class InputForm : public AxisForm {
 protected:
  struct Kinds {
    std::int16_t single;
    std::int16_t multiple;
    /// Of its message.
    std::string_view title;
  };
  /// Adds the choice of one input. `AddRows` adds that of several, which comes last.
  InputForm(std::string_view first, const Kinds& kinds);
  void AddRows() { rows_.AddTo(controls_); }

  void Fill() override;
  void ShowHide() override;
  [[nodiscard]] bool MayWrite(MessageBoxes& boxes) override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

  [[nodiscard]] bool IsSingle() const { return mode_.Chosen() == 0; }

  InputBlock input_{InputsOf::Tests};

 private:
  Kinds kinds_;
  OptionGroup<2> mode_;
  InputRows rows_;
};

}  // namespace tavlo
