// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/icon_images.h"

#include <gtest/gtest.h>

#include <QFile>
#include <algorithm>
#include <set>
#include <string>

#include "widgets/contrast.h"

namespace tavlo {
namespace {

std::string Bytes(const QImage& image) {
  const QImage plain = image.convertToFormat(QImage::Format_RGB32);
  return {reinterpret_cast<const char*>(plain.constBits()), static_cast<std::size_t>(plain.sizeInBytes())};
}

/// Only light and dark, as an eye without colour would see it, told in two tones around the tile.
std::string Shape(const QImage& image) {
  const int tile = qGray(image.pixel(1, 1));
  std::string shape;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      shape += std::abs(qGray(image.pixel(x, y)) - tile) > 60 ? '#' : ' ';
    }
  }
  return shape;
}

TEST(IconImages, EveryCellOfTheTableHasAnImageOfItsOwnAtBothScales) {
  for (const qreal scale : {1.0, 2.0}) {
    std::set<std::string> images;
    for (int row = 0; row < kIconRows; ++row) {
      for (int set = 0; set < kIconSets; ++set) {
        images.insert(Bytes(IconImage({row, static_cast<IconSet>(set)}, kIconSize, scale)));
      }
    }
    EXPECT_EQ(images.size(), static_cast<std::size_t>(kIconRows * kIconSets)) << scale;
  }
}

TEST(IconImages, TheSetsOfAKindDifferInShapeAndNotOnlyInColour) {
  for (int row = 0; row < kIconRows; ++row) {
    std::set<std::string> shapes;
    for (int set = 0; set < kIconSets; ++set) {
      shapes.insert(Shape(IconImage({row, static_cast<IconSet>(set)}, kIconSize, 1)));
    }
    EXPECT_EQ(shapes.size(), static_cast<std::size_t>(kIconSets)) << kIcons[row].glyph;
  }
}

TEST(IconImages, TheKindsDifferInShape) {
  std::set<std::string> shapes;
  for (int row = 0; row < kIconRows; ++row)
    shapes.insert(Shape(IconImage({row, IconSet::Normal}, kIconSize, 1)));
  EXPECT_EQ(shapes.size(), static_cast<std::size_t>(kIconRows));
}

TEST(IconImages, AnImageHasTheDotsOfTheScreen) {
  EXPECT_EQ(IconImage({0, IconSet::Normal}, kIconSize, 1).width(), kIconSize);
  EXPECT_EQ(IconImage({0, IconSet::Normal}, kIconSize, 2).width(), 2 * kIconSize);
  EXPECT_EQ(IconImage({0, IconSet::Normal}, kIconSize, 2).devicePixelRatio(), 2);
}

TEST(IconImages, EveryGlyphStandsOutFromTheTileOfItsSet) {
  for (int row = 0; row < kIconRows; ++row) {
    for (int set = 0; set < kIconSets; ++set) {
      const QImage& image = IconImage({row, static_cast<IconSet>(set)}, kIconSize, 1);
      const QColor tile = IconTile(static_cast<IconSet>(set));
      EXPECT_EQ(image.pixelColor(1, 1), tile) << kIcons[row].glyph;
      double most = 1;
      // The badge takes the lower right.
      for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < (y < kIconSize / 2 ? kIconSize : kIconSize / 2); ++x) {
          most = std::max(most, Contrast(image.pixelColor(x, y), tile));
        }
      }
      EXPECT_GE(most, kSymbolContrast) << kIcons[row].glyph << " in set " << set;
    }
  }
}

TEST(IconImages, AnIconIsDrawnAnewForEachScreenAndNotMadeLarger) {
  const QIcon icons[] = {CommandIcon("save", Qt::white, Qt::gray), ApplicationIcon()};
  for (const QIcon& icon : icons) {
    const QImage plain = icon.pixmap(QSize(20, 20), 1.0).toImage();
    for (const qreal scale : {1.5, 2.0}) {
      const QImage fine = icon.pixmap(QSize(20, 20), scale).toImage();
      EXPECT_EQ(fine.size(), QSize(20, 20) * scale);
      EXPECT_EQ(fine.devicePixelRatio(), scale);
      EXPECT_NE(Bytes(fine), Bytes(plain.scaled(fine.size()))) << scale;
      EXPECT_NE(Bytes(fine),
                Bytes(plain.scaled(fine.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)))
          << scale;
    }
  }
}

TEST(IconImages, ACommandThatCannotBeGivenHasTheOtherInk) {
  const QIcon icon = CommandIcon("save", Qt::red, Qt::blue);
  const auto reddest = [&icon](QIcon::Mode mode) {
    const QImage image = icon.pixmap(QSize(20, 20), 1.0, mode).toImage();
    int red = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) red = std::max(red, qRed(image.pixel(x, y)));
    }
    return red;
  };
  EXPECT_GT(reddest(QIcon::Normal), 200);
  EXPECT_EQ(reddest(QIcon::Disabled), 0);
}

TEST(IconImages, ARunningLineOfCallShowsTheMove) {
  EXPECT_EQ(Bytes(IconImage(IconFor(CL, IconSet::Yellow), kIconSize, 1)),
            Bytes(IconImage(IconFor(FL, IconSet::Yellow), kIconSize, 1)));
  EXPECT_NE(Bytes(IconImage(IconFor(CL, IconSet::Normal), kIconSize, 1)),
            Bytes(IconImage(IconFor(FL, IconSet::Normal), kIconSize, 1)));
}

TEST(IconImages, CommandsAndTheProgramHaveDrawings) {
  for (const char* command :
       {"load", "save", "print", "clear", "download", "upload", "execute", "hardware", "help", "quit"}) {
    const QImage image = CommandIcon(command, Qt::red, Qt::blue).pixmap(20).toImage();
    bool drawn = false;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) drawn = drawn || qRed(image.pixel(x, y)) > 200;
    }
    EXPECT_TRUE(drawn) << command;
  }
  EXPECT_GT(qAlpha(ApplicationIcon().pixmap(32).toImage().pixel(16, 16)), 200);
}

}  // namespace
}  // namespace tavlo
