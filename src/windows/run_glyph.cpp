// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_glyph.h"

#include <QPainter>
#include <QPalette>

#include "widgets/contrast.h"
#include "widgets/drawn_icon.h"

namespace tavlo {
namespace {

/// A little more than a state and a symbol must have: styles shade a button, and an outline is thin.
constexpr double kLitContrast = kTextContrast + 1;
constexpr double kUnlitContrast = kSymbolContrast + 1.5;

/// What is lit is filled, what is not is an outline, so that they are told apart without their colours too.
void DrawGlyph(QPainter& painter, const QRectF& place, Glyph glyph, const QColor& ink, bool filled) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(place.topLeft());
  painter.scale(place.width() / kGlyphSize, place.height() / kGlyphSize);
  painter.setPen(QPen(ink, 1.5));
  painter.setBrush(filled ? QBrush(ink) : QBrush(Qt::NoBrush));
  const auto triangle = [&](qreal left) {
    painter.drawPolygon(QPolygonF{{QPointF(left, 4), QPointF(left + 13, 12), QPointF(left, 20)}});
  };
  switch (glyph) {
    case Glyph::Play: triangle(6); break;
    case Glyph::Pause:
      painter.drawRect(QRectF(5.5, 4, 4.5, 16));
      painter.drawRect(QRectF(14, 4, 4.5, 16));
      break;
    case Glyph::Step:
      triangle(3.5);
      painter.drawRect(QRectF(18, 4, 3, 16));
      break;
    case Glyph::Reset:
      painter.drawRect(QRectF(3, 4, 3, 16));
      painter.drawPolygon(QPolygonF{{QPointF(20.5, 4), QPointF(7.5, 12), QPointF(20.5, 20)}});
      break;
    case Glyph::Stop: painter.drawRect(QRectF(5, 5, 14, 14)); break;
  }
}

}  // namespace

QIcon GlyphIcon(Glyph glyph, const QColor& ink, bool filled) {
  return DrawnIcon([=](QPainter& painter, const QRectF& place, QIcon::Mode) {
    painter.save();
    DrawGlyph(painter, place, glyph, ink, filled);
    painter.restore();
  });
}

QIcon GlyphIcon(Glyph glyph, QRgb colour, const QPalette& palette) {
  const bool lit = colour != kGray;
  const QColor ground = palette.color(QPalette::Button);
  return GlyphIcon(glyph, StandOut(QColor(colour), ground, lit ? kLitContrast : kUnlitContrast), lit);
}

}  // namespace tavlo
