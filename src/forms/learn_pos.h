// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/axis_form.h"

namespace tavlo {

/// `LearnPos`: the variable that receives the position of an axis.
class LearnPos : public AxisForm {
 public:
  LearnPos();

 protected:
  void Fill() override;
  void CleanUp() override {}
  void Write(Instruction& record) const override;
  void SetUnits() override {}

 private:
  VariableList variable_;
};

}  // namespace tavlo
