// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/form.h"
#include "forms/short_text.h"
#include "model/wire.h"

namespace tavlo {

/// `comment`: a remark in the program.
class comment : public Form {
 public:
  comment();

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;

 private:
  ShortText text_{kLongestComment};
};

}  // namespace tavlo
