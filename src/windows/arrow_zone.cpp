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
/// What is left of the colour of an arrow beside those of the current row, in hundredths.
constexpr int kPale = 65;

int LineWidth(const Arrow& arrow) {
  return (RowGeometry::kZoneWidth - kFirstLane) / arrow.lanes >= kWideLane ? 2 : 1;
}

QColor Paler(const QColor& colour, const QColor& ground) {
  const auto mix = [](int one, int other) { return (one * kPale + other * (100 - kPale)) / 100; };
  return {mix(colour.red(), ground.red()), mix(colour.green(), ground.green()),
          mix(colour.blue(), ground.blue())};
}

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

bool ArrowZone::IsOwn(const Arrow& arrow) const {
  return arrow.from == current_ || arrow.to == current_;
}

bool ArrowZone::AnyOwn() const {
  return std::ranges::any_of(source_.shown.arrows, [this](const Arrow& arrow) { return IsOwn(arrow); });
}

void ArrowZone::SetCurrentRow(int line) {
  const bool had_own = AnyOwn();
  current_ = line;
  if (had_own || AnyOwn()) update();
}

void ArrowZone::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const int first = event->rect().top() / geometry_.pitch;
  const int last = event->rect().bottom() / geometry_.pitch;
  const auto is_seen = [&](const Arrow& arrow) {
    return std::min(arrow.from, arrow.to) <= last && std::max(arrow.from, arrow.to) >= first;
  };
  const bool any_own = AnyOwn();
  for (const Arrow& arrow : source_.shown.arrows) {
    if (!is_seen(arrow) || IsOwn(arrow)) continue;
    const QColor& colour = ArrowColours()[arrow.colour];
    Paint(painter, arrow, any_own ? Paler(colour, palette().color(QPalette::Window)) : colour,
          LineWidth(arrow));
  }
  for (const Arrow& arrow : source_.shown.arrows) {
    if (is_seen(arrow) && IsOwn(arrow)) PaintOwn(painter, arrow);
  }
}

void ArrowZone::PaintOwn(QPainter& painter, const Arrow& arrow) const {
  const int width = LineWidth(arrow) + 1;
  // A little of the ground on both sides parts it from its neighbours.
  Paint(painter, arrow, palette().color(QPalette::Window), width + 2);
  Paint(painter, arrow, ArrowColours()[arrow.colour], width);
}

void ArrowZone::Paint(QPainter& painter, const Arrow& arrow, const QColor& colour, int line_width) const {
  const double x = static_cast<int>(LaneX(arrow));
  const double out = geometry_.Middle(arrow.from) + kSpread;
  const double in = geometry_.Middle(arrow.to) - kSpread;
  const double right = width();
  painter.setPen(QPen(colour, line_width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  painter.drawPolyline(QPolygonF({{right, out}, {x, out}, {x, in}, {right - kHeadLength, in}}));
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.drawPolygon(
      QPolygonF({{right - kHeadLength, in - 4.0}, {right, in}, {right - kHeadLength, in + 4.0}}));
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace tavlo
