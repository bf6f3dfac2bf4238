// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/comment.h"

namespace tavlo {

comment::comment() : Form("commenttext") {
  text_.AddTo(controls_, "commenttext");
}

void comment::Fill() {
  text_.Fill(record().Text);
}

void comment::CleanUp() {
  text_.CleanUp();
}

void comment::Write(Instruction& record) const {
  record.Type = CM;
  record.Text = text_.Text();
}

}  // namespace tavlo
