// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/comment.h"

#include "model/wire.h"

namespace tavlo {
namespace {

/// On one line: a pasted line end becomes a blank.
std::string OnOneLine(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool ends_with_the_next = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if (!ends_with_the_next) line += text[i] == '\r' || text[i] == '\n' ? ' ' : text[i];
  }
  return line;
}

}  // namespace

comment::comment() : Form("commenttext") {
  controls_.Add("commenttext", &text_, [this] { CleanUp(); });
}

void comment::Fill() {
  text_.text = record().Text;
}

void comment::CleanUp() {
  // A longer one that an older file has brought stays until somebody edits it.
  if (!text_.touched) return;
  text_.text = MakeQuotesSingle(OnOneLine(text_.text)).substr(0, kLongestComment);
  text_.touched = false;
}

void comment::Write(Instruction& record) const {
  record.Type = CM;
  record.Text = text_.text;
}

}  // namespace tavlo
