// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

bool OutputHigh(const HubBench& bench, int axis, int output) {
  return (bench.hub.Axis(axis).outputs >> output & 1) != 0;
}

TEST(RunIo, AWaitEndsWhenItsInputHasTheLevel) {
  HubBench bench;
  bench.Download({WaitInput(2, 4, 1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(10)), "+0");
  bench.hub.SetInput(2, 3, false, bench.now);
  bench.hub.SetInput(1, 4, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(1)), "");
  bench.hub.SetInput(2, 4, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "-0");
}

TEST(RunIo, AWaitOfAnXInputTakesItsOwnNumber) {
  HubBench bench;
  bench.Download({WaitInput(0, 130, 1)});
  bench.Run(1);
  bench.hub.SetInput(0, 8 + 2, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "-0");
}

TEST(RunIo, AnEdgeIsSeenHoweverShortItIs) {
  HubBench bench;
  bench.Download({WaitInput(0, 0, 2)});
  bench.Run(1);
  bench.hub.SetInput(0, 0, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "");
  bench.hub.SetInput(0, 0, true, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "-0");
}

TEST(RunIo, ABranchOnAnXInputUsesTheDrivesOrder) {
  for (const auto& [number, input] : {std::pair(135, 8), std::pair(128, 9), std::pair(134, 15)}) {
    HubBench bench;
    bench.Download({WaitTime(10), IfInput(0, number, 1, 3), Empty(), WaitTime(1)});
    bench.hub.SetInput(0, input, false, bench.now);
    EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0 -0 +1 -1 +3 -3") << number;
    for (int other = 0; other < kInputCount; ++other) bench.hub.SetInput(0, other, other != input, bench.now);
    bench.hub.SetInput(0, input, true, bench.now);
    bench.Download({IfInput(0, number, 1, 3), WaitTime(1)});
    for (int other = 0; other < kInputCount; ++other) bench.hub.SetInput(0, other, other == input, bench.now);
    EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0 -0 +1 -1") << number;
  }
}

TEST(RunIo, ABranchSeesAnEdgeOnce) {
  HubBench bench;
  bench.Download({WaitTime(10), IfInput(0, 0, 3, 0), WaitTime(1)});
  bench.Run(0.05);
  bench.hub.SetInput(0, 0, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(1)), "-0 +1 -1 +0 -0 +1 -1 +2 -2");
}

struct PatternCase {
  const char* name;
  int states;
  int mask;
  int mode;
  int drive_states;
  int drive_mask;
  std::vector<int> low;
  bool holds;
};

TEST(RunIo, SeveralInputsAreJoinedByAndOrOr) {
  const PatternCase cases[] = {
      {"and: both as wanted", 0b01, 0b11, 1, 0, 0, {1}, true},
      {"and: one differs", 0b01, 0b11, 1, 0, 0, {0, 1}, false},
      {"and: others do not count", 0b01, 0b11, 1, 0, 0, {1, 5, 6}, true},
      {"or: one as wanted", 0xFF & ~0b01, 0b11, 0, 255, 0, {}, true},
      {"or: none as wanted", 0xFF & ~0b01, 0b11, 0, 255, 0, {0}, false},
      {"and with a drive input", 0b01, 0b01, 3, 0, 0b10, {8 + 2}, true},
      {"and with a drive input that differs", 0b01, 0b01, 3, 0, 0b10, {}, false},
      {"drive input X0 is the highest bit", 0, 0, 3, 0, 0x80, {8}, true},
      {"or with a drive input as wanted", 0xFF, 0b01, 2, 0xFF, 0b10, {8 + 2}, true},
      {"or with a drive input, none as wanted", 0xFF, 0b01, 2, 0xFF, 0b10, {}, false},
      {"and of nothing", 0, 0, 1, 0, 0, {}, true},
      {"or of nothing", 255, 0, 0, 255, 0, {}, false},
  };
  for (const auto& one : cases) {
    HubBench bench;
    bench.Download({IfInputs(0, one.states, one.mask, 2, one.mode, one.drive_states, one.drive_mask),
                    GoTo(200),
                    WaitInputs(0, one.states, one.mask, one.mode, one.drive_states, one.drive_mask)});
    for (const int input : one.low) bench.hub.SetInput(0, input, false, bench.now);
    EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), one.holds ? "+0 -0 +2 -2" : "+0 -0 +1 -1") << one.name;
  }
}

TEST(RunIo, OldFirmwareReadsNoDriveInputs) {
  HubOptions options;
  options.firmware = 8;
  HubBench bench(options);
  bench.Download({WaitInputs(1, 0, 1, 1).substr(0, 5)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0");
  bench.hub.SetInput(1, 0, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "-0");
}

TEST(RunIo, OutputsAreSetByNumber) {
  for (const auto& [number, output] :
       {std::pair(0, 0), std::pair(3, 3), std::pair(128, 4), std::pair(130, 6)}) {
    HubBench bench;
    bench.Download({SetOutput(5, number, 1), WaitTime(10), SetOutput(5, number, 0)});
    bench.Run(0.05);
    EXPECT_FALSE(OutputHigh(bench, 5, output)) << number;
    bench.Go(1);
    EXPECT_TRUE(OutputHigh(bench, 5, output)) << number;
  }
}

TEST(RunIo, AnOutputThatNoDriveHasIsIgnored) {
  HubBench bench;
  bench.Download({SetOutput(5, 4, 1), SetOutput(5, 131, 1), SetOutput(5, 255, 3)});
  bench.Run(1);
  EXPECT_EQ(bench.hub.Axis(5).outputs, 0x7F);
}

TEST(RunIo, APulseFallsBackAfterItsTicks) {
  // 500 ms go out as 6356 ticks.
  HubBench bench;
  bench.Download({SetOutput(0, 1, 3, 6356), WaitTime(100)});
  bench.Run(0.49);
  EXPECT_FALSE(OutputHigh(bench, 0, 1));
  bench.Go(0.02);
  EXPECT_TRUE(OutputHigh(bench, 0, 1));
}

TEST(RunIo, ALaterActionEndsAPulse) {
  HubBench bench;
  bench.Download({SetOutput(0, 1, 3, 6356), SetOutput(0, 1, 1), WaitTime(100)});
  bench.Run(2);
  EXPECT_FALSE(OutputHigh(bench, 0, 1));
}

TEST(RunIo, AMoveSetsItsOutputOnTheWay) {
  HubBench bench;
  bench.Download({FeedOutput({.distance = 200000, .flags = 32}, 100000, 2, 1, 0)});
  bench.Run(1.6);
  EXPECT_TRUE(OutputHigh(bench, 0, 2));
  bench.Go(0.2);
  EXPECT_FALSE(OutputHigh(bench, 0, 2));
  EXPECT_TRUE(bench.hub.Axis(0).moving);
}

TEST(RunIo, AMoveSetsItsOutputAtItsEndWithoutTheFlag) {
  HubBench bench;
  bench.Download({FeedOutput({.distance = 200000}, 100000, 129, 3, 250), WaitTime(1000)});
  bench.Run(3.3);
  EXPECT_TRUE(OutputHigh(bench, 0, 5));
  bench.Go(0.2);
  EXPECT_FALSE(OutputHigh(bench, 0, 5));
  bench.Go(0.5);
  EXPECT_TRUE(OutputHigh(bench, 0, 5)) << "250 units of 2 ms have passed";
}

TEST(RunIo, AnOutputBehindTheEndOfAMoveIsSetAtTheEnd) {
  HubBench bench;
  bench.Download({FeedOutput({.distance = 1000, .flags = 32}, 100000, 0, 1, 0)});
  bench.Run(1);
  EXPECT_FALSE(OutputHigh(bench, 0, 0));
}

TEST(RunIo, TheStatusOfALinesDriveComesWithItsStart) {
  HubBench bench;
  bench.Download({FeedLength({.axis = 3, .distance = 100}), WaitTime(1)});
  bench.hub.SetInput(3, 0, false, bench.now);
  bench.hub.SetInput(3, 7, false, bench.now);
  const auto messages = bench.Run(1);
  ASSERT_EQ(messages.size(), 5U);
  EXPECT_EQ(messages[1], (Message{244, 0b1110, 0b0111, 0x7F}));
  EXPECT_EQ(HubBench::Count(messages, 244), 1);
}

TEST(RunIo, DrivesWithMoreInputsAndOutputsTellThemToo) {
  HubBench bench;
  bench.Download({SetOutput(1, 128, 1), SetOutput(1, 0, 1)}, SystemOf(20));
  bench.hub.SetInput(1, 8 + 1, false, bench.now);
  bench.hub.SetInput(1, 8 + 0, false, bench.now);
  const auto messages = bench.Run(1);
  ASSERT_GE(messages.size(), 9U);
  EXPECT_EQ(messages[2], (Message{214, 0b1110, 0b0111, 0}));
  EXPECT_EQ(messages[3], (Message{222, 0x7F, 0, 0}));
  EXPECT_EQ(messages[8], (Message{222, 0b1101111, 0, 0}));
}

TEST(RunIo, AnEmptySocketTellsNothing) {
  HubOptions options;
  options.drives = {{1, 0, 0, 0, 0, 0, 0, 0}};
  HubBench bench(options);
  bench.Download({SetOutput(1, 0, 1), SetOutput(0, 0, 1)});
  const auto messages = bench.Run(1);
  EXPECT_EQ(HubBench::Count(messages, 242), 0);
  EXPECT_EQ(HubBench::Count(messages, 241), 1);
}

TEST(RunIo, TheHubQuadTellsItsOwnInputsAsAxisFive) {
  HubOptions options;
  options.model = HubModel::Quad;
  HubBench bench(options);
  bench.Download({WaitInput(4, 2, 1)});
  EXPECT_EQ(HubBench::Count(bench.Run(1), 245), 1);
  bench.hub.SetInput(4, 2, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "-0");
}

TEST(RunIo, AKnobLineEndsAtItsInput) {
  HubBench bench;
  bench.Download({Bytes({18, 1, 1, 10, 0}), Bytes({82, 0, 0, 1, 0}) + "x\xFF", WaitTime(1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0");
  bench.hub.SetInput(0, 1, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(1)), "-0 +1 -1 +2 -2");
}

}  // namespace
}  // namespace tavlo::hubsim
