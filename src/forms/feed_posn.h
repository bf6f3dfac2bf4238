// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/move_form.h"

namespace tavlo {

/// `FeedPosn`: a move to a position.
class FeedPosn : public MoveForm {
 public:
  FeedPosn();

 protected:
  void Write(Instruction& record) const override;
};

}  // namespace tavlo
