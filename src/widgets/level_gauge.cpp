// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/level_gauge.h"

#include <QPainter>

#include "widgets/contrast.h"
#include "widgets/font_size.h"

namespace tavlo {
namespace {

constexpr int kBarWidth = 150;
constexpr int kGaugeGap = 8;
constexpr int kFrame = 2;
constexpr QColor kGreen(0, 140, 60);
constexpr QColor kYellow(210, 160, 0);
constexpr QColor kRed(210, 30, 30);

QString Words(int percent, LevelGauge::Level level) {
  const QString number = QString::number(percent) + QStringLiteral(" %");
  switch (level) {
    case LevelGauge::Level::Low: return number;
    case LevelGauge::Level::High: return number + QStringLiteral(", nearly full");
    case LevelGauge::Level::Full: return number + QStringLiteral(", full");
  }
  return number;
}

}  // namespace

LevelGauge::LevelGauge(QWidget* parent) : QProgressBar(parent) {
  setRange(0, 100);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LevelGauge::Show(int percent, Level level) {
  level_ = level;
  setValue(percent);
  setAccessibleDescription(text());
  update();
}

QString LevelGauge::text() const {
  return Words(value(), level_);
}

QColor LevelGauge::Colour() const {
  const QColor wanted = level_ == Level::Low ? kGreen : level_ == Level::High ? kYellow : kRed;
  return StandOut(wanted, palette().color(QPalette::Base), kTextContrast);
}

int LevelGauge::TextWidth() const {
  return fontMetrics().horizontalAdvance(Words(maximum(), Level::High));
}

QSize LevelGauge::sizeHint() const {
  return {ByFont(fontMetrics(), kBarWidth) + kGaugeGap + TextWidth(), fontMetrics().height() + 2 * kFrame};
}

void LevelGauge::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect bar = rect().adjusted(0, 0, -TextWidth() - kGaugeGap, -1);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRect(bar.adjusted(0, 0, -1, 0));
  QRect full = bar.adjusted(kFrame, kFrame, -kFrame, 1 - kFrame);
  full.setWidth(full.width() * value() / maximum());
  painter.fillRect(full, Colour());
  painter.drawText(rect().adjusted(bar.width() + kGaugeGap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                   text());
}

}  // namespace tavlo
