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
  void CleanUp() override { curr_.CleanUp(Most()); }
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override { curr_.ReadAnew(Most()); }

 private:
  /// Amperes.
  [[nodiscard]] float Most() const;

  OptionGroup<3> what_;
  CurrentField curr_;
  OptionGroup<4> idle_;
};

}  // namespace tavlo
