// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/comment.h"

#include "model/wire.h"

namespace tavlo {

comment::comment() : Form("commenttext") {
  controls_.Add("commenttext", &text_, [this] { CleanUp(); });
}

void comment::Fill() {
  text_.text = record().Text;
}

void comment::CleanUp() {
  // A longer one that an older file has brought stays until somebody edits it.
  if (text_.touched) text_.text = MakeQuotesSingle(text_.text).substr(0, kLongestComment);
}

void comment::Write(Instruction& record) const {
  record.Type = CM;
  record.Text = text_.text;
}

}  // namespace tavlo
