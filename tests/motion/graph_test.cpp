// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "motion/graph.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavlo {
namespace {

TEST(FindDivs, EndsTheAxisOnARoundNumber) {
  const struct {
    double max;
    int count;
    double step;
  } rows[] = {{1000, 5, 200},    {1, 5, 0.2},  {0.001, 5, 0.0002}, {1.05, 3, 0.5}, {1.5, 3, 0.5},
              {1.51, 4, 0.5},    {2, 4, 0.5},  {2.5, 5, 0.5},      {3, 6, 0.5},    {3.1, 4, 1},
              {4, 4, 1},         {5, 5, 1},    {6, 6, 1},          {6.01, 4, 2},   {8, 4, 2},
              {9, 5, 2},         {9.99, 5, 2}, {10, 5, 2},         {99, 5, 20},    {0.05, 5, 0.01},
              {250000, 5, 50000}};
  for (const auto& row : rows) {
    const Divisions found = FindDivs(row.max);
    EXPECT_EQ(found.count, row.count) << row.max;
    EXPECT_NEAR(found.step, row.step, row.step * 1e-12) << row.max;
    EXPECT_GE(found.count * found.step, row.max * (1 - 1e-12));
  }
}

TEST(FindDivs, IsExactAtEveryPowerOfTen) {
  for (int power = -20; power <= 20; ++power) {
    const double max = std::strtod(("1e" + std::to_string(power)).c_str(), nullptr);
    EXPECT_EQ(FindDivs(max).count, 5) << power;
    EXPECT_NEAR(FindDivs(max).step / max, 0.2, 1e-9) << power;
    EXPECT_EQ(FindDivs(std::nextafter(max, 0)).count, 5) << "just below";
    EXPECT_EQ(FindDivs(max * 1.0001).count, 3) << "just above";
  }
}

TEST(GraphLabels, XTicksCountInThousandsFrom300000On) {
  EXPECT_EQ(XCaptions({3, 100000}), (std::vector<std::string>{"0k", "100k", "200k", "300k"}));
  EXPECT_EQ(XCaptions({5, 50000}),
            (std::vector<std::string>{"0", "50000", "100000", "150000", "200000", "250000"}));
  EXPECT_EQ(XCaptions({3, 0.5}), (std::vector<std::string>{"0", "0.5", "1", "1.5"}));
}

TEST(GraphLabels, YTicksHaveTheDecimalsThatTheirStepNeeds) {
  EXPECT_EQ(YCaptions({3, 0.5}), (std::vector<std::string>{"0.0", "0.5", "1.0", "1.5"}));
  EXPECT_EQ(YCaptions({2, 0.05}), (std::vector<std::string>{".000", ".050", ".100"}));
  EXPECT_EQ(YCaptions({1, 0.1}), (std::vector<std::string>{"0.0", "0.1"}));
}

constexpr GraphSize kSize = {1000, 500, 3};
const Series kCurve = {{0, 0.1, 1.0, 1.1}, {0, 1.9, 1.9, 0}};

TEST(Graph, TheGridStandsInItsShareOfThePicture) {
  const Graph graph = GraphDraw(kCurve, std::nullopt, kSize);
  EXPECT_EQ(graph.x_divisions, (Divisions{3, 0.5}));
  EXPECT_EQ(graph.y_divisions, (Divisions{4, 0.5}));
  ASSERT_EQ(graph.grid.size(), 9U);
  const Line& left = graph.grid[0];
  EXPECT_NEAR(left.from.x, 150, 1e-9);
  EXPECT_NEAR(left.from.y, 400, 1e-9);
  EXPECT_NEAR(left.to.y, 50, 1e-9);
  EXPECT_EQ(left.pen, 1);
  EXPECT_NEAR(graph.grid[3].from.x, 900, 1e-9) << "the right edge";
  EXPECT_NEAR(graph.grid[8].from.y, 50, 1e-9) << "the top";
  EXPECT_NEAR(graph.grid[8].to.x, 900, 1e-9);
}

TEST(Graph, TheCurveJoinsItsPoints) {
  const Graph graph = GraphDraw(kCurve, std::nullopt, kSize);
  ASSERT_EQ(graph.curve.size(), 3U);
  EXPECT_NEAR(graph.curve[0].from.x, 150, 1e-9);
  EXPECT_NEAR(graph.curve[0].to.x, 200, 1e-9);
  EXPECT_NEAR(graph.curve[0].to.y, 400 - 1.9 / 2 * 350, 1e-9);
  EXPECT_EQ(graph.curve[1].from.x, graph.curve[0].to.x);
  EXPECT_NEAR(graph.curve[2].to.x, 700, 1e-9);
  EXPECT_EQ(graph.curve[2].pen, 2);
}

TEST(Graph, TheLabelsStandBesideTheirTicks) {
  const Graph graph = GraphDraw(kCurve, std::nullopt, kSize);
  ASSERT_EQ(graph.x_labels.size(), 4U);
  EXPECT_EQ(graph.x_labels[3].caption, "1.5");
  EXPECT_NEAR(graph.x_labels[3].at.x, 900, 1e-9);
  EXPECT_NEAR(graph.x_labels[3].at.y, 403, 1e-9);
  ASSERT_EQ(graph.y_labels.size(), 5U);
  EXPECT_EQ(graph.y_labels[4].caption, "2.0");
  EXPECT_NEAR(graph.y_labels[4].at.x, 147, 1e-9);
  EXPECT_NEAR(graph.y_labels[4].at.y, 50, 1e-9);
}

TEST(Graph, AnOutputHasItsBandAboveTheCurve) {
  const Series trace = {{0, 0.5, 0.5, 1.1}, {0, 0, 1, 1}};
  const Graph graph = GraphDraw(kCurve, trace, kSize);
  EXPECT_NEAR(graph.grid[0].to.y, 110, 1e-9) << "the grid ends at 22 percent";
  ASSERT_EQ(graph.output_grid.size(), 6U);
  EXPECT_NEAR(graph.output_grid[0].from.y, 25, 1e-9);
  EXPECT_NEAR(graph.output_grid[0].to.y, 75, 1e-9);
  EXPECT_NEAR(graph.output_grid[4].from.y, 25, 1e-9);
  EXPECT_NEAR(graph.output_grid[5].to.x, 900, 1e-9);
  ASSERT_EQ(graph.output.size(), 3U);
  EXPECT_NEAR(graph.output[0].from.y, 75, 1e-9) << "low";
  EXPECT_NEAR(graph.output[1].from.x, 400, 1e-9);
  EXPECT_NEAR(graph.output[1].to.y, 25, 1e-9) << "high";
  ASSERT_TRUE(graph.high_and_low);
  EXPECT_NEAR(graph.high_and_low->first.y, 25, 1e-9);
  EXPECT_NEAR(graph.high_and_low->second.y, 72, 1e-9);
}

TEST(Graph, AnOutputWhosePlaceIsNotKnownLeavesItsBandFree) {
  const Graph graph = GraphDraw(kCurve, Series{}, kSize);
  EXPECT_NEAR(graph.grid[0].to.y, 110, 1e-9);
  EXPECT_TRUE(graph.output_grid.empty());
  EXPECT_TRUE(graph.output.empty());
  EXPECT_FALSE(graph.high_and_low);
}

TEST(Graph, WhatCannotBeScaledIsNotDrawn) {
  for (const Series& none : {Series{}, Series{{0, 0}, {0, 0}}, Series{{0, 1}, {0, 0}},
                             Series{{0, INFINITY}, {0, 1}}, Series{{0, 1}, {0, NAN}}}) {
    const Graph graph = GraphDraw(none, std::nullopt, kSize);
    EXPECT_TRUE(graph.grid.empty() && graph.curve.empty() && graph.x_labels.empty());
  }
}

}  // namespace
}  // namespace tavlo
