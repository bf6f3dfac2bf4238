// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/look.h"

#include <QFontDatabase>

namespace tavlo::hubsim {
namespace {

constexpr int kHalfLight = 128;
constexpr qreal kFixedScale = 0.9;

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < kHalfLight;
}

}  // namespace

QColor LampColour(const QPalette& palette) {
  return IsDark(palette) ? QColor(70, 215, 130) : QColor(0, 130, 60);
}

QColor HandColour(const QPalette& palette) {
  return IsDark(palette) ? QColor(110, 190, 255) : QColor(0, 90, 170);
}

/// Not the palette's own colour for what is disabled: many a dark palette has none.
QColor DimColour(const QPalette& palette) {
  const QColor ink = palette.color(QPalette::WindowText);
  const QColor back = palette.color(QPalette::Window);
  return {(ink.red() + back.red()) / 2, (ink.green() + back.green()) / 2, (ink.blue() + back.blue()) / 2};
}

QColor FrameColour(const QPalette& palette) {
  return IsDark(palette) ? QColor(150, 150, 150) : QColor(130, 130, 130);
}

QFont FixedFont(const QFont& font) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font.pointSizeF() * kFixedScale);
  return fixed;
}

}  // namespace tavlo::hubsim
