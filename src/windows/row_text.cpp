// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/row_text.h"

#include <algorithm>
#include <string_view>

#include "qt/gui/shown_text.h"
#include "text/short_desc.h"
#include "windows/row_geometry.h"

namespace tavlo {
namespace {

/// A file may bring a text of any length, and measuring is slow: no more of it than certainly fills the
/// label.
std::string Beginning(const std::string& text, int width, const QFontMetrics& font) {
  for (std::size_t length = 64; length < text.size(); length *= 2) {
    std::string head = text.substr(0, length);
    if (font.horizontalAdvance(FromText(head)) > width) return head;
  }
  return text;
}

}  // namespace

const QString& RowTexts::Shown(const Source& source, int line, int label_width, const QFontMetrics& font) {
  const std::string& desc = source.shown.rows[line].desc;
  const bool is_prompt = source.program.Prog[line].Type == MMI;
  Entry& entry = rows_[line];
  if (entry.label_width == label_width && entry.is_prompt == is_prompt && entry.desc == desc)
    return entry.text;
  const int room = label_width - RowGeometry::kTextMargin;
  std::string text = ShownCaption(Beginning(desc, label_width, font));
  if (is_prompt) {
    text = FitText(std::move(text), room,
                   [&font](std::string_view part) { return font.horizontalAdvance(InOneLine(part)); });
    entry = {desc, label_width, is_prompt, InOneLine(text)};
  } else {
    entry = {desc, label_width, is_prompt, font.elidedText(InOneLine(text), Qt::ElideRight, room)};
  }
  return entry.text;
}

}  // namespace tavlo
