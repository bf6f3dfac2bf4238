// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/axis_form.h"

namespace tavlo {

/// `SetPosn`: where an axis takes itself to be.
class SetPosn : public AxisForm {
 public:
  SetPosn();

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

 private:
  DistanceField position_{DistanceField::Kind::Position};
};

}  // namespace tavlo
