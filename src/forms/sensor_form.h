// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "forms/input_block.h"
#include "forms/move_form.h"

namespace tavlo {

/// What the dialogs of moves that end on an input share: the input, and the distance in which the move can
/// stop behind it, `deceldist`.
class SensorForm : public MoveForm {
 protected:
  SensorForm(const Parts& parts, InputsOf dialog);

  void Fill() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;
  void SpeedChanged() override;
  void CleanUpDist() override;
  /// The stopping distance as it is shown.
  [[nodiscard]] virtual std::string Shown(double steps) const;

  InputBlock input_;

 private:
  /// The true figure, in steps, however far.
  [[nodiscard]] double StoppingDistance() const;
  /// The shortest distance that a record may hold.
  [[nodiscard]] std::int32_t Least() const;

  Label deceldist_;
  Label deceldist_unit_;
  Label servo_only_{{}, "(servo only)"};
};

}  // namespace tavlo
