// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/short_text.h"

#include <utility>

#include "model/program.h"

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

void ShortText::AddTo(ControlTable& controls, std::string_view text) {
  controls.Add(std::string(text), &text_, [this] { CleanUp(); });
}

void ShortText::Fill(std::string text) {
  text_.text = std::move(text);
  text_.touched = false;
}

void ShortText::CleanUp() {
  if (text_.touched) Fill(MakeQuotesSingle(OnOneLine(text_.text)).substr(0, longest_));
}

}  // namespace tavlo
