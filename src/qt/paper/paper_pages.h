// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFont>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <vector>

#include "platform/printer.h"

namespace tavlo {

/// Lengths on paper are counted in twentieths of a point, so that a document falls on its pages in the same
/// way whatever prints it.
inline constexpr qreal kPoint = 20;

/// Letters at their place on a page, by their upper left corner.
struct PaperText {
  QPointF at;
  QString text;
  PaperStyle style = PaperStyle::Plain;
};

struct PaperPage {
  std::vector<PaperText> texts;
};

/// Returns the font of a style, Arial or what stands for it, for lengths in those parts.
[[nodiscard]] QFont PaperFont(PaperStyle style);

/// Returns the document as pages of this size; there is at least one. A block is on one page unless it is
/// higher than a page; a row too long for the page goes on below itself, further right.
[[nodiscard]] std::vector<PaperPage> LayOut(const PaperDocument& document, const QSizeF& size);

}  // namespace tavlo
