// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/dial.h"

#include <QPainter>
#include <cmath>

namespace tavlo::hubsim {
namespace {

constexpr int kSize = 24;
constexpr qreal kRadius = 10.5;
/// A hand that moved by less cannot be seen to have moved.
constexpr double kVisible = 1;
const QColor kHandColour(0, 90, 170);

}  // namespace

Dial::Dial(QWidget* parent) : QWidget(parent) {
  setFixedSize(kSize, kSize);
}

void Dial::Show(double revolutions, bool powered) {
  const double turn = revolutions - std::floor(revolutions);
  const double angle = std::isfinite(turn) ? turn * 360 : 0;
  if (std::abs(angle - angle_) < kVisible && powered == powered_) return;
  angle_ = angle;
  powered_ = powered;
  update();
}

void Dial::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect()).center());
  const QPalette::ColorGroup group = powered_ ? QPalette::Active : QPalette::Disabled;
  painter.setPen(QPen(palette().color(group, QPalette::WindowText), 1));
  painter.setBrush(powered_ ? palette().color(QPalette::Base) : palette().color(QPalette::Window));
  painter.drawEllipse(QPointF(0, 0), kRadius, kRadius);
  painter.rotate(angle_);
  const QColor hand = powered_ ? kHandColour : palette().color(QPalette::Disabled, QPalette::WindowText);
  painter.setPen(QPen(hand, 3, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0, 0), QPointF(0, -kRadius + 3));
}

}  // namespace tavlo::hubsim
