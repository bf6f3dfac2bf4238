// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_posn.h"

namespace tavlo {

FeedPosn::FeedPosn() : MoveForm({.kind = DistanceField::Kind::Position, .direction = false}) {
  AddExecution();
}

void FeedPosn::Write(Instruction& record) const {
  MoveForm::Write(record);
  record.Type = FP;
}

}  // namespace tavlo
