// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/paper/paper_painter.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>

#include "qt/paper/paper_pages.h"

namespace tavlo {
namespace {

/// Millimetres; the left one has room for the holes of a file.
constexpr QMarginsF kMargins(22, 13, 14, 13);
/// What stands at the head of a page: the file's name, the number and a rule below them.
constexpr qreal kHead = 26 * kPoint;
constexpr qreal kRuleAt = 15 * kPoint;
constexpr qreal kRuleWidth = 0.5 * kPoint;
/// The number of a page keeps so much of the width.
constexpr qreal kNumberRoom = 90 * kPoint;

/// Paints pages of one size.
class PagePainter {
 public:
  PagePainter(const PaperDocument& document, const QSizeF& size)
      : file_(QString::fromStdString(document.file_name)),
        size_(size),
        pages_(LayOut(document, {size.width(), size.height() - kHead})) {}

  [[nodiscard]] int Pages() const { return static_cast<int>(pages_.size()); }

  void Paint(QPainter& painter, int page) const {
    PaintHead(painter, page);
    for (const PaperText& text : pages_[page].texts) {
      PutText(painter, text.at + QPointF(0, kHead), text.text, text.style);
    }
  }

 private:
  void PaintHead(QPainter& painter, int page) const {
    const QFontMetricsF letters(PaperFont(PaperStyle::Plain));
    const QString number = QStringLiteral("Page %1 of %2").arg(page + 1).arg(pages_.size());
    const QString file = letters.elidedText(file_, Qt::ElideMiddle, size_.width() - kNumberRoom);
    PutText(painter, {0, 0}, file, PaperStyle::Plain);
    PutText(painter, {size_.width() - letters.horizontalAdvance(number), 0}, number, PaperStyle::Plain);
    painter.fillRect(QRectF(0, kRuleAt, size_.width(), kRuleWidth), Qt::black);
  }

  static void PutText(QPainter& painter, const QPointF& at, const QString& text, PaperStyle style) {
    const QFont font = PaperFont(style);
    painter.setFont(font);
    painter.drawText(at + QPointF(0, QFontMetricsF(font).ascent()), text);
  }

  QString file_;
  QSizeF size_;
  std::vector<PaperPage> pages_;
};

std::vector<int> Chosen(int pages, const QPageRanges& ranges) {
  std::vector<int> chosen;
  for (int page = 0; page < pages; ++page) {
    if (ranges.isEmpty() || ranges.contains(page + 1)) chosen.push_back(page);
  }
  return chosen;
}

}  // namespace

QPageLayout WithMargins(QPageLayout layout) {
  layout.setUnits(QPageLayout::Millimeter);
  const QMarginsF own = layout.margins();
  layout.setMargins({std::max(own.left(), kMargins.left()), std::max(own.top(), kMargins.top()),
                     std::max(own.right(), kMargins.right()), std::max(own.bottom(), kMargins.bottom())});
  return layout;
}

Outcome PaintOn(QPagedPaintDevice& device, const PaperDocument& document, const QPageRanges& ranges,
                const std::function<void()>& give_up) {
  device.setPageLayout(WithMargins(device.pageLayout()));
  const PagePainter pages(document, device.pageLayout().paintRect(QPageLayout::Point).size() * kPoint);
  const std::vector<int> chosen = Chosen(pages.Pages(), ranges);
  if (chosen.empty()) return Outcome::Failed("the document has none of the chosen pages");
  QPainter painter;
  if (!painter.begin(&device)) return Outcome::Failed("the printer cannot be opened");
  painter.scale(device.logicalDpiX() / (72 * kPoint), device.logicalDpiY() / (72 * kPoint));
  for (const int page : chosen) {
    if (page != chosen.front() && !device.newPage()) {
      if (give_up) give_up();
      return Outcome::Failed("the printer takes no further page");
    }
    pages.Paint(painter, page);
  }
  return painter.end() ? Outcome() : Outcome::Failed("the printer did not take the whole document");
}

Outcome MakePdf(const PaperDocument& document, const QPageLayout& layout, const QPageRanges& ranges,
                std::string& pdf) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setPageLayout(layout);
    writer.setTitle(QString::fromStdString(document.title));
    writer.setCreator(QStringLiteral("Tavlo Composer"));
    if (Outcome painted = PaintOn(writer, document, ranges); !painted) return painted;
  }
  pdf = buffer.data().toStdString();
  return {};
}

}  // namespace tavlo
