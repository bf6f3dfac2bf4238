// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/contrast.h"

#include <algorithm>
#include <cmath>

namespace tavlo {
namespace {

constexpr int kSteps = 32;

double Linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

QColor Between(const QColor& from, const QColor& to, int step) {
  const auto part = [step](int a, int b) { return a + (b - a) * step / kSteps; };
  return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

/// The first on the way between two colours that reaches the contrast, or the last.
QColor FirstThatStandsOut(const QColor& from, const QColor& to, const QColor& ground, double least) {
  int step = 0;
  while (step < kSteps && Contrast(Between(from, to, step), ground) < least) ++step;
  return Between(from, to, step);
}

}  // namespace

double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor StandOut(const QColor& colour, const QColor& ground, double least) {
  if (Contrast(Qt::black, ground) > Contrast(Qt::white, ground)) {
    return FirstThatStandsOut(colour, Qt::black, ground, least);
  }
  // As bright as its hue can be, before it fades.
  const QColor bright = QColor::fromHsv(colour.hsvHue(), colour.hsvSaturation(), 255).toRgb();
  const QColor brighter = FirstThatStandsOut(colour, bright, ground, least);
  return FirstThatStandsOut(brighter, Qt::white, ground, least);
}

}  // namespace tavlo
