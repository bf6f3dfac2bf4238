// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/wire/line_pacer.h"

#include <gtest/gtest.h>

namespace tavlo::hubsim {
namespace {

constexpr double kByte = 1.0 / 1920;

TEST(LinePacer, WithoutPaceWhatIsSentTogetherArrivesTogetherAtOnce) {
  LinePacer line(false, 0);
  line.Send("abc", 10);
  line.Send("d", 10);
  EXPECT_EQ(line.NextArrival(), 10);
  EXPECT_EQ(line.Take(10)->bytes, "abc");
  EXPECT_EQ(line.Take(10)->bytes, "d");
  EXPECT_TRUE(line.Empty());
  EXPECT_FALSE(line.NextArrival().has_value());
}

TEST(LinePacer, PacedBytesArriveOneByOneAfterTheirTimeOnTheWire) {
  LinePacer line(true, 0);
  line.Send("abc", 10);
  EXPECT_FALSE(line.Take(10).has_value());
  for (int i = 1; i <= 3; ++i) EXPECT_NEAR(line.Take(11)->at, 10 + i * kByte, 1e-12);
}

TEST(LinePacer, APacedLineIsBusyWithWhatWasSentBefore) {
  LinePacer line(true, 0);
  line.Send("ab", 10);
  line.Send("c", 10 + kByte);
  line.Send("d", 20);
  double last = 0;
  for (int i = 0; i < 3; ++i) last = line.Take(30)->at;
  EXPECT_NEAR(last, 10 + 3 * kByte, 1e-12);
  EXPECT_NEAR(line.Take(30)->at, 20 + kByte, 1e-12);
}

TEST(LinePacer, WhatWasClearedKeepsTheLineBusyNoLonger) {
  LinePacer line(true, 0);
  line.Send(std::string(8194, 'x'), 10);
  line.Clear();
  EXPECT_TRUE(line.Empty());
  line.Send("a", 11);
  EXPECT_NEAR(line.Take(20)->at, 11 + kByte, 1e-12);
}

TEST(LinePacer, NineteenHundredAndTwentyBytesTakeASecond) {
  LinePacer line(true, 0);
  line.Send(std::string(1920, 'x'), 0);
  double last = 0;
  while (const auto arrival = line.Take(2)) last = arrival->at;
  EXPECT_NEAR(last, 1, 1e-9);
}

TEST(LinePacer, LatencyDelaysWithoutSlowingTheLine) {
  LinePacer line(true, 0.016);
  line.Send("ab", 10);
  EXPECT_NEAR(line.Take(11)->at, 10.016 + kByte, 1e-12);
  EXPECT_NEAR(line.Take(11)->at, 10.016 + 2 * kByte, 1e-12);
  LinePacer unpaced(false, 0.016);
  unpaced.Send("ab", 10);
  EXPECT_FALSE(unpaced.Take(10.015).has_value());
  EXPECT_EQ(unpaced.Take(10.016)->bytes, "ab");
}

TEST(LinePacer, ClearingForgetsWhatIsUnderWay) {
  LinePacer line(true, 0);
  line.Send("abc", 1);
  line.Clear();
  EXPECT_TRUE(line.Empty());
}

}  // namespace
}  // namespace tavlo::hubsim
