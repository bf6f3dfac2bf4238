// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/arrow_zone.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>

namespace tavlo {
namespace {

constexpr int kFirstLane = 4;
constexpr int kHeadLength = 6;
/// Arrows leave a row below its middle and come in above it, so that both can be seen in a row that has both.
constexpr int kSpread = 4;
/// Lanes closer than this are drawn as thin lines.
constexpr int kWideLane = 4;

}  // namespace

const std::array<QColor, kArrowColours>& ArrowColours() {
  static const std::array<QColor, kArrowColours> colours = {{
      {0x35, 0x84, 0xd8},
      {0xdc, 0x4c, 0x4c},
      {0x31, 0x93, 0x5e},
      {0xa8, 0x6b, 0xd1},
      {0xb8, 0x7a, 0x00},
      {0x00, 0x92, 0x9b},
      {0xd4, 0x55, 0x8f},
  }};
  return colours;
}

ArrowZone::ArrowZone(const Source& source, const RowGeometry& geometry, QWidget* parent)
    : QWidget(parent), source_(source), geometry_(geometry) {
  setObjectName(QStringLiteral("ArrowZone"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

double ArrowZone::LaneX(const Arrow& arrow) {
  const double lane_width =
      static_cast<double>(RowGeometry::kZoneWidth - kFirstLane - kHeadLength) / arrow.lanes;
  return kFirstLane + arrow.lane * lane_width;
}

void ArrowZone::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const int first = event->rect().top() / geometry_.pitch;
  const int last = event->rect().bottom() / geometry_.pitch;
  for (const Arrow& arrow : source_.shown.arrows) {
    if (std::min(arrow.from, arrow.to) <= last && std::max(arrow.from, arrow.to) >= first)
      Paint(painter, arrow);
  }
}

void ArrowZone::Paint(QPainter& painter, const Arrow& arrow) const {
  const QColor& colour = ArrowColours()[arrow.colour];
  const bool wide = (RowGeometry::kZoneWidth - kFirstLane) / arrow.lanes >= kWideLane;
  const double x = static_cast<int>(LaneX(arrow));
  const double out = geometry_.Middle(arrow.from) + kSpread;
  const double in = geometry_.Middle(arrow.to) - kSpread;
  const double right = width();
  painter.setPen(QPen(colour, wide ? 2 : 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  painter.drawPolyline(QPolygonF({{right, out}, {x, out}, {x, in}, {right - kHeadLength, in}}));
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.drawPolygon(
      QPolygonF({{right - kHeadLength, in - 4.0}, {right, in}, {right - kHeadLength, in + 4.0}}));
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace tavlo
