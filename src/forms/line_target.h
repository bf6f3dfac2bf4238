// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/entries.h"

namespace tavlo {

/// A line that names another and has nothing else: `CallDialog`, `ResetLoop`.
class LineTarget : public Form {
 public:
  explicit LineTarget(std::int16_t type);

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;

 private:
  std::int16_t type_;
  LineField target_;
};

}  // namespace tavlo
