// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/icon_images.h"

#include <gtest/gtest.h>

#include <QFile>
#include <set>
#include <string>

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
        images.insert(Bytes(IconImage({row, static_cast<IconSet>(set)}, scale)));
      }
    }
    EXPECT_EQ(images.size(), static_cast<std::size_t>(kIconRows * kIconSets)) << scale;
  }
}

TEST(IconImages, TheSetsOfAKindDifferInShapeAndNotOnlyInColour) {
  for (int row = 0; row < kIconRows; ++row) {
    std::set<std::string> shapes;
    for (int set = 0; set < kIconSets; ++set) {
      shapes.insert(Shape(IconImage({row, static_cast<IconSet>(set)}, 1)));
    }
    EXPECT_EQ(shapes.size(), static_cast<std::size_t>(kIconSets)) << kIcons[row].glyph;
  }
}

TEST(IconImages, TheKindsDifferInShape) {
  std::set<std::string> shapes;
  for (int row = 0; row < kIconRows; ++row) shapes.insert(Shape(IconImage({row, IconSet::Normal}, 1)));
  EXPECT_EQ(shapes.size(), static_cast<std::size_t>(kIconRows));
}

TEST(IconImages, AnImageHasTheDotsOfTheScreen) {
  EXPECT_EQ(IconImage({0, IconSet::Normal}, 1).width(), kIconSize);
  EXPECT_EQ(IconImage({0, IconSet::Normal}, 2).width(), 2 * kIconSize);
  EXPECT_EQ(IconImage({0, IconSet::Normal}, 2).devicePixelRatio(), 2);
}

TEST(IconImages, ARunningLineOfCallShowsTheMove) {
  EXPECT_EQ(Bytes(IconImage(IconFor(CL, IconSet::Yellow), 1)),
            Bytes(IconImage(IconFor(FL, IconSet::Yellow), 1)));
  EXPECT_NE(Bytes(IconImage(IconFor(CL, IconSet::Normal), 1)),
            Bytes(IconImage(IconFor(FL, IconSet::Normal), 1)));
}

TEST(IconImages, CommandsAndTheProgramHaveDrawings) {
  for (const char* command :
       {"load", "save", "print", "clear", "download", "upload", "execute", "hardware", "help", "quit"}) {
    const QImage image = CommandImage(command, Qt::red, 20, 1).toImage();
    bool drawn = false;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) drawn = drawn || qRed(image.pixel(x, y)) > 200;
    }
    EXPECT_TRUE(drawn) << command;
  }
  EXPECT_GT(qAlpha(ApplicationImage(32, 1).toImage().pixel(16, 16)), 200);
}

}  // namespace
}  // namespace tavlo
