// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/paper/paper_pages.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <utility>

namespace tavlo {
namespace {

/// Columns by which a row that is too long goes on further right; more than the rows of a line are indented.
constexpr int kHanging = 7;
/// Columns between a number and the texts beside it.
constexpr qreal kGap = 1.5;
constexpr qreal kAboveBlock = 2 * kPoint;
constexpr qreal kAboveHeading = 12 * kPoint;
/// However far a loop is nested and however narrow the paper, a text has so much of the width, and so much
/// where it goes on.
constexpr qreal kLeastShare = 0.4;
constexpr qreal kLeastHanging = 0.3;

struct FontRow {
  PaperStyle style;
  qreal points;
  bool bold;
};
constexpr FontRow kFonts[] = {
    {PaperStyle::Plain, 9.5, false}, {PaperStyle::Title, 16, true}, {PaperStyle::Heading, 11, true}};

qreal HeightOf(PaperStyle style) {
  return QFontMetricsF(PaperFont(style)).lineSpacing();
}

bool HasNumbers(const PaperBlock& block) {
  return std::ranges::any_of(block, [](const PaperRow& row) { return !row.number.empty(); });
}

bool IsBlank(const PaperBlock& block) {
  return std::ranges::all_of(block,
                             [](const PaperRow& row) { return row.number.empty() && row.text.empty(); });
}

/// The pieces of a text as they fall on rows of these widths, the first and the others.
std::vector<QString> Wrapped(const QString& text, PaperStyle style, qreal first, qreal others) {
  QTextLayout layout(text, PaperFont(style));
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  std::vector<QString> pieces;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(pieces.empty() ? first : others);
    pieces.push_back(text.mid(line.textStart(), line.textLength()));
  }
  layout.endLayout();
  if (pieces.empty()) pieces.emplace_back();
  return pieces;
}

/// Puts blocks on pages, from the top down.
class Writer {
 public:
  explicit Writer(const QSizeF& size)
      : size_(size),
        column_(QFontMetricsF(PaperFont(PaperStyle::Plain)).horizontalAdvance(QLatin1Char('0'))) {}

  void Add(const PaperBlock& block) {
    if (IsBlank(block) && y_ == 0) return;
    const std::vector<Placed> rows = Rows(block);
    qreal height = 0;
    for (const Placed& row : rows) height += row.height;
    const bool heading = !block.empty() && block.front().style == PaperStyle::Heading;
    const qreal above = heading ? kAboveHeading : kAboveBlock;
    if (y_ > 0 && y_ + above + height > size_.height()) TurnPage();
    if (y_ > 0) y_ += above;
    for (const Placed& row : rows) Put(row);
  }

  [[nodiscard]] std::vector<PaperPage> Pages() && { return std::move(pages_); }

 private:
  /// Texts that stand beside each other on one row of the paper, their height still to come.
  struct Placed {
    std::vector<PaperText> texts;
    qreal height = 0;
  };

  [[nodiscard]] std::vector<Placed> Rows(const PaperBlock& block) const {
    const qreal margin = HasNumbers(block) ? NumberWidth() + kGap * column_ : 0;
    std::vector<Placed> rows;
    for (const PaperRow& row : block) AddRows(rows, row, margin);
    return rows;
  }

  void AddRows(std::vector<Placed>& rows, const PaperRow& row, qreal margin) const {
    const qreal left = std::min(margin + row.indent * column_, size_.width() * (1 - kLeastShare));
    const qreal hanging = std::min(left + kHanging * column_, size_.width() * (1 - kLeastHanging));
    const QString text = QString::fromStdString(row.text);
    bool first = true;
    for (const QString& piece : Wrapped(text, row.style, size_.width() - left, size_.width() - hanging)) {
      Placed placed{{{{first ? left : hanging, 0}, piece, row.style}}, HeightOf(row.style)};
      if (first && !row.number.empty()) {
        const QString number = QString::fromStdString(row.number);
        const qreal width = QFontMetricsF(PaperFont(row.style)).horizontalAdvance(number);
        placed.texts.push_back({{NumberWidth() - width, 0}, number, row.style});
      }
      rows.push_back(std::move(placed));
      first = false;
    }
  }

  [[nodiscard]] qreal NumberWidth() const { return 3 * column_; }

  void Put(const Placed& row) {
    // Only within a block that is higher than a page.
    if (y_ > 0 && y_ + row.height > size_.height()) TurnPage();
    for (PaperText text : row.texts) {
      text.at.setY(y_);
      pages_.back().texts.push_back(std::move(text));
    }
    y_ += row.height;
  }

  void TurnPage() {
    pages_.emplace_back();
    y_ = 0;
  }

  QSizeF size_;
  qreal column_;
  qreal y_ = 0;
  std::vector<PaperPage> pages_ = std::vector<PaperPage>(1);
};

}  // namespace

QFont PaperFont(PaperStyle style) {
  QFont font;
  font.setFamilies({QStringLiteral("Arial"), QStringLiteral("Liberation Sans"), QStringLiteral("Helvetica")});
  font.setHintingPreference(QFont::PreferNoHinting);
  for (const FontRow& row : kFonts) {
    if (row.style != style) continue;
    font.setPixelSize(static_cast<int>(row.points * kPoint));
    font.setBold(row.bold);
  }
  return font;
}

std::vector<PaperPage> LayOut(const PaperDocument& document, const QSizeF& size) {
  Writer writer(size);
  for (const PaperBlock& block : document.blocks) writer.Add(block);
  return std::move(writer).Pages();
}

}  // namespace tavlo
