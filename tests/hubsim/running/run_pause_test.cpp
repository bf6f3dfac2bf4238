// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

/// All but the drives' status.
std::vector<Message> WithoutStatus(std::vector<Message> messages) {
  std::erase_if(messages,
                [](const Message& message) { return message.header >= 241 && message.header <= 248; });
  return messages;
}

const Message kMarkerHidden{235, 0, 0, 0};

TEST(RunPause, APauseHoldsTheProgramInFrontOfTheNextLine) {
  HubBench bench;
  bench.Download({WaitTime(50), Empty(), WaitTime(50)});
  bench.Run(0.1);
  EXPECT_TRUE(WithoutStatus(bench.Send("P")).empty());
  EXPECT_EQ(bench.hub.State(), HubState::Paused);
  const auto messages = WithoutStatus(bench.Go(5));
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0].header, 237);
  EXPECT_EQ(messages[1], (Message{235, 1, 0, 2})) << "the marker skips the empty line";
}

TEST(RunPause, ResumeHidesTheMarkerAndGoesOn) {
  HubBench bench;
  bench.Download({WaitTime(1), WaitTime(1)});
  bench.Run(0);
  bench.Send("P");
  bench.Go(1);
  const auto messages = bench.Send("r");
  ASSERT_GE(messages.size(), 2U);
  EXPECT_EQ(messages[0], kMarkerHidden);
  EXPECT_EQ(messages[1], (Message{254, 0, 1, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Running);
}

TEST(RunPause, StatusOfEveryDriveComesTenTimesASecondWhilePaused) {
  HubOptions options;
  options.drives = {{1, 4, 0, 0, 0, 0, 0, 0}};
  HubBench bench(options);
  bench.Download({WaitTime(1000)});
  bench.Run(0.1);
  bench.Send("P");
  const auto messages = bench.Go(2.05);
  EXPECT_NEAR(HubBench::Count(messages, 241), 21, 1);
  EXPECT_EQ(HubBench::Count(messages, 241), HubBench::Count(messages, 242));
  EXPECT_EQ(HubBench::Count(messages, 243), 0);
  bench.Send("r");
  EXPECT_EQ(HubBench::Count(bench.Go(2), 241), 0);
}

TEST(RunPause, StatusKeepsTheClocksPaceWhateverTheSpeedup) {
  HubOptions options;
  options.speedup = 100;
  HubBench bench(options);
  bench.Download({WaitTime(1)});
  bench.Run(0);
  bench.Send("P");
  EXPECT_NEAR(HubBench::Count(bench.Go(1.05), 241), 11, 1);
}

TEST(RunPause, AStepRunsOneLine) {
  HubBench bench;
  bench.Download({WaitTime(1), Comment("x"), WaitTime(10), WaitTime(1)});
  bench.Run(0);
  bench.Send("P");
  bench.Go(1);
  auto messages = WithoutStatus(bench.Send("T"));
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0], kMarkerHidden);
  EXPECT_EQ(messages[1], (Message{254, 0, 2, 0}));
  messages = WithoutStatus(bench.Go(1));
  ASSERT_EQ(messages.size(), 3U);
  EXPECT_EQ(messages[0], (Message{237, 0, 2, 0}));
  EXPECT_EQ(messages[1], (Message{253, 0, 0, 0}));
  EXPECT_EQ(messages[2], (Message{235, 1, 0, 3}));
}

TEST(RunPause, AStepOfAMoveThatGoesOnIsDoneWhenTheMoveIsUnderWay) {
  HubBench bench;
  bench.Download({WaitTime(1), FeedLength({.distance = 400000, .wait = kProceed}), WaitTime(1)});
  bench.Run(0);
  bench.Send("P");
  bench.Go(1);
  const auto messages = WithoutStatus(bench.Send("T"));
  EXPECT_EQ(HubBench::LineEvents(messages), "+1 ~1");
  EXPECT_EQ(HubBench::Count(messages, 253), 1);
  EXPECT_TRUE(bench.hub.Axis(0).moving);
}

TEST(RunPause, AStepWhileALineIsUnderWayEndsWithThatLine) {
  HubBench bench;
  bench.Download({WaitTime(50), WaitTime(1)});
  bench.Run(0.1);
  bench.Send("P");
  EXPECT_EQ(HubBench::Count(bench.Send("T"), 253), 0);
  const auto messages = WithoutStatus(bench.Go(5));
  ASSERT_EQ(messages.size(), 3U);
  EXPECT_EQ(messages[1].header, 253);
}

TEST(RunPause, AStepBehindTheEndIsDoneAtOnce) {
  HubBench bench;
  bench.Download({WaitTime(1)});
  bench.Run(1);
  bench.Send("P");
  EXPECT_EQ(WithoutStatus(bench.Send("T")), (std::vector<Message>{{253, 0, 0, 0}}));
}

TEST(RunPause, TheStepThatReachesTheEndIsDone) {
  HubBench bench;
  bench.Download({WaitTime(1), GoTo(200)});
  bench.Run(0);
  bench.Send("P");
  bench.Go(1);
  EXPECT_EQ(HubBench::Count(bench.Send("T"), 253), 1);
  EXPECT_EQ(bench.hub.State(), HubState::Ended);
}

TEST(RunPause, OnlyAPausedProgramSteps) {
  HubBench bench;
  bench.Download({WaitTime(1000), WaitTime(1)});
  bench.Run(0.1);
  EXPECT_TRUE(bench.Send("Tr").empty());
  EXPECT_EQ(HubBench::Count(bench.Go(11), 253), 0);
}

TEST(RunPause, RewindWhilePausedHoldsAtTheFirstLine) {
  HubBench bench;
  bench.Download({WaitTime(1), WaitTime(1)});
  bench.Run(0);
  bench.Send("P");
  bench.Go(1);
  const auto messages = WithoutStatus(bench.Send("0"));
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0], kMarkerHidden);
  EXPECT_EQ(messages[1], (Message{235, 1, 0, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Paused);
}

TEST(RunPause, MotionGoesOnWhileTheProgramIsPaused) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 40000}), WaitTime(1)});
  bench.Run(0.1);
  bench.Send("P");
  bench.Go(5);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 40000);
}

TEST(RunPause, AHaltTakesTheMarkerAway) {
  HubBench bench;
  bench.Download({WaitTime(1), WaitTime(1)});
  bench.Run(0);
  bench.Send("P");
  bench.Go(1);
  bench.hub.PressStop(bench.now);
  const auto messages = WithoutStatus(bench.Go(0));
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0], kMarkerHidden);
  EXPECT_EQ(messages[1].header, 251);
}

TEST(RunPause, AStopEndsAPause) {
  HubBench bench;
  bench.Download({WaitTime(100)});
  bench.Run(0);
  bench.Send("P");
  bench.Go(0.5);
  bench.Send("S");
  EXPECT_TRUE(bench.Go(5).empty());
  EXPECT_EQ(HubBench::LineEvents(bench.Send("X")), "+0") << "a new run is not paused";
}

TEST(RunPause, APausedHubDoesNotCatchUpOnStatusAfterALongSilence) {
  HubBench bench;
  bench.Download({WaitTime(100)});
  bench.Run(0);
  bench.Send("P");
  bench.Wait(1e6);
  EXPECT_LE(bench.Collect().size(), 40U);
  EXPECT_LE(*bench.hub.NextEvent(), bench.now + 0.11);
}

}  // namespace
}  // namespace tavlo::hubsim
