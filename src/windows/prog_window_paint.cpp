// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QPaintEvent>
#include <QPainter>

#include "qt/gui/shown_text.h"
#include "text/short_desc.h"
#include "widgets/contrast.h"
#include "windows/prog_window.h"

// What the pane shows: its rows, and the text of a row that is cut.

namespace tavlo {
namespace {

constexpr int kFocusWidth = 2;

constexpr QRgb kRedNumber = qRgb(192, 0, 0);
constexpr QRgb kBlueNumber = qRgb(0, 0, 210);
constexpr QRgb kQuietGray = qRgb(128, 128, 128);

}  // namespace

void ProgWindow::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  for (const QRect& part : event->region()) {
    const int last = geometry_.RowAt(part.bottom());
    for (int line = geometry_.RowAt(part.top()); line <= last; ++line) PaintRow(painter, line);
  }
}

void ProgWindow::PaintRow(QPainter& painter, int line) {
  PaintSelected(painter, line);
  PaintLabel(painter, line);
  PaintIcon(painter, line);
  PaintDesc(painter, line);
  if (line == CurrentRow() || line == drop_target_) PaintMark(painter, line);
}

QColor ProgWindow::LabelGround(int line) const {
  const QColor ground = palette().color(QPalette::Window);
  return InRange(line) ? StandOut(palette().color(QPalette::Highlight), ground, kSymbolContrast) : ground;
}

QColor ProgWindow::LabelInk(int line) const {
  const QColor ground = LabelGround(line);
  switch (source_.shown.rows[line].label) {
    case LabelColour::Plain:
      if (!InRange(line)) return palette().color(QPalette::WindowText);
      return StandOut(palette().color(QPalette::HighlightedText), ground, kTextContrast);
    case LabelColour::Red: return StandOut(QColor(kRedNumber), ground, kTextContrast);
    case LabelColour::Blue: return StandOut(QColor(kBlueNumber), ground, kTextContrast);
  }
  return {};
}

// The background of a text shows the state of its row, so what is selected is marked on both sides of it: on
// the number, and by a bar between the icon and the text.
void ProgWindow::PaintSelected(QPainter& painter, int line) const {
  if (!InRange(line)) return;
  const QRect label = geometry_.Label(line).adjusted(0, 0, RowGeometry::kGap, 0);
  const QRect bar(geometry_.DescLeft() - RowGeometry::kGap, label.top(), RowGeometry::kGap, label.height());
  painter.fillRect(label, LabelGround(line));
  painter.fillRect(bar, LabelGround(line));
}

void ProgWindow::PaintLabel(QPainter& painter, int line) const {
  painter.setPen(LabelInk(line));
  QFont font = this->font();
  font.setBold(source_.shown.rows[line].label != LabelColour::Plain);
  painter.setFont(font);
  painter.drawText(geometry_.Label(line), Qt::AlignRight | Qt::AlignVCenter, QString::number(line + 1));
}

void ProgWindow::PaintIcon(QPainter& painter, int line) const {
  const Row& row = source_.shown.rows[line];
  const QRect icon = geometry_.Icon(line);
  painter.drawImage(icon.topLeft(), IconImage(row.icon, geometry_.icon, devicePixelRatioF()));
  // The frame lies on the image's own ground, whatever the palette is.
  const QColor ground = IconTile(row.icon.set);
  const QColor ink = row.frame == kPlainFrame ? StandOut(QColor(kQuietGray), ground, kSymbolContrast)
                                              : IconInk(row.icon.set);
  for (int inset = 0; inset < row.frame; ++inset) {
    painter.setPen(ink);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(icon.adjusted(inset, inset, -inset - 1, -inset - 1));
  }
}

void ProgWindow::PaintDesc(QPainter& painter, int line) {
  const QRect desc = geometry_.Desc(line);
  const Colour back = BackgroundOf(source_.shown.rows[line].state);
  painter.fillRect(desc, QColor(back.red, back.green, back.blue));
  const QString& text = texts_.Shown(source_, line, geometry_.text_width, fontMetrics());
  if (text.isEmpty()) return;
  painter.setFont(font());
  painter.setPen(Qt::black);
  const QRect place(desc.left() + RowGeometry::kTextMargin, desc.top(),
                    geometry_.text_width - RowGeometry::kTextMargin, desc.height());
  painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

void ProgWindow::PaintMark(QPainter& painter, int line) const {
  // While an icon is dragged the mark that stands out is that of the row it would be dropped on.
  const bool focused = dragging_ ? line == drop_target_ : hasFocus();
  const Colour back = BackgroundOf(source_.shown.rows[line].state);
  const QColor ink = focused ? palette().color(QPalette::Highlight) : QColor(kQuietGray);
  painter.setPen(QPen(StandOut(ink, QColor(back.red, back.green, back.blue), kSymbolContrast), 1));
  painter.setBrush(Qt::NoBrush);
  const QRect desc = geometry_.Desc(line);
  for (int inset = 0; inset < (focused ? kFocusWidth : 1); ++inset) {
    painter.drawRect(desc.adjusted(inset, inset, -inset - 1, -inset - 1));
  }
}

QString ProgWindow::ToolTipAt(QPoint position) {
  const int line = geometry_.RowAt(position.y());
  if (geometry_.Icon(line).contains(position)) return QStringLiteral("Change program line %1").arg(line + 1);
  if (!geometry_.Desc(line).contains(position)) return {};
  const QString whole = FromText(ShownCaption(source_.shown.rows[line].desc));
  const bool fits = fontMetrics().horizontalAdvance(whole) <= geometry_.text_width - RowGeometry::kTextMargin;
  return fits ? QString() : whole.toHtmlEscaped();
}

}  // namespace tavlo
