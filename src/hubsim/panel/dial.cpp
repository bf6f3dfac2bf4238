// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/dial.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "hubsim/panel/look.h"

namespace tavlo::hubsim {
namespace {

constexpr int kLeastSize = 24;
/// A hand that moved by less cannot be seen to have moved.
constexpr double kVisible = 1;

}  // namespace

Dial::Dial(const QString& owner, QWidget* parent) : QWidget(parent) {
  const int size = std::max(kLeastSize, fontMetrics().height() + fontMetrics().descent());
  setFixedSize(size, size);
  setAccessibleName(QStringLiteral("shaft of ") + owner);
  setToolTip(QStringLiteral(
                 "The shaft of %1: where its hand points, clockwise as it turns. Grey while the motor has no "
                 "current")
                 .arg(owner));
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
  const qreal radius = width() / 2.0 - 1.5;
  const QColor rim = powered_ ? palette().color(QPalette::WindowText) : DimColour(palette());
  painter.setPen(QPen(rim, 1));
  painter.setBrush(powered_ ? palette().color(QPalette::Base) : palette().color(QPalette::Window));
  painter.drawEllipse(QPointF(0, 0), radius, radius);
  painter.rotate(angle_);
  painter.setPen(QPen(powered_ ? HandColour(palette()) : rim, radius / 3.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0, 0), QPointF(0, -radius + 3));
}

}  // namespace tavlo::hubsim
