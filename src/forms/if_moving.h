// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/axis_form.h"

namespace tavlo {

/// `IfMoving`: the line at which the program goes on while an axis moves.
class IfMoving : public AxisForm {
 public:
  IfMoving();

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;
  void SetUnits() override {}

 private:
  LineField target_;
};

}  // namespace tavlo
