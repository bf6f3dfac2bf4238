// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "forms/axis_form.h"
#include "motion/move_profile.h"

namespace tavlo {

/// What the dialogs of moves share: distance, speed, acceleration and deceleration, direction, how to go on.
/// A dialog says which of these it has.
class MoveForm : public AxisForm {
 protected:
  struct Parts {
    /// A length or a position that may come from a variable.
    bool distance = true;
    DistanceField::Kind kind = DistanceField::Kind::Length;
    /// Behind the unit's name.
    std::string_view unit_suffix = "";
    /// The speed may come from a variable.
    bool speed_variable = true;
    bool decel = true;
    bool direction = true;
    /// How to go on.
    bool execution = true;
  };
  /// Adds the controls, but not the options of how to go on, which come last.
  explicit MoveForm(const Parts& parts);
  void AddExecution() { execution_.AddTo(controls_); }

  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

  /// Follows on a new speed or deceleration, by whatever way it came.
  virtual void SpeedChanged() {}
  /// Takes a distance that was typed.
  virtual void CleanUpDist() { distance_.CleanUp(Units()); }
  /// A variable is chosen, so that the lists of their names need their heading.
  [[nodiscard]] virtual bool HasVariable() const;

  /// The move at one speed, as the dialog holds it.
  [[nodiscard]] PlannedMove PlannedByDialog() const;
  [[nodiscard]] bool IsPosition() const { return parts_.kind == DistanceField::Kind::Position; }

  Parts parts_;
  DistanceField distance_;
  VariableChoice distance_variable_;
  SpeedField speed_;
  VariableChoice speed_variable_;
  Label variable_name_{{}, "Name"};
  AccelField accel_;
  AccelField decel_;
  DirectionChoice direction_;
  ExecutionChoice execution_;
};

}  // namespace tavlo
