// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/entries.h"

namespace tavlo {

/// `GoToBox`: the line at which the program goes on, at once or after the end of all moves.
class GoToBox : public Form {
 public:
  GoToBox();

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;

 private:
  LineField target_;
  CheckBox wait_;
};

}  // namespace tavlo
