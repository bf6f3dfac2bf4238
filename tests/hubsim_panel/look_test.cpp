// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/look.h"

#include <QApplication>
#include <algorithm>
#include <cmath>

#include "hubsim/wire_prompts.h"
#include "hubsim_panel/panel_bench.h"

namespace tavlo::hubsim {
namespace {

constexpr double kReadable = 4.5;
constexpr double kVisible = 3;

QPalette PaletteOf(const QColor& window, const QColor& base, const QColor& ink) {
  QPalette palette(window);
  palette.setColor(QPalette::Base, base);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(role, ink);
  return palette;
}

QPalette Light() {
  return PaletteOf(QColor(239, 239, 239), Qt::white, Qt::black);
}
QPalette Dark() {
  return PaletteOf(QColor(49, 54, 59), QColor(35, 38, 41), QColor(239, 240, 241));
}

double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const double first = Luminance(one) + 0.05;
  const double second = Luminance(other) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

TEST(PanelLook, WhatIsPaintedIsSeenOnALightAndOnADarkPalette) {
  for (const QPalette& palette : {Light(), Dark()}) {
    const QColor base = palette.color(QPalette::Base);
    const QColor window = palette.color(QPalette::Window);
    EXPECT_GE(Contrast(LampColour(palette), base), kVisible);
    EXPECT_GE(Contrast(LampColour(palette), window), kVisible);
    EXPECT_GE(Contrast(HandColour(palette), base), kVisible);
    EXPECT_GE(Contrast(DimColour(palette), window), kVisible);
    EXPECT_LT(Contrast(DimColour(palette), window),
              Contrast(palette.color(QPalette::WindowText), window) / 2);
    EXPECT_GE(Contrast(FrameColour(palette), base), kVisible);
  }
}

/// The largest contrast of anything painted with what stands in the corner.
double StrongestContrast(QWidget* widget) {
  const QImage image = widget->grab().toImage();
  double strongest = 1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      strongest = std::max(strongest, Contrast(image.pixelColor(x, y), image.pixelColor(0, 0)));
    }
  }
  return strongest;
}

TEST(PanelLook, LampsDialsAndTheDisplayTakeThePalettesColours) {
  for (const QPalette& palette : {Light(), Dark()}) {
    PanelBench panel;
    panel.window.setPalette(palette);
    panel.bench.Download({Display(0), SetOutput(0, 0, 1)}, TerminalSystem(), PoolOf("MMMM"));
    panel.bench.RunWithTerminal(0.1);
    panel.window.Refresh();
    for (const char* name : {"axis 1 output 1:", "axis 1 output 2:", "axis 1 input 1:", "shaft of axis 1"}) {
      EXPECT_GE(StrongestContrast(panel.Named(QLatin1String(name))), kVisible) << name;
    }
    auto* display = panel.window.findChild<QLabel*>(QStringLiteral("display"));
    EXPECT_GE(
        Contrast(display->palette().color(QPalette::WindowText), display->palette().color(QPalette::Window)),
        kReadable);
  }
}

TEST(PanelLook, NothingIsClippedWhereTheLettersAreLarge) {
  const QFont usual = QApplication::font();
  for (const qreal points : {9.0, 16.0}) {
    QFont font = usual;
    font.setPointSizeF(points);
    QApplication::setFont(font);
    HubOptions options;
    options.drives = std::array<int, kAxisCount>{kUnlistedDrive, 29, 34, 50};
    PanelBench panel(options);
    panel.window.show();
    QCoreApplication::processEvents();
    for (const auto* label : panel.window.findChildren<QLabel*>()) {
      if (label->wordWrap() || label->text().contains(QLatin1Char('\n'))) continue;
      const QString text = label->text().remove(QLatin1Char('&'));
      EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(text))
          << points << ' ' << label->text().toStdString();
      EXPECT_GE(label->height(), label->fontMetrics().height())
          << points << ' ' << label->text().toStdString();
    }
    const auto* display = panel.window.findChild<QLabel*>(QStringLiteral("display"));
    EXPECT_GE(display->width(), display->fontMetrics().horizontalAdvance(QString(20, QLatin1Char('M'))));
    EXPECT_EQ(display->font().pointSizeF(), FixedFont(font).pointSizeF());
    EXPECT_NEAR(FixedFont(font).pointSizeF(), points, points / 8);
  }
  QApplication::setFont(usual);
}

}  // namespace
}  // namespace tavlo::hubsim
