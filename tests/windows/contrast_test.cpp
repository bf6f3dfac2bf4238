// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/contrast.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

TEST(Contrast, IsThatOfTheGuidelines) {
  EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.01);
  EXPECT_NEAR(Contrast(Qt::white, Qt::black), 21, 0.01);
  EXPECT_NEAR(Contrast(QColor(119, 119, 119), Qt::white), 4.48, 0.01);
  EXPECT_NEAR(Contrast(Qt::red, Qt::white), 4.00, 0.01);
  EXPECT_NEAR(Contrast(QColor(40, 80, 120), QColor(40, 80, 120)), 1, 0.01);
}

TEST(Contrast, AColourThatStandsOutIsLeftAlone) {
  EXPECT_EQ(StandOut(QColor(0, 96, 36), Qt::white, kTextContrast), QColor(0, 96, 36));
  EXPECT_EQ(StandOut(QColor(255, 128, 120), QColor(30, 30, 30), kTextContrast), QColor(255, 128, 120));
}

TEST(Contrast, AnyColourIsMadeToStandOutFromAnyGroundAndNoMoreThanItMust) {
  for (int ground_grey = 0; ground_grey <= 255; ground_grey += 5) {
    for (int hue = 0; hue < 360; hue += 30) {
      const QColor ground(ground_grey, ground_grey, ground_grey);
      const QColor wanted = QColor::fromHsl(hue, 200, 120);
      const QColor made = StandOut(wanted, ground, kTextContrast);
      EXPECT_GE(Contrast(made, ground), kTextContrast) << ground_grey << ", " << hue;
      const bool unchanged = made.rgb() == wanted.rgb();
      EXPECT_TRUE(unchanged || Contrast(made, ground) < kTextContrast * 1.2) << ground_grey << ", " << hue;
    }
  }
}

}  // namespace
}  // namespace tavlo
