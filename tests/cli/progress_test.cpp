// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/progress.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

TEST(Progress, SecondsLeftGoByThePaceSoFarAndNeverBelowTheWire) {
  EXPECT_DOUBLE_EQ(cli::SecondsLeft(0, 1920, 0), 1.0);
  EXPECT_DOUBLE_EQ(cli::SecondsLeft(500, 1000, 5), 5.0);
  EXPECT_DOUBLE_EQ(cli::SecondsLeft(960, 1920, 0.001), 0.5) << "faster than the wire is a simulated hub";
  EXPECT_DOUBLE_EQ(cli::SecondsLeft(10, 10, 3), 0);
  EXPECT_DOUBLE_EQ(cli::SecondsLeft(20, 10, 3), 0);
}

TEST(Progress, TheBarGoesByBytes) {
  EXPECT_EQ(cli::ProgressBar("program lines", 0, 100, 2.1),
            "[..............................] program lines, 3 s left");
  EXPECT_EQ(cli::ProgressBar("system settings", 50, 100, 1),
            "[###############...............] system settings, 1 s left");
  EXPECT_EQ(cli::ProgressBar("prompt texts", 100, 100, 0),
            "[##############################] prompt texts, 0 s left");
  EXPECT_EQ(cli::ProgressBar("x", 5, 0, 0), "[..............................] x, 0 s left");
}

class ProgressOnTerminal : public ::testing::Test {
 protected:
  std::ostringstream out;
  std::ostringstream err;
  cli::Environment environment{out, err, true, nullptr, nullptr};
  cli::Console console{environment};
  FakeClock clock;
  cli::ConsoleProgress progress{console, clock};
};

TEST_F(ProgressOnTerminal, IsDrawnAtMostTenTimesASecondAndAtTheEnd) {
  progress.Show();
  for (int i = 0; i <= 1000; ++i) {
    progress.Phase("program lines", i, 1000);
    clock.now += 0.001;
  }
  std::size_t drawn = 0;
  for (std::size_t at = 0; (at = err.str().find('[', at)) != std::string::npos; ++at) ++drawn;
  // Every drawing has a bracket of its own and one of the erasing before it.
  EXPECT_GE(drawn / 2, 10u);
  EXPECT_LE(drawn / 2, 12u);
  EXPECT_EQ(progress.BytesDone(), 1000);
  progress.Hide();
  EXPECT_EQ(err.str().substr(err.str().size() - 4), "\r\x1b[K");
}

TEST(Stopwatch, RunsOnAcrossMidnightAndStandsWhenTheClockIsSetBack) {
  FakeClock clock;
  clock.now = 86399;
  Stopwatch watch(clock);
  clock.now += 3;
  EXPECT_DOUBLE_EQ(watch.Seconds(), 3);
  clock.now -= 1;
  EXPECT_DOUBLE_EQ(watch.Seconds(), 3);
  clock.now += 2;
  EXPECT_DOUBLE_EQ(watch.Seconds(), 5);
}

}  // namespace
}  // namespace tavlo::testing
