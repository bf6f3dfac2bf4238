// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/axis_form.h"
#include "forms/output_block.h"

namespace tavlo {

/// `SetOutput`: an output of a drive, or on a Hub Quad of the hub itself, is set or pulsed.
class SetOutput : public AxisForm {
 public:
  SetOutput();

 protected:
  void Fill() override;
  void CleanUp() override { output_.CleanUp(); }
  void ShowHide() override { output_.ShowHide(); }
  void Write(Instruction& record) const override;
  void SetUnits() override { output_.LabelOutputs(Units()); }

 private:
  OutputBlock output_{1};
};

}  // namespace tavlo
