// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/axis_form.h"

namespace tavlo {

/// `ChangeCurrent`: a new current for a motor, or its current off and on again.
class ChangeCurrent : public AxisForm {
 public:
  ChangeCurrent();

 protected:
  void Fill() override;
  void CleanUp() override { CleanUpCurrent(); }
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

 private:
  void PutCurrent(float amperes);
  void CleanUpCurrent();

  OptionGroup<3> what_;
  TextBox curr_;
  float current_ = 0;
  OptionGroup<4> idle_;
};

}  // namespace tavlo
