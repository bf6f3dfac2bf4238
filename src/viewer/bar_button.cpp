// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/bar_button.h"

#include <QPainter>
#include <QPalette>

#include "widgets/drawn_icon.h"
#include "widgets/ringed_button.h"

namespace tavlo::viewer {
namespace {

constexpr int kPictureSize = 18;
/// The signs are drawn in a square of so many units.
constexpr double kSquare = 24;

void DrawLines(QPainter& painter, Sign sign) {
  const auto arrow = [&](double tip, double end) {
    painter.drawPolyline(QPolygonF{{QPointF(end, 5), QPointF(tip, 12), QPointF(end, 19)}});
  };
  const auto glass = [&] {
    painter.drawEllipse(QPointF(10, 10), 6, 6);
    painter.drawLine(QPointF(14.5, 14.5), QPointF(20, 20));
  };
  switch (sign) {
    case Sign::Previous: return arrow(8, 15);
    case Sign::Next: return arrow(16, 9);
    case Sign::Smaller: return painter.drawLine(QPointF(5, 12), QPointF(19, 12));
    case Sign::Larger:
      painter.drawLine(QPointF(5, 12), QPointF(19, 12));
      return painter.drawLine(QPointF(12, 5), QPointF(12, 19));
    case Sign::FitWidth:
      painter.drawLine(QPointF(3, 4), QPointF(3, 20));
      painter.drawLine(QPointF(21, 4), QPointF(21, 20));
      painter.drawLine(QPointF(6, 12), QPointF(18, 12));
      painter.drawPolyline(QPolygonF{{QPointF(9, 9), QPointF(6, 12), QPointF(9, 15)}});
      return painter.drawPolyline(QPolygonF{{QPointF(15, 9), QPointF(18, 12), QPointF(15, 15)}});
    case Sign::Find: return glass();
    case Sign::Close:
      painter.drawLine(QPointF(6, 6), QPointF(18, 18));
      return painter.drawLine(QPointF(18, 6), QPointF(6, 18));
  }
}

}  // namespace

void DrawSign(QToolButton& button, Sign sign) {
  const QColor ink = button.palette().color(QPalette::Active, QPalette::ButtonText);
  const QColor dimmed = button.palette().color(QPalette::Disabled, QPalette::ButtonText);
  button.setIcon(DrawnIcon([=](QPainter& painter, const QRectF& place, QIcon::Mode mode) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.topLeft());
    painter.scale(place.width() / kSquare, place.height() / kSquare);
    painter.setPen(
        QPen(mode == QIcon::Disabled ? dimmed : ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    DrawLines(painter, sign);
    painter.restore();
  }));
}

QToolButton* MakeBarButton(Sign sign, const char* object_name, const QString& name, const QString& key,
                           QWidget* parent) {
  auto* button = new RingedButton(kPictureSize, parent);
  button->setObjectName(QLatin1String(object_name));
  button->setAccessibleName(name);
  button->setToolTip(key.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, key));
  button->setAutoRaise(true);
  DrawSign(*button, sign);
  return button;
}

}  // namespace tavlo::viewer
