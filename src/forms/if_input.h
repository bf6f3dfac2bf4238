// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/input_form.h"

namespace tavlo {

/// `IfInput`: the line at which the program goes on if inputs are as told.
class IfInput : public InputForm {
 public:
  IfInput();

 protected:
  void Fill() override;
  void CleanUp() override { target_.CleanUp(); }
  void Write(Instruction& record) const override;

 private:
  LineField target_;
};

}  // namespace tavlo
