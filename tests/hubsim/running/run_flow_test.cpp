// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

TEST(RunFlow, EachLineIsToldAndWaitsForItsAcknowledgement) {
  HubBench bench;
  bench.acknowledging = false;
  bench.Download({WaitTime(10), WaitTime(10)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(10)), "+0");
  bench.Send("I");
  EXPECT_EQ(HubBench::LineEvents(bench.Go(0.09)), "");
  EXPECT_EQ(HubBench::LineEvents(bench.Go(10)), "-0 +1");
}

TEST(RunFlow, EmptyLinesAndCommentsAreNotTold) {
  HubBench bench;
  bench.Download({Empty(), Comment("start"), WaitTime(1), Empty(), WaitTime(1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+2 -2 +4 -4");
}

TEST(RunFlow, TheLastLineOfTheMemoryRunsAndEndsTheProgramQuietly) {
  std::vector<std::string> lines(199, Empty());
  lines.push_back(WaitTime(1));
  HubBench bench;
  bench.Download(lines);
  const auto messages = bench.Run(5);
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0], (Message{254, 12, 7, 0}));
  EXPECT_EQ(messages[1], (Message{237, 12, 7, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Ended);
}

TEST(RunFlow, AnEmptyProgramEndsAtOnce) {
  HubBench bench;
  bench.Download({});
  EXPECT_TRUE(bench.Run(5).empty());
  EXPECT_EQ(bench.hub.State(), HubState::Ended);
}

TEST(RunFlow, ABranchBeyondTheLastLineEndsTheProgram) {
  for (const int line : {200, 255}) {
    HubBench bench;
    bench.Download({GoTo(line), WaitTime(1)});
    EXPECT_EQ(HubBench::LineEvents(bench.Run(5)), "+0 -0");
    EXPECT_EQ(bench.hub.State(), HubState::Ended);
  }
}

TEST(RunFlow, WaitTimesAreHundredths) {
  HubBench bench;
  bench.Download({WaitTime(250)});
  EXPECT_NEAR(HubBench::TimeOf(bench.Run(5), 237, 0), 2.5, 1e-6);
}

struct GateCase {
  const char* what;
  std::string line;
};

/// When the second of two lines is over; the first is a move of 1.7 s that goes on beside it.
double EndBesideAMove(std::string line, int wait) {
  line[0] = static_cast<char>(line[0] | wait);
  HubBench bench;
  bench.Download({FeedLength({.distance = 100000, .wait = kProceed}), line, WaitTime(1)});
  return HubBench::TimeOf(bench.Run(10), 237, 1);
}

TEST(RunFlow, ABranchAndALoopWaitForAllMovesUnlessTheyProceed) {
  const GateCase cases[] = {
      {"go to", GoTo(2)},
      {"if input, taken", IfInput(0, 0, 0, 2)},
      {"if input, not taken", IfInput(0, 0, 1, 2)},
      {"if inputs, all of them", IfInputs(0, 0x01, 0x01, 2, 1)},
      {"if inputs, not all of them", IfInputs(0, 0x01, 0x01, 2, 0)},
      {"if inputs with the drive's own", IfInputs(0, 0, 0, 2, 3, 0x01, 0x01)},
      {"repeat", Repeat(0, 1)},
      {"end repeat", EndRepeat(0, 0)},
  };
  for (const GateCase& one : cases) {
    SCOPED_TRACE(one.what);
    EXPECT_GT(EndBesideAMove(one.line, 0), 1.6);
    EXPECT_GT(EndBesideAMove(one.line, kWaitThis), 1.6) << "bit 7 says nothing here";
    EXPECT_EQ(EndBesideAMove(one.line, kProceed), 0);
    EXPECT_EQ(EndBesideAMove(one.line, kProceed | kWaitThis), 0);
  }
}

TEST(RunFlow, NoOtherLineWaitsForMoves) {
  const GateCase cases[] = {
      {"wait time", WaitTime(10)},
      {"wait input", WaitInput(0, 0, 0)},
      {"wait inputs", WaitInputs(0, 0x01, 0x01, 1)},
      {"if moving", IfMoving(1, 2)},
      {"reset loop", ResetLoop(0, 0)},
      {"call", Call(2)},
      {"set output", SetOutput(0, 0, 1)},
      {"set position of another axis", SetPosition(1, 0, 5)},
      {"learn position", LearnPosition(0, 3)},
      {"motor current", MotorCurrent(1, 1, 0)},
      {"motor power", MotorPower(1, true)},
      {"start another axis", StartStop(3, 1)},
  };
  for (const GateCase& one : cases) {
    SCOPED_TRACE(one.what);
    for (const int wait : {0, kWaitThis, kProceed}) EXPECT_NEAR(EndBesideAMove(one.line, wait), 0.05, 0.051);
  }
}

TEST(RunFlow, ALoopRunsAsOftenAsItsRepeatSays) {
  HubBench bench;
  bench.Download({Repeat(0, 3), WaitTime(1), EndRepeat(0, 0), WaitTime(2)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0 -0 +1 -1 +2 -2 +1 -1 +2 -2 +1 -1 +2 -2 +3 -3");
}

TEST(RunFlow, LoopsNest) {
  HubBench bench;
  bench.Download({Repeat(0, 2), Repeat(1, 3), WaitTime(1), EndRepeat(1, 1), EndRepeat(0, 0)});
  const auto messages = bench.Run(5);
  int rounds = 0;
  for (const auto& message : messages) rounds += message.header == 237 && message.Line() == 2 ? 1 : 0;
  EXPECT_EQ(rounds, 6);
  EXPECT_EQ(bench.hub.State(), HubState::Ended);
}

TEST(RunFlow, ALoopThatWasLeftGoesOnCountingUntilItIsReset) {
  // Line 1 leaves the loop in its first round by the input, which then changes.
  const std::vector<std::string> kept{Repeat(0, 2), IfInput(0, 0, 0, 4), WaitTime(1), EndRepeat(0, 0),
                                      GoTo(0)};
  HubBench keeps;
  keeps.Download(kept);
  keeps.acknowledging = false;
  keeps.Run(0);
  keeps.Send("I");
  EXPECT_EQ(HubBench::LineEvents(keeps.Send("I")), "-1 +4");
  keeps.hub.SetInput(0, 0, false, keeps.now);
  keeps.acknowledging = true;
  keeps.Send("I");
  EXPECT_EQ(HubBench::LineEvents(keeps.Go(0.025)).substr(0, 5), "-2 +3");
}

TEST(RunFlow, ResetLoopLetsTheNextRepeatCountAnew) {
  HubBench bench;
  bench.Download({Repeat(0, 2), WaitTime(1), ResetLoop(0, 0), EndRepeat(0, 0), WaitTime(3)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0 -0 +1 -1 +2 -2 +3 -3 +4 -4")
      << "the end of a loop that is not counting is passed over";
}

TEST(RunFlow, ACallReturnsBehindItself) {
  HubBench bench;
  bench.Download({Call(3), WaitTime(1), GoTo(200), WaitTime(2), Return()});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0 -0 +3 -3 +4 -4 +1 -1 +2 -2");
}

TEST(RunFlow, TheSeventeenthCallOverflowsTheStack) {
  HubBench bench;
  bench.Download({Call(1), Call(0)});
  const auto messages = bench.Run(5);
  EXPECT_EQ(HubBench::Count(messages, 254), 17);
  EXPECT_EQ(messages.back(), (Message{239, 0, 0, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Halted);
}

TEST(RunFlow, AReturnWithoutACallUnderflowsTheStack) {
  std::vector<std::string> lines(150, Empty());
  lines[5] = GoTo(149);
  lines[149] = Return();
  HubBench bench;
  bench.Download(lines);
  EXPECT_EQ(bench.Run(5).back(), (Message{238, 127, 0, 0})) << "a payload byte ends at 127";
  HubBench early;
  early.Download({Empty(), Return()});
  EXPECT_EQ(early.Run(5).back(), (Message{238, 1, 0, 0}));
}

TEST(RunFlow, AGoToOntoItselfIsPacedByThePc) {
  HubBench bench;
  bench.acknowledging = false;
  bench.Download({GoTo(0)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(0)), "+0");
  for (int i = 0; i < 100; ++i) EXPECT_EQ(HubBench::LineEvents(bench.Send("I")), "-0 +0");
  EXPECT_FALSE(bench.hub.NextEvent().has_value());
}

TEST(RunFlow, PromptsArePassedOver) {
  HubBench bench;
  bench.Download({Display(0), Bytes({14, 5}) + Big2(0) + Bytes({0, 9}),
                  Bytes({26, 0, 0, 255, 9, 9, 9, 9, 9, 9, 9, 9, 0}), WaitTime(1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0 -0 +1 -1 +2 -2 +3 -3");
}

TEST(RunFlow, ALineForAnAxisThatNoHubHasIsPassedOver) {
  HubBench bench;
  bench.Download({FeedLength({.axis = 8}), WaitInput(255, 0, 1), IfMoving(200, 0), WaitTime(1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+3 -3");
}

TEST(RunFlow, ASecondStartBeginsAtTheFirstLine) {
  HubBench bench;
  bench.Download({WaitTime(10), Call(2), WaitTime(1000)});
  bench.Run(1);
  EXPECT_EQ(bench.hub.CallDepth(), 1);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("X")), "+0");
  EXPECT_EQ(bench.hub.CallDepth(), 0);
}

TEST(RunFlow, AfterStopNothingMoreIsTold) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 400000, .wait = kProceed}), WaitTime(100), WaitTime(100)});
  bench.Run(0.5);
  EXPECT_TRUE(bench.Send("S").empty());
  EXPECT_TRUE(bench.Go(20).empty());
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
  EXPECT_LT(bench.hub.Axis(0).position_steps, 40000) << "it came to rest on the way";
}

TEST(RunFlow, AMoveOfTheLastRunSaysNothingInTheNext) {
  HubBench bench;
  bench.Download({FeedSafety({.distance = 100, .accel = 1, .decel = 1}, 2, 1, 40000, 9), WaitTime(1)});
  bench.Run(1.9);
  ASSERT_TRUE(bench.hub.Axis(0).moving);
  bench.Send("S");
  bench.Download({WaitTime(1000)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(9)), "+0");
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

TEST(RunFlow, RewindGoesToTheFirstLineAndForgetsCallsAndLoops) {
  HubBench bench;
  bench.Download({WaitTime(10), Repeat(0, 5), Call(3), FeedLength({.distance = 400000, .wait = kProceed}),
                  WaitTime(1000)});
  bench.Run(1);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("0")), "-3 -4 +0");
  EXPECT_EQ(bench.hub.CallDepth(), 0);
  EXPECT_EQ(bench.hub.State(), HubState::Running);
}

TEST(RunFlow, RewindStartsAnEndedProgramAgain) {
  HubBench bench;
  bench.Download({WaitTime(10)});
  bench.Run(1);
  ASSERT_EQ(bench.hub.State(), HubState::Ended);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("0")), "+0");
}

TEST(RunFlow, RunCommandsWithoutARunDoNothing) {
  HubBench bench;
  bench.Download({WaitTime(10)});
  EXPECT_EQ(bench.Ask("PrT0IS"), "");
  bench.Wait(1);
  EXPECT_EQ(bench.hub.TakeOutput(), "");
}

TEST(RunFlow, KeysOfARunWithTheTerminalAreNoQuestions) {
  HubBench bench;
  bench.Download({WaitTime(1000)}, SystemOf(1, {1}));
  bench.Send("M");
  EXPECT_TRUE(bench.hub.TerminalRun());
  EXPECT_TRUE(bench.Send("ABCD123456789.+-\r\b").empty());
  EXPECT_EQ(HubBench::LineEvents(bench.Send("0")), "-0 +0");
  bench.Send("S");
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
}

TEST(RunFlow, ARunWithoutTheTerminalStillAnswersQuestions) {
  HubBench bench;
  bench.Download({WaitTime(1000)});
  bench.Run(0.1);
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
  EXPECT_EQ(bench.Ask("D").size(), 16U);
}

}  // namespace
}  // namespace tavlo::hubsim
