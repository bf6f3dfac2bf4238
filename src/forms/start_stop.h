// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/move_form.h"

namespace tavlo {

/// `StartStop`: a motion without an end is started, changed or stopped.
class StartStop : public MoveForm {
 public:
  StartStop();

 protected:
  void Fill() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;

 private:
  [[nodiscard]] SSSub Chosen() const;

  OptionGroup<4> what_;
};

}  // namespace tavlo
