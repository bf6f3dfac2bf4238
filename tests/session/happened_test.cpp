// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/happened.h"

#include <gtest/gtest.h>

#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

TEST(Happened, KeepsTheLastTenWithTheirTimesTheNewestFirst) {
  FakeDesk d;
  for (int i = 1; i <= 12; ++i) {
    d.clock.now = 1000 + i;
    Happened(d.desk, "event " + std::to_string(i));
  }
  ASSERT_EQ(d.source.happened.size(), kHappenings);
  EXPECT_EQ(d.source.happened.front().text, "event 12");
  EXPECT_EQ(d.source.happened.front().at, 1012);
  EXPECT_EQ(d.source.happened.back().text, "event 3");
  EXPECT_EQ(d.view.happened, 12);
}

TEST(Happened, TellsTimesAsAClockShowsThem) {
  EXPECT_EQ(TimeText(17 * 3600 + 44 * 60 + 59.9), "17:44");
  EXPECT_EQ(TimeTextWithSeconds(17 * 3600 + 44 * 60 + 5), "17:44:05");
  EXPECT_EQ(TimeTextWithSeconds(0), "00:00:00");
  EXPECT_EQ(TimeTextWithSeconds(86400), "00:00:00");
}

TEST(Happened, TellsBytesAndTheirTimeWithoutALocaleAndAcrossMidnight) {
  EXPECT_EQ(PaceText(3180, 100, 101.94), "3,180 bytes in 1.9 s");
  EXPECT_EQ(PaceText(8194, 86399, 3.4), "8,194 bytes in 4.4 s");
  EXPECT_EQ(BytesText(1), "1 byte");
  EXPECT_EQ(BytesText(999), "999 bytes");
}

}  // namespace
}  // namespace tavlo::testing
