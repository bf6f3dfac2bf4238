// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/display_picture.h"

#include <QEvent>
#include <QPainter>

#include "widgets/display_colours.h"
#include "widgets/prompt_box.h"

namespace tavlo {
namespace {

constexpr int kEdge = 4;

}  // namespace

DisplayPicture::DisplayPicture(int columns, int lines, QWidget* parent)
    : QWidget(parent), columns_(columns), lines_(lines) {
  setFont(DisplayFont(*this));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void DisplayPicture::Show(const QStringList& text, int lines_for_text) {
  if (text == text_ && lines_for_text == lines_for_text_) return;
  text_ = text;
  lines_for_text_ = lines_for_text;
  setAccessibleDescription(text.join(QLatin1Char('\n')));
  update();
}

QSize DisplayPicture::sizeHint() const {
  return {columns_ * fontMetrics().horizontalAdvance(QLatin1Char('M')) + 2 * kEdge,
          lines_ * fontMetrics().lineSpacing() + 2 * kEdge};
}

void DisplayPicture::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::StyleChange) return;
  setFont(DisplayFont(*this));
  updateGeometry();
}

QRect DisplayPicture::Cell(int column, int line) const {
  const int wide = fontMetrics().horizontalAdvance(QLatin1Char('M'));
  const int high = fontMetrics().lineSpacing();
  return {kEdge + column * wide, kEdge + line * high, wide, high};
}

void DisplayPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), kGlass);
  for (int line = lines_for_text_; line < lines_; ++line) {
    painter.fillRect(Cell(0, line) | Cell(columns_ - 1, line), QBrush(kGlassShade, Qt::BDiagPattern));
  }
  painter.setPen(kGlassText);
  for (int line = 0; line < std::min<int>(lines_, text_.size()); ++line) {
    for (int column = 0; column < std::min<int>(columns_, text_[line].size()); ++column) {
      painter.drawText(Cell(column, line), Qt::AlignCenter, text_[line].at(column));
    }
  }
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace tavlo
