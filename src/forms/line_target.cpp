// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/line_target.h"

namespace tavlo {

LineTarget::LineTarget(std::int16_t type) : Form("linenum"), type_(type) {
  target_.AddTo(controls_);
}

void LineTarget::Fill() {
  target_.Fill(program(), record().LineNum, line());
}

void LineTarget::CleanUp() {
  target_.CleanUp();
}

void LineTarget::Write(Instruction& record) const {
  record.Type = type_;
  record.LineNum = target_.Target();
}

}  // namespace tavlo
