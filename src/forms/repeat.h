// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/entries.h"

namespace tavlo {

/// `Repeat`: how often the lines up to its End Repeat run.
class Repeat : public Form {
 public:
  Repeat();

 protected:
  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;

 private:
  CountField count_{1, 65535};
  CheckBox from_variable_;
  VariableList variable_;
  CheckBox shows_count_;
  CheckBox counts_up_;
  CheckBox wait_;
};

}  // namespace tavlo
