// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/entries.h"

namespace tavlo {

/// `FeedLength`: a move by a length, whose speed may change on the way.
class FeedLength : public Form {
 public:
  FeedLength();

 protected:
  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;

 private:
  [[nodiscard]] AxisUnits Units() const { return {program(), drive_.Axis()}; }
  /// The operator chose another axis: the numbers stay as typed, their meaning moves to it.
  void SetUnits();
  void LabelSecondSpeed();
  void CleanUpSpeed2();

  AxisList drive_;
  DistanceField distance_;
  VariableChoice distance_variable_;
  SpeedField speed_;
  VariableChoice speed_variable_;
  Label variable_name_{{}, "Name"};
  AccelField accel_;
  AccelField decel_;
  DirectionChoice direction_;
  CheckBox change_speed_;
  Frame second_speed_frame_;
  DistanceField distance2_;
  VariableChoice distance2_variable_;
  Label change_to_{{}, "Change speed to"};
  TextBox speed2text_;
  Label speed2unit_;
  float speed2_ = 0;
  VariableChoice speed2_variable_;
  ExecutionChoice execution_;
};

}  // namespace tavlo
