// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "maker/pdf.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextDocument>

#include "maker/page.h"
#include "maker/pages.h"
#include "maker/typesetting.h"

namespace tavlo::help {
namespace {

constexpr int kDotsPerInch = 600;
constexpr double kMarginPoints = 8.5;
const QColor kMarginInk(96, 96, 96);
const QString kProgram = QStringLiteral("Tavlo Composer");
/// How far the foot stands from the text.
constexpr double kToMarginMm = 6;
constexpr double kMarginLineMm = 5;
constexpr double kRuleMm = 0.14;

double Dots(double mm) {
  return mm / kMmPerInch * kDotsPerInch;
}

QRectF InDots(const QRectF& mm) {
  return {Dots(mm.x()), Dots(mm.y()), Dots(mm.width()), Dots(mm.height())};
}

/// The document's title and the page, below the text.
void PaintMargin(QPainter& painter, const Source& source, qsizetype page, qsizetype pages) {
  QFont font = painter.font();
  font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica")});
  font.setPointSizeF(kMarginPoints);
  painter.setFont(font);
  painter.setPen(QPen(kMarginInk, Dots(0.15)));
  const double rule = kTextMm.bottom() + kToMarginMm;
  const QRectF foot = InDots({kTextMm.left(), rule + 1, kTextMm.width(), kMarginLineMm});
  painter.drawLine(QPointF(Dots(kTextMm.left()), Dots(rule)), QPointF(Dots(kTextMm.right()), Dots(rule)));
  painter.drawText(foot, Qt::AlignLeft | Qt::AlignTop, kProgram + QStringLiteral(": ") + source.title);
  painter.drawText(foot, Qt::AlignRight | Qt::AlignTop,
                   QStringLiteral("Page %1 of %2").arg(page + 1).arg(pages));
}

/// Paints what lies between two heights of the document, this far below the top of the text.
void PaintSlice(QPainter& painter, const QTextDocument& document, const Slice& slice, double below) {
  // The rule between two rows of a table belongs to both.
  const double rule = Dots(kRuleMm);
  painter.save();
  painter.translate(Dots(kTextMm.left()), Dots(kTextMm.top()) + below - slice.from);
  QAbstractTextDocumentLayout::PaintContext context;
  context.clip = QRectF(-rule, slice.from - rule, document.textWidth() + 2 * rule, slice.Height() + 2 * rule);
  context.palette.setColor(QPalette::Text, Qt::black);
  painter.setClipRect(context.clip);
  document.documentLayout()->draw(&painter, context);
  painter.restore();
}

/// The writer notes the moment at which it wrote; each build would make other files of the same text.
QByteArray WithoutTime(QByteArray pdf) {
  static const QByteArray kLabel("/CreationDate (D:");
  constexpr qsizetype kDigits = 14;
  const qsizetype at = pdf.indexOf(kLabel);
  if (at >= 0) pdf.replace(at + kLabel.size(), kDigits, QByteArray("20260101000000"));
  return pdf;
}

}  // namespace

QByteArray MakePdf(const Source& source) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setTitle(source.title);
  writer.setCreator(kProgram);
  writer.setResolution(kDotsPerInch);
  writer.setPageSize(QPageSize(QPageSize::A4));
  writer.setPageMargins({});

  QTextDocument document;
  document.documentLayout()->setPaintDevice(&writer);
  const QSizeF text = InDots(kTextMm).size();
  Typeset(document, source, text.width());
  const QList<Page> pages = BreakPages(document, text.height());

  QPainter painter(&writer);
  painter.setRenderHint(QPainter::LosslessImageRendering);
  for (qsizetype page = 0; page < pages.size(); ++page) {
    if (page > 0) writer.newPage();
    PaintMargin(painter, source, page, pages.size());
    if (pages[page].head.Height() > 0) PaintSlice(painter, document, pages[page].head, 0);
    PaintSlice(painter, document, pages[page].body, pages[page].head.Height());
  }
  painter.end();
  buffer.close();
  return WithoutTime(bytes);
}

}  // namespace tavlo::help
