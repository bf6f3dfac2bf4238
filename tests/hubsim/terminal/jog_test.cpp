// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"
#include "hubsim/wire_prompts.h"

namespace tavlo::hubsim {
namespace {

/// Left and right turn axis 0, up and down axis 1, unless told.
struct JogBench : HubBench {
  explicit JogBench(const std::string& prompt = WaitEnter(0, 1), const std::vector<std::string>& first = {},
                    const HubOptions& options = {}, const std::vector<int>& settings = {1})
      : HubBench(options) {
    std::vector<std::string> lines = first;
    lines.push_back(prompt);
    lines.push_back(WaitTime(60000));
    Download(lines, SystemOf(1, settings), PoolOf("Jog"));
    RunWithTerminal(0.1);
  }
  [[nodiscard]] double Speed(int axis) const { return hub.Axis(axis).speed_steps_s; }
};

struct ArrowCase {
  char key;
  int axis;
  int direction;
};

TEST(Jog, AnArrowTurnsItsAxisForAMoment) {
  for (const ArrowCase& one :
       {ArrowCase{'A', 1, 1}, ArrowCase{'B', 1, -1}, ArrowCase{'C', 0, -1}, ArrowCase{'D', 0, 1}}) {
    SCOPED_TRACE(one.key);
    JogBench bench;
    bench.Send(std::string(1, one.key));
    bench.Go(0.2);
    EXPECT_NEAR(bench.Speed(one.axis), one.direction * 20000.0, 1);
    EXPECT_EQ(bench.Speed(1 - one.axis), 0);
    bench.Go(0.15);
    EXPECT_FALSE(bench.hub.Axis(one.axis).moving) << "nobody pressed again";
    EXPECT_EQ(bench.hub.Waits(), WaitsFor::Enter);
  }
}

TEST(Jog, AKeyThatRepeatsKeepsTheAxisTurning) {
  JogBench bench;
  for (int press = 0; press < 20; ++press) {
    bench.Send("D");
    bench.Go(0.2);
    EXPECT_NEAR(bench.Speed(0), 20000, 1);
  }
  bench.Go(0.2);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

TEST(Jog, TheOtherArrowBringsTheAxisToRestAndTurnsItBack) {
  JogBench bench;
  bench.Send("D");
  bench.Go(0.1);
  bench.Send("C");
  bench.Go(0.1);
  EXPECT_NEAR(bench.Speed(0), -20000, 1);
}

TEST(Jog, BothPairsOfArrowsMayTurnTheSameAxis) {
  JogBench bench(WaitEnter(0, 0));
  bench.Send("D");
  bench.Go(0.1);
  bench.Send("B");
  bench.Go(0.1);
  EXPECT_NEAR(bench.Speed(0), -20000, 1);
  bench.Send("D");
  bench.Go(0.1);
  EXPECT_NEAR(bench.Speed(0), 20000, 1);
  bench.Go(1);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

TEST(Jog, AnAxisThatIsNotAllowedStands) {
  for (const int axis : {kNotJogged, kNotJogged + 3, 9, 127}) {
    SCOPED_TRACE(axis);
    JogBench bench(WaitEnter(axis, 1));
    bench.Send("CD");
    bench.Go(0.1);
    for (int one = 0; one < kAxisCount; ++one) EXPECT_FALSE(bench.hub.Axis(one).moving);
  }
}

TEST(Jog, EnterEndsTheLineWhenTheAxesStand) {
  JogBench bench;
  bench.Send("AD");
  bench.Go(0.2);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("\r")), "") << "the axes still brake";
  EXPECT_EQ(HubBench::LineEvents(bench.Send("D")), "");
  EXPECT_EQ(HubBench::LineEvents(bench.Go(0.1)), "-0 +1");
  EXPECT_FALSE(bench.hub.Axis(0).moving);
  EXPECT_FALSE(bench.hub.Axis(1).moving);
}

TEST(Jog, WithoutMotionEnterEndsTheLineAtOnce) {
  JogBench bench;
  EXPECT_EQ(HubBench::LineEvents(bench.Send("123+-.\b")), "");
  EXPECT_EQ(HubBench::LineEvents(bench.Send("\r")), "-0 +1");
}

TEST(Jog, AMotorThatIsOffHaltsAsAMoveDoes) {
  JogBench bench(WaitEnter(0, 1), {MotorPower(0, false)});
  const auto messages = bench.Send("D");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0], (Message{212, 0, 0, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Halted);
}

TEST(Jog, AnEmptySocketHaltsAsAMoveDoes) {
  HubOptions options;
  options.drives = {{1, 0, 1, 1, 1, 1, 1, 1}};
  JogBench bench(WaitEnter(0, 1), {}, options);
  const auto messages = bench.Send("A");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0], (Message{240, 1, 0, 0}));
}

TEST(Jog, AnAxisUnderWayForTheProgramIsLeftAlone) {
  JogBench bench(WaitEnter(0, 1), {StartStop(3, 0)});
  bench.Go(1);
  bench.Send("C");
  bench.Go(0.2);
  EXPECT_NEAR(bench.Speed(0), 60000, 1);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("\r")), "-1 +2");
  EXPECT_NEAR(bench.Speed(0), 60000, 1);
}

TEST(Jog, ALimitThatContinuesStopsTheAxisUntilTheKeyIsReleased) {
  JogBench bench(WaitEnter(0, 1), {}, {}, {1, 0, 0, 2});
  bench.Send("D");
  bench.Go(0.1);
  EXPECT_TRUE(bench.hub.HitLimit(0, bench.now));
  for (int press = 0; press < 5; ++press) {
    bench.Send("D");
    bench.Go(0.2);
    EXPECT_FALSE(bench.hub.Axis(0).moving);
  }
  bench.Send("C");
  bench.Go(0.1);
  EXPECT_NEAR(bench.Speed(0), -20000, 1) << "back from the switch";
}

TEST(Jog, ALimitHaltsAJog) {
  JogBench bench;
  bench.Send("D");
  EXPECT_TRUE(bench.hub.HitLimit(0, bench.now));
  EXPECT_EQ(HubBench::Count(bench.Go(1), 252), 1);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

TEST(Jog, ALimitBranchBringsTheJoggedAxesToRest) {
  JogBench bench(WaitEnter(0, 1), {}, {}, {1, 0, 0, 1, 1});
  bench.Send("AD");
  bench.Go(0.1);
  EXPECT_TRUE(bench.hub.HitLimit(0, bench.now));
  bench.Go(1);
  EXPECT_EQ(bench.hub.RunningLine(), 1);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
  EXPECT_FALSE(bench.hub.Axis(1).moving);
}

TEST(Jog, StopBringsTheJoggedAxisToRest) {
  JogBench bench;
  bench.Send("D");
  bench.Go(0.1);
  bench.Send("S");
  bench.Go(1);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

std::string WaitInputWithJog(int axis, int input, int condition) {
  return Bytes({5, input, condition, 1}) + Big2(40) + Big2(100) + Bytes({axis});
}

struct JogInputCase {
  int model;
  int clockwise;
  int counter_clockwise;
};

TEST(Jog, TheJogInputsOfTheDriveTurnTheAxisOfAWait) {
  for (const JogInputCase& one :
       {JogInputCase{1, 4, 5}, JogInputCase{11, 4, 5}, JogInputCase{30, 4, 5}, JogInputCase{10, 0, 1},
        JogInputCase{28, 0, 1}, JogInputCase{20, 9, 10}, JogInputCase{29, 9, 10}}) {
    SCOPED_TRACE(one.model);
    HubBench bench;
    bench.Download({WaitInputWithJog(2, 7, 1), WaitTime(1000)}, SystemOf(one.model));
    bench.Run(0.1);
    bench.hub.SetInput(2, one.clockwise, false, bench.now);
    bench.Go(0.2);
    EXPECT_GT(bench.hub.Axis(2).speed_steps_s, 0);
    bench.hub.SetInput(2, one.counter_clockwise, false, bench.now);
    bench.Go(0.2);
    EXPECT_EQ(bench.hub.Axis(2).speed_steps_s, 0) << "both are on";
    bench.hub.SetInput(2, one.clockwise, true, bench.now);
    bench.Go(0.2);
    EXPECT_LT(bench.hub.Axis(2).speed_steps_s, 0);
    bench.hub.SetInput(2, 7, false, bench.now);
    EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "") << "the axis brakes first";
    EXPECT_EQ(HubBench::LineEvents(bench.Go(0.2)), "-0 +1");
    EXPECT_FALSE(bench.hub.Axis(2).moving);
  }
}

TEST(Jog, AWaitWithoutItsFlagDoesNotJog) {
  HubBench bench;
  bench.Download({WaitInput(2, 7, 1)});
  bench.Run(0.1);
  bench.hub.SetInput(2, 4, false, bench.now);
  bench.Go(0.2);
  EXPECT_FALSE(bench.hub.Axis(2).moving);
}

std::string Knob(int axis, int input, int condition, int steps) {
  return Bytes({18, input, condition, steps, axis});
}

TEST(Knob, TheAxisFollowsItsHandWheelUntilTheInput) {
  HubBench bench;
  bench.Download({Knob(1, 0, 1, 10), WaitTime(1000)});
  bench.Run(0.1);
  EXPECT_TRUE(bench.hub.TurnKnob(1, 50, bench.now));
  EXPECT_FALSE(bench.hub.TurnKnob(0, 50, bench.now)) << "another axis's wheel";
  bench.Go(1);
  EXPECT_EQ(bench.hub.Axis(1).position_steps, 500);
  EXPECT_TRUE(bench.hub.TurnKnob(1, -80, bench.now));
  EXPECT_TRUE(bench.hub.TurnKnob(1, 10, bench.now)) << "while the axis is under way";
  bench.Go(1);
  EXPECT_EQ(bench.hub.Axis(1).position_steps, -200);
  bench.hub.SetInput(1, 0, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "-0 +1");
  EXPECT_FALSE(bench.hub.TurnKnob(1, 1, bench.now));
}

TEST(Knob, TheInputBrakesAnAxisThatStillRunsBehindTheWheel) {
  HubBench bench;
  bench.Download({Knob(0, 0, 1, 100), WaitTime(1000)});
  bench.Run(0.1);
  EXPECT_TRUE(bench.hub.TurnKnob(0, 10000, bench.now));
  bench.Go(1);
  bench.hub.SetInput(0, 0, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Collect()), "");
  EXPECT_EQ(HubBench::LineEvents(bench.Go(0.5)), "-0 +1");
  EXPECT_LT(bench.hub.Axis(0).position_steps, 200000);
}

TEST(Knob, AMotorThatIsOffHalts) {
  HubBench bench;
  bench.Download({MotorPower(0, false), Knob(0, 0, 1, 1)});
  bench.Run(0.1);
  bench.hub.TurnKnob(0, 1, bench.now);
  EXPECT_EQ(HubBench::Count(bench.Collect(), 212), 1);
}

struct KnobText {
  const char* what;
  std::string head;
  std::string pool;
  Rows rows;
};

TEST(Knob, TheFormWithATextShowsItAndEndsAtEnter) {
  for (const KnobText& one : {KnobText{"ten at most", "0123456789\xFF", "", {"0123456789"}},
                              KnobText{"a longer one", "01234567890", "12345", {"0123456789012345"}},
                              KnobText{"eleven", "01234567890", "", {"01234567890"}}}) {
    SCOPED_TRACE(one.what);
    HubBench bench;
    bench.Download({Bytes({82, 0, 0, 10, 0}) + one.head, WaitTime(1000)}, TerminalSystem(), PoolOf(one.pool));
    bench.RunWithTerminal(0.1);
    EXPECT_EQ(bench.hub.Display(), one.rows);
    EXPECT_EQ(bench.hub.Waits(), WaitsFor::Enter);
    EXPECT_TRUE(bench.hub.TurnKnob(3, 5, bench.now));
    bench.Go(1);
    EXPECT_EQ(bench.hub.Axis(3).position_steps, 50);
    EXPECT_EQ(HubBench::LineEvents(bench.Send("\r")), "-0 +1");
  }
}

TEST(Knob, AWheelOutOfRangeIsRefused) {
  HubBench bench;
  bench.Download({Knob(0, 0, 1, 1)});
  bench.Run(0.1);
  EXPECT_FALSE(bench.hub.TurnKnob(8, 1, bench.now));
  EXPECT_FALSE(bench.hub.TurnKnob(-1, 1, bench.now));
  EXPECT_FALSE(bench.hub.TurnKnob(0, kMostKnobCounts + 1, bench.now));
  EXPECT_TRUE(bench.hub.TurnKnob(0, -kMostKnobCounts, bench.now));
}

}  // namespace
}  // namespace tavlo::hubsim
