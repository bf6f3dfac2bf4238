// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/entries.h"

namespace tavlo {

/// `WaitTime`: a pause of 0.01 to 300 seconds.
class WaitTime : public Form {
 public:
  WaitTime();

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;

 private:
  DelayField delay_;
};

}  // namespace tavlo
