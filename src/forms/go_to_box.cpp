// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/go_to_box.h"

namespace tavlo {

GoToBox::GoToBox() : Form("linenum") {
  target_.AddTo(controls_);
  controls_.Add("ChkWait", &wait_);
}

void GoToBox::Fill() {
  target_.Fill(program(), record().LineNum, line());
  wait_.value = !record().Proceed;
}

void GoToBox::CleanUp() {
  target_.CleanUp();
}

void GoToBox::Write(Instruction& record) const {
  record.Type = GT;
  record.LineNum = target_.Target();
  record.Proceed = !wait_.value;
}

}  // namespace tavlo
