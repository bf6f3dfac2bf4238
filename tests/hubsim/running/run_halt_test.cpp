// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

constexpr int kHalt = 0;
constexpr int kBranch = 1;
constexpr int kContinue = 2;

std::string SystemWithLimits(int action, int line) {
  return SystemOf(1, {0, 0, 0, action, line});
}

TEST(RunHalt, ALimitHaltsTheProgram) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 400000})}, SystemWithLimits(kHalt, 5));
  bench.Run(1);
  EXPECT_TRUE(bench.hub.HitLimit(0, bench.now));
  const auto messages = bench.Go(10);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0], (Message{252, 0, 0, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Halted);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

TEST(RunHalt, ALimitBranchesWhenTold) {
  HubBench bench;
  bench.Download({FeedLength({.axis = 1, .distance = 400000}), Empty(), WaitTime(1)},
                 SystemWithLimits(kBranch, 2));
  bench.Run(1);
  EXPECT_TRUE(bench.hub.HitLimit(1, bench.now));
  EXPECT_EQ(HubBench::LineEvents(bench.Go(5)), "-0 +2 -2");
  EXPECT_FALSE(bench.hub.Axis(1).moving);
}

TEST(RunHalt, ALimitBranchBeyondTheProgramEndsIt) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 400000})}, SystemWithLimits(kBranch, 255));
  bench.Run(1);
  bench.hub.HitLimit(0, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(5)), "-0");
  EXPECT_EQ(bench.hub.State(), HubState::Ended);
}

TEST(RunHalt, ALimitOnlyEndsTheMoveWhenTheProgramIsToContinue) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 400000}), WaitTime(1)}, SystemWithLimits(kContinue, 0));
  bench.Run(1);
  bench.hub.HitLimit(0, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(5)), "-0 +1 -1");
  EXPECT_LT(bench.hub.Axis(0).position_steps, 100000);
}

TEST(RunHalt, ALimitThatIsNotUsedIsNotSeen) {
  HubBench bench;
  bench.Download({WaitTime(100)}, AxisBlockOf(1, 0, '3') + SystemOf(1).substr(32));
  bench.Run(0.1);
  EXPECT_FALSE(bench.hub.HitLimit(0, bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), "");
  EXPECT_TRUE(bench.hub.HitLimit(1, bench.now));
}

TEST(RunHalt, ALimitOrAStopButtonWithoutARunIsNotSeen) {
  HubBench bench;
  bench.Download({WaitTime(100)});
  EXPECT_FALSE(bench.hub.HitLimit(0, bench.now));
  EXPECT_FALSE(bench.hub.PressStop(bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), "");
}

TEST(RunHalt, BehindItsEndAProgramIsHaltedOnlyWhileSomethingMoves) {
  const auto limit = [](HubBench& bench) { return bench.hub.HitLimit(0, bench.now); };
  const auto stop = [](HubBench& bench) { return bench.hub.PressStop(bench.now); };
  const auto expect = [](auto&& act, int header) {
    HubBench bench;
    bench.Download({FeedLength({.distance = 100000, .wait = kProceed})});
    bench.Run(1);
    ASSERT_EQ(bench.hub.State(), HubState::Ended);
    EXPECT_TRUE(act(bench));
    EXPECT_EQ(HubBench::Count(bench.Go(5), header), 1);
    bench.Run(10);
    ASSERT_EQ(bench.hub.State(), HubState::Ended);
    EXPECT_FALSE(act(bench));
    EXPECT_EQ(bench.hub.TakeOutput(), "");
    EXPECT_EQ(bench.hub.State(), HubState::Ended);
  };
  expect(limit, 252);
  expect(stop, 251);
}

TEST(RunHalt, AnAxisThatTurnsWithNoEndMovesToo) {
  HubBench bench;
  bench.Download({StartStop(3, 1)});
  bench.Run(10);
  ASSERT_EQ(bench.hub.State(), HubState::Ended);
  EXPECT_TRUE(bench.hub.HitLimit(1, bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({252, 1, 0, 0}));
}

TEST(RunHalt, ALimitThatAProgramContinuesBehindIsSeenOnlyByAnAxisThatMoves) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 400000})}, SystemWithLimits(kContinue, 0));
  bench.Run(1);
  EXPECT_FALSE(bench.hub.HitLimit(1, bench.now));
  EXPECT_TRUE(bench.hub.HitLimit(0, bench.now));
}

TEST(RunHalt, WhereNoDriveIsNothingRunsOntoALimitOrReportsAFault) {
  HubOptions options;
  options.drives = std::array<int, kAxisCount>{1};
  HubBench bench(options);
  bench.Download({WaitTime(100)});
  bench.Run(0.1);
  EXPECT_FALSE(bench.hub.HitLimit(1, bench.now));
  EXPECT_FALSE(bench.hub.Fail(1, 1, bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), "");
  EXPECT_EQ(bench.hub.State(), HubState::Running);
  EXPECT_TRUE(bench.hub.Fail(0, 1, bench.now));
}

TEST(RunHalt, TheStopButtonHaltsTheProgram) {
  HubBench bench;
  bench.Download({WaitTime(100)});
  bench.Run(0.1);
  EXPECT_TRUE(bench.hub.PressStop(bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({251, 0, 0, 0}));
}

TEST(RunHalt, AFaultTellsAxisAndAllFourteenBits) {
  HubBench bench;
  bench.Download({FeedLength({.axis = 5, .distance = 400000})});
  bench.Run(1);
  EXPECT_TRUE(bench.hub.Fail(5, 0x3FFF, bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({211, 5, 127, 127}));
  EXPECT_FALSE(bench.hub.Axis(5).moving) << "a drive that failed stands at once";
  EXPECT_TRUE(bench.hub.Fail(0, 1 << 7, bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({211, 0, 1, 0}));
}

TEST(RunHalt, EveryRequestOfAResetIsAnsweredAndThenRevisionsComeAgain) {
  HubBench bench;
  bench.Download({SetOutput(0, 0, 1), WaitTime(100)});
  bench.Run(0.1);
  bench.hub.PressStop(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput().size(), 4U);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(bench.Ask("R"), "Y") << i;
  EXPECT_EQ(bench.Ask("R").size(), 24U);
  EXPECT_EQ(bench.hub.Axis(0).outputs, 0x7F);
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
}

TEST(RunHalt, AnotherCommandEndsAReset) {
  HubBench bench;
  bench.Download({WaitTime(100)});
  bench.Run(0.1);
  bench.hub.PressStop(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput().size(), 4U);
  EXPECT_EQ(bench.Ask("R"), "Y");
  EXPECT_EQ(bench.Ask("C").size(), 2U);
  EXPECT_EQ(bench.Ask("R").size(), 24U);
}

TEST(RunHalt, EveryHaltCanBeReset) {
  const auto reset_after = [](const std::vector<std::string>& lines, auto&& act) {
    HubBench bench;
    bench.Download(lines);
    bench.Run(1);
    act(bench);
    EXPECT_EQ(bench.hub.State(), HubState::Halted);
    static_cast<void>(bench.hub.TakeOutput());
    return bench.Ask("R");
  };
  EXPECT_EQ(reset_after({WaitTime(1000)}, [](HubBench& b) { b.hub.HitLimit(2, b.now); }), "Y");
  EXPECT_EQ(reset_after({WaitTime(1000)}, [](HubBench& b) { b.hub.PressStop(b.now); }), "Y");
  EXPECT_EQ(reset_after({WaitTime(1000)}, [](HubBench& b) { b.hub.Fail(1, 4, b.now); }), "Y");
  EXPECT_EQ(reset_after({Return()}, [](HubBench&) {}), "Y");
  EXPECT_EQ(reset_after({Call(0)}, [](HubBench&) {}), "Y");
}

TEST(RunHalt, StopEndsAHaltToo) {
  HubBench bench;
  bench.Download({WaitTime(100)});
  bench.Run(0.1);
  bench.hub.PressStop(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput().size(), 4U);
  EXPECT_EQ(bench.Ask("S"), "");
  EXPECT_EQ(bench.Ask("R").size(), 24U);
}

TEST(RunHalt, AHaltOfARunWithTheTerminalEndsItsKeys) {
  HubBench bench;
  bench.Download({WaitTime(100)});
  bench.Send("M");
  bench.hub.PressStop(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({251, 0, 0, 0}));
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
}

TEST(RunHalt, AHaltedProgramDoesNothingMore) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 400000, .wait = kProceed}), WaitTime(100), WaitTime(1)});
  bench.Run(0.5);
  bench.hub.PressStop(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput().size(), 4U);
  bench.Send("IPrT0");
  EXPECT_TRUE(bench.Go(20).empty());
}

}  // namespace
}  // namespace tavlo::hubsim
