// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/analysis_tab.h"
#include "forms/move_form.h"

namespace tavlo {

/// `FeedLength`: a move by a length, whose speed may change on the way.
class FeedLength : public MoveForm {
 public:
  FeedLength();

  [[nodiscard]] const AnalysisTab* Analysis() const override { return &analysis_; }

 protected:
  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;
  [[nodiscard]] bool HasVariable() const override;

 private:
  void CleanUpSpeed2();
  [[nodiscard]] AnalysisTab::Planned Plan();

  CheckBox change_speed_;
  Frame second_speed_frame_;
  DistanceField distance2_;
  VariableChoice distance2_variable_;
  Label change_to_{{}, "Change speed to"};
  TextBox speed2text_;
  Label speed2unit_;
  float speed2_ = 0;
  VariableChoice speed2_variable_;
  AnalysisTab analysis_;
};

}  // namespace tavlo
