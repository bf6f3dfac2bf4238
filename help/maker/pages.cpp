// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "maker/pages.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintDevice>
#include <QTextBlock>
#include <QTextTable>
#include <algorithm>
#include <limits>

#include "maker/page.h"

namespace tavlo::help {
namespace {

/// What is not divided.
struct Piece {
  Slice place;
  bool keep_with_next = false;
  /// Of a row of a table.
  Slice head = {};
};

Slice PlaceOf(const QTextDocument& document, const QTextBlock& block) {
  const QRectF rect = document.documentLayout()->blockBoundingRect(block);
  return {rect.top(), rect.bottom()};
}

/// From the first line of its cells to the last.
Slice TextOfRow(const QTextDocument& document, const QTextTable& table, int row) {
  Slice text{std::numeric_limits<double>::max(), 0};
  for (int column = 0; column < table.columns(); ++column) {
    const QTextTableCell cell = table.cellAt(row, column);
    for (auto block = cell.begin(); !block.atEnd(); ++block) {
      const Slice place = PlaceOf(document, block.currentBlock());
      text.from = std::min(text.from, place.from);
      text.to = std::max(text.to, place.to);
    }
  }
  return text;
}

/// Between the text of a cell and the middle of the rule around it.
double PaddingOf(const QTextDocument& document, const QTextTableFormat& format) {
  const double dots_per_unit = document.documentLayout()->paintDevice()->logicalDpiY() / kUnitsPerInch;
  return (format.cellPadding() + format.border() / 2) * dots_per_unit;
}

void AddRows(const QTextDocument& document, const QTextTable& table, QList<Piece>& pieces) {
  const double padding = PaddingOf(document, table.format());
  QList<double> rules;
  for (int row = 0; row < table.rows(); ++row) rules += TextOfRow(document, table, row).from - padding;
  // The last line of a cell is a little higher than its place says, in all rows alike.
  const double leading = rules[1] - TextOfRow(document, table, 0).to - padding;
  rules += TextOfRow(document, table, table.rows() - 1).to + padding + leading;
  const Slice head{rules[0], rules[1]};
  for (int row = 0; row < table.rows(); ++row) {
    const bool is_head = row == 0;
    pieces += {{rules[row], rules[row + 1]}, is_head, is_head || row == 1 ? Slice{} : head};
  }
}

QList<Piece> PiecesOf(const QTextDocument& document) {
  QList<Piece> pieces;
  for (auto each = document.rootFrame()->begin(); !each.atEnd(); ++each) {
    if (const auto* table = qobject_cast<const QTextTable*>(each.currentFrame())) {
      AddRows(document, *table, pieces);
    } else if (const QTextBlock block = each.currentBlock(); block.isValid() && block.length() > 1) {
      pieces += {PlaceOf(document, block), block.blockFormat().boolProperty(kKeepWithNext)};
    }
  }
  return pieces;
}

/// The first of the pieces that stay with this one, but not before `first`.
qsizetype FirstWith(const QList<Piece>& pieces, qsizetype piece, qsizetype first) {
  qsizetype begin = piece;
  while (begin > first && pieces[begin - 1].keep_with_next) --begin;
  // What would fill a page by itself is divided after all.
  return begin == first ? piece : begin;
}

}  // namespace

QList<Page> BreakPages(const QTextDocument& document, double page_height) {
  const QList<Piece> pieces = PiecesOf(document);
  QList<Page> pages;
  qsizetype first = 0;
  for (qsizetype i = 0; i < pieces.size(); ++i) {
    const double room = page_height - pieces[first].head.Height();
    if (i == first || pieces[i].place.to - pieces[first].place.from <= room) continue;
    const qsizetype next = FirstWith(pieces, i, first);
    pages += {pieces[first].head, {pieces[first].place.from, pieces[next - 1].place.to}};
    first = next;
    i = next;
  }
  if (!pieces.isEmpty()) {
    pages += {pieces[first].head, {pieces[first].place.from, pieces.back().place.to}};
  }
  return pages;
}

}  // namespace tavlo::help
