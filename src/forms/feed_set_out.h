// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/analysis_tab.h"
#include "forms/move_form.h"
#include "forms/output_block.h"

namespace tavlo {

/// `FeedSetOut`: a move by a length that sets an output on its way or at its end.
class FeedSetOut : public MoveForm {
 public:
  FeedSetOut();

  [[nodiscard]] const AnalysisTab* Analysis() const override { return &analysis_; }

 protected:
  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;
  void CleanUpDist() override;
  [[nodiscard]] bool HasVariable() const override;

 private:
  [[nodiscard]] bool DuringMove() const { return when_.Chosen() == 0; }
  /// The output cannot be set behind the end of the move.
  void CleanUpDist2() { distance2_.CleanUp(Units(), distance_.Steps()); }

  [[nodiscard]] AnalysisTab::Planned Plan();

  OptionGroup<2> when_;
  DistanceField distance2_;
  VariableChoice distance2_variable_;
  OutputBlock output_{2};
  AnalysisTab analysis_;
};

}  // namespace tavlo
