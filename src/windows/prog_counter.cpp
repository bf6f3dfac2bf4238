// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/prog_counter.h"

#include <QPainter>
#include <QPolygonF>

namespace tavlo {
namespace {

/// The marker's place in a grid of rows 24 high: 15 above the row's top, in the first row 9.
constexpr int kOldPitch = 24;
constexpr int kMarkerRise = 15;
constexpr int kMarkerRiseFirst = 9;

constexpr double kHalfHeight = 6;

}  // namespace

ProgCounterMarker::ProgCounterMarker(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("ProgCounter"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void ProgCounterMarker::StandAt(const RowGeometry& geometry, int line) {
  const int rise = line == 0 ? kMarkerRiseFirst : kMarkerRise;
  const int top = geometry.Top(line) - rise * geometry.pitch / kOldPitch;
  tip_ = geometry.Middle(line) - top;
  setGeometry(1, top, RowGeometry::kMarkerWidth, geometry.pitch * 2);
  update();
  show();
}

void ProgCounterMarker::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().color(QPalette::WindowText));
  const double right = width() - 1;
  const double tip = tip_;
  painter.drawPolygon(QPolygonF({{0.0, tip - kHalfHeight}, {right, tip}, {0.0, tip + kHalfHeight}}));
}

}  // namespace tavlo
