// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

/// The usual feed: 20000 steps of 20000 a revolution at 3 rev/s and 100 rev/s/s.
constexpr double kRevolution = 1 / 3.0 + 0.03;

TEST(RunMotion, AFeedTakesTheTimeOfItsTrapezoid) {
  HubBench bench;
  bench.Download({FeedLength({})});
  const auto messages = bench.Run(1);
  EXPECT_EQ(HubBench::LineEvents(messages), "+0 -0");
  EXPECT_NEAR(HubBench::TimeOf(messages, 237, 0), kRevolution, 1e-6);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 20000);
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

TEST(RunMotion, SpeedupDividesTheTimeOfAMove) {
  HubOptions options;
  options.speedup = 10;
  HubBench bench(options);
  bench.Download({FeedLength({})});
  EXPECT_NEAR(HubBench::TimeOf(bench.Run(1), 237, 0), kRevolution / 10, 1e-6);
}

TEST(RunMotion, DirectionAndAxisAreTheLines) {
  HubBench bench;
  bench.Download({FeedLength({.axis = 3, .distance = 500, .flags = 1})});
  bench.Run(1);
  EXPECT_EQ(bench.hub.Axis(3).position_steps, -500);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 0);
}

TEST(RunMotion, TheAxisMovesWhileTheLineRuns) {
  HubBench bench;
  bench.Download({FeedLength({})});
  bench.Run(kRevolution / 2);
  EXPECT_TRUE(bench.hub.Axis(0).moving);
  EXPECT_NEAR(bench.hub.Axis(0).position_steps, 10000, 1);
  EXPECT_NEAR(bench.hub.Axis(0).speed_steps_s, 60000, 1e-6);
  EXPECT_EQ(bench.hub.RunningLine(), 0);
}

TEST(RunMotion, TheCourseOfAnAxisBendsWhereItsAccelerationChanges) {
  HubBench bench;
  bench.Download({FeedLength({})});
  const double start = bench.now;
  bench.Run(0);
  const auto course = bench.hub.Course(0, *bench.hub.NextEvent());
  const std::vector<std::pair<double, double>> expected = {
      {0, 0}, {0.03, 60000}, {kRevolution - 0.03, 60000}, {kRevolution, 0}};
  ASSERT_EQ(course.size(), expected.size());
  for (std::size_t i = 0; i < course.size(); ++i) {
    EXPECT_NEAR(course[i].time - start, expected[i].first, 1e-6) << i;
    EXPECT_NEAR(course[i].steps_s, expected[i].second, 1e-3) << i;
  }
  for (const SpeedPoint& point : bench.hub.Course(1, start + 1)) EXPECT_EQ(point.steps_s, 0);
  EXPECT_TRUE(bench.hub.Course(8, start + 1).empty());
}

TEST(RunMotion, AnAxisSeeksUntilItsSensorIsSeen) {
  HubBench bench;
  bench.Download({FeedSensor({.distance = 20000}, 2, 1)});
  bench.Run(1);
  EXPECT_EQ(bench.hub.Axis(0).seeking, 0) << "the line";
  bench.hub.SetInput(0, 2, false, bench.now);
  EXPECT_EQ(bench.hub.Axis(0).seeking, std::nullopt);
  EXPECT_TRUE(bench.hub.Axis(0).moving);
}

TEST(RunMotion, AFeedToAPositionGoesThereFromWhereverItIs) {
  HubBench bench;
  bench.Download({SetPosition(0, 0, 700), FeedPosition({.distance = 500}),
                  FeedPosition({.distance = 300, .flags = 1}), FeedPosition({.distance = 300, .flags = 1})});
  const auto messages = bench.Run(5);
  EXPECT_EQ(HubBench::LineEvents(messages), "+0 -0 +1 -1 +2 -2 +3 -3");
  EXPECT_EQ(bench.hub.Axis(0).position_steps, -300);
}

TEST(RunMotion, AFeedAndReturnComesBackAfterItsRest) {
  HubBench bench;
  bench.Download({FeedReturn({}, 60, 50)});
  const auto messages = bench.Run(5);
  const double back = 1 / 1.5 + 0.015;
  EXPECT_NEAR(HubBench::TimeOf(messages, 237, 0), kRevolution + 0.5 + back, 1e-6);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 0);
}

TEST(RunMotion, ASecondSpeedSlowsTheMoveDown) {
  HubBench bench;
  bench.Download({FeedChange({.distance = 100000, .speed = 40, .accel = 10, .decel = 10}, 50000, 20)});
  EXPECT_NEAR(HubBench::TimeOf(bench.Run(20), 237, 0), 7.55, 1e-6);
}

TEST(RunMotion, AMoveThatGoesOnBesideTheProgramIsToldAsConcurrent) {
  HubBench bench;
  bench.Download({FeedLength({.wait = kProceed}), WaitTime(10)});
  const auto messages = bench.Run(1);
  EXPECT_EQ(HubBench::LineEvents(messages), "+0 ~0 +1 -1 -0");
  EXPECT_NEAR(HubBench::TimeOf(messages, 237, 0), kRevolution, 1e-6);
}

TEST(RunMotion, TheNextLineWaitsForTheAcknowledgementOfAConcurrentLine) {
  HubBench bench;
  bench.acknowledging = false;
  bench.Download({FeedLength({.wait = kProceed}), WaitTime(10)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0");
  EXPECT_EQ(HubBench::LineEvents(bench.Send("I")), "~0");
  EXPECT_EQ(HubBench::LineEvents(bench.Go(1)), "-0");
  EXPECT_EQ(HubBench::LineEvents(bench.Send("I")), "+1");
}

TEST(RunMotion, AMoveThatWaitsForAllMovesEndsWithTheLastOne) {
  HubBench bench;
  bench.Download({FeedLength({.wait = kProceed}), FeedLength({.axis = 1, .distance = 10})});
  const auto messages = bench.Run(1);
  EXPECT_NEAR(HubBench::TimeOf(messages, 237, 1), kRevolution, 1e-6);
}

TEST(RunMotion, AMoveThatWaitsForItselfDoesNotWaitForOthers) {
  HubBench bench;
  bench.Download(
      {FeedLength({.wait = kProceed}), FeedLength({.axis = 1, .distance = 10, .wait = kWaitThis})});
  const auto messages = bench.Run(1);
  EXPECT_LT(HubBench::TimeOf(messages, 237, 1), 0.1);
}

TEST(RunMotion, WithBothWaitBitsAMoveGoesOnAtOnce) {
  HubBench bench;
  bench.Download({FeedLength({.wait = kProceed | kWaitThis}), WaitTime(1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(1)), "+0 ~0 +1 -1 -0");
}

TEST(RunMotion, ASecondMoveOfAnAxisWaitsForTheFirst) {
  HubBench bench;
  bench.Download({FeedLength({.wait = kProceed}), FeedLength({.wait = kWaitThis})});
  const auto messages = bench.Run(2);
  EXPECT_NEAR(HubBench::TimeOf(messages, 237, 1), 2 * kRevolution, 1e-6);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 40000);
}

TEST(RunMotion, AFeedToASensorGoesItsDistanceBehindTheSensor) {
  HubBench bench;
  bench.Download({FeedSensor({.distance = 30000}, 2, 1)});
  bench.Run(1);
  const double seen = bench.hub.Axis(0).position_steps;
  bench.hub.SetInput(0, 2, false, bench.now);
  const auto messages = bench.Go(5);
  EXPECT_EQ(HubBench::LineEvents(messages), "-0");
  EXPECT_NEAR(bench.hub.Axis(0).position_steps, seen + 30000, 1);
}

TEST(RunMotion, AMoveCannotStopBehindASensorFasterThanItBrakes) {
  HubBench bench;
  bench.Download({FeedSensor({.distance = 1}, 2, 1)});
  bench.Run(1);
  const double seen = bench.hub.Axis(0).position_steps;
  bench.hub.SetInput(0, 2, false, bench.now);
  bench.Go(5);
  EXPECT_NEAR(bench.hub.Axis(0).position_steps, seen + 60000.0 * 60000 / 2 / 2000000, 1);
}

TEST(RunMotion, ASensorThatHoldsAlreadyIsSeenAtOnce) {
  HubBench bench;
  bench.Download({FeedSensor({.distance = 20000}, 2, 0)});
  EXPECT_NEAR(HubBench::TimeOf(bench.Run(2), 237, 0), kRevolution, 1e-6);
}

TEST(RunMotion, AnEdgeCountsOnlyFromTheMovesStart) {
  HubBench bench;
  bench.Download({WaitTime(50), FeedSensor({.distance = 20000}, 2, 3)});
  bench.Run(0.1);
  bench.hub.SetInput(0, 2, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(3)), "-0 +1");
  bench.hub.SetInput(0, 2, true, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(1)), "");
  bench.hub.SetInput(0, 2, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(1)), "-1");
}

TEST(RunMotion, TheEncoderIndexAndTheXInputsAreSensorsToo) {
  for (const auto& [number, input] :
       {std::pair(255, 8), std::pair(128, 8), std::pair(129, 9), std::pair(135, 15)}) {
    HubBench bench;
    bench.Download({FeedSensor({.distance = 20000}, number, 1)});
    bench.Run(1);
    bench.hub.SetInput(0, input, false, bench.now);
    EXPECT_EQ(HubBench::LineEvents(bench.Go(1)), "-0") << number;
  }
}

TEST(RunMotion, AnInputThatNoDriveHasReadsHigh) {
  HubBench bench;
  bench.Download({FeedSensor({.distance = 20000}, 77, 0), FeedSensor({.distance = 20000}, 77, 1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(100)), "+0 -0 +1");
}

TEST(RunMotion, AFeedToASensorAndReturnComesBackToItsStart) {
  HubBench bench;
  bench.Download({SetPosition(0, 0, 123), FeedSensorReturn({.distance = 30000}, 2, 1, 120, 50)});
  bench.Run(1);
  bench.hub.SetInput(0, 2, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(10)), "-1");
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 123);
}

TEST(RunMotion, TheSafetyDistanceStopsTheMoveAndBranches) {
  HubBench bench;
  bench.Download({FeedSafety({.distance = 100}, 2, 1, 40000, 3), WaitTime(1), WaitTime(1), WaitTime(2)});
  const auto messages = bench.Run(5);
  EXPECT_EQ(HubBench::LineEvents(messages), "+0 -0 +3 -3");
  EXPECT_NEAR(bench.hub.Axis(0).position_steps, 40000 + 900, 1);
}

TEST(RunMotion, ASensorSeenInTimeTakesNoBranch) {
  HubBench bench;
  bench.Download({FeedSafety({.distance = 30000}, 2, 1, 400000, 3), WaitTime(1)});
  bench.Run(1);
  bench.hub.SetInput(0, 2, false, bench.now);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(5)), "-0 +1 -1");
}

TEST(RunMotion, TheBranchOfAConcurrentSafetyMoveIsTakenBehindTheLineThatRuns) {
  HubBench bench;
  bench.Download({FeedSafety({.distance = 100, .wait = kProceed}, 2, 1, 4000, 4), WaitTime(100), WaitTime(1),
                  WaitTime(1), WaitTime(2)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(5)), "+0 ~0 +1 -0 -1 +4 -4");
}

TEST(RunMotion, SeekHomeComesBackToTheSensorAndCallsItZero) {
  HubBench bench;
  bench.Download({SetPosition(0, 0, 5000), SeekHome(0, 1, 2, 1), FeedPosition({.distance = 100})});
  bench.Run(1);
  EXPECT_LT(bench.hub.Axis(0).position_steps, 0);
  bench.hub.SetInput(0, 2, false, bench.now);
  const auto messages = bench.Go(0.25);
  EXPECT_EQ(HubBench::LineEvents(messages).substr(0, 5), "-1 +2");
  bench.Go(1);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 100);
}

TEST(RunMotion, AnAxisThatWasStartedTurnsUntilItIsStopped) {
  HubBench bench;
  bench.Download({StartStop(3, 1), WaitTime(200), StartStop(2, 1)});
  const auto messages = bench.Run(1.5);
  EXPECT_EQ(HubBench::LineEvents(messages), "+0 -0 +1");
  EXPECT_NEAR(bench.hub.Axis(1).speed_steps_s, 60000, 1e-6);
  EXPECT_EQ(HubBench::LineEvents(bench.Go(2)), "-1 +2 -2");
  EXPECT_FALSE(bench.hub.Axis(1).moving);
}

TEST(RunMotion, AStartedAxisChangesItsSpeed) {
  HubBench bench;
  bench.Download({StartStop(3, 1, 1), WaitTime(100), StartStop(1, 1, 0, 40), WaitTime(100)});
  bench.Run(1.5);
  EXPECT_NEAR(bench.hub.Axis(1).speed_steps_s, -20000, 1e-6);
}

TEST(RunMotion, NobodyWaitsForAnAxisThatTurnsWithNoEnd) {
  HubBench bench;
  bench.Download({StartStop(3, 1), FeedLength({}), GoTo(4)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(2)), "+0 -0 +1 -1 +2 -2");
}

TEST(RunMotion, AMoveTakesAStartedAxisOverFromRest) {
  HubBench bench;
  bench.Download({StartStop(3, 0), WaitTime(50), FeedLength({.distance = 100})});
  const auto messages = bench.Run(2);
  EXPECT_EQ(HubBench::LineEvents(messages), "+0 -0 +1 -1 +2 -2");
  EXPECT_FALSE(bench.hub.Axis(0).moving);
}

TEST(RunMotion, AStartTheOtherWayStopsFirst) {
  HubBench bench;
  bench.Download({StartStop(3, 0), WaitTime(50), StartStop(3, 0, 1), WaitTime(100)});
  bench.Run(1.2);
  EXPECT_NEAR(bench.hub.Axis(0).speed_steps_s, -60000, 1e-6);
}

TEST(RunMotion, StopAllMotionStopsMovesThatGoOnBesideTheProgram) {
  HubBench bench;
  bench.Download({StartStop(3, 1), FeedLength({.distance = 4000000, .wait = kProceed}), WaitTime(50),
                  StartStop(0, 0), WaitTime(1)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(2)), "+0 -0 +1 ~1 +2 -2 +3 -1 -3 +4 -4");
  EXPECT_FALSE(bench.hub.Axis(0).moving);
  EXPECT_FALSE(bench.hub.Axis(1).moving);
}

TEST(RunMotion, IfMovingBranchesWhileTheAxisMoves) {
  HubBench bench;
  bench.Download({FeedLength({.wait = kProceed}), WaitTime(10), IfMoving(0, 1), IfMoving(1, 0), WaitTime(1)});
  const auto messages = bench.Run(2);
  EXPECT_EQ(HubBench::LineEvents(messages),
            "+0 ~0 +1 -1 +2 -2 +1 -1 +2 -2 +1 -1 +2 -2 +1 -0 -1 +2 -2 +3 -3 +4 -4");
}

TEST(RunMotion, ALearnedPositionIsReadBackByAMove) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 777, .flags = 1}), LearnPosition(0, 15),
                  FeedLength({.distance = 5000}), FeedPosition({.distance = 15 * 65536, .flags = 2})});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(5)), "+0 -0 +1 -1 +2 -2 +3 -3");
  EXPECT_EQ(bench.hub.Variable(15), -777);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, -777);
}

TEST(RunMotion, AVariableThatDoesNotExistIsZeroAndTakesNothing) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 777}), LearnPosition(0, 200),
                  FeedLength({.distance = 200 * 65536, .flags = 2})});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(5)), "+0 -0 +1 -1 +2 -2");
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 777);
}

TEST(RunMotion, AMoveOnADisabledMotorHaltsTheProgram) {
  HubBench bench;
  bench.Download({MotorPower(2, false), FeedLength({.axis = 2})});
  const auto messages = bench.Run(1);
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ(messages.back(), (Message{212, 2, 0, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Halted);
}

TEST(RunMotion, ANewCurrentOrTheNormalOneLetsAMotorMoveAgain) {
  HubBench bench;
  bench.Download({MotorPower(0, false), MotorCurrent(0, 1, 29), FeedLength({}), MotorPower(0, false),
                  MotorPower(0, true), FeedLength({}), MotorCurrent(0, 2, 5)});
  bench.Run(5);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 40000);
  EXPECT_NEAR(bench.hub.Axis(0).amps, 2.05, 1e-9);
}

TEST(RunMotion, AMoveWithoutADriveHaltsTheProgram) {
  HubOptions options;
  options.drives = {{1, 0, 1, 1, 1, 1, 1, 1}};
  HubBench bench(options);
  bench.Download({FeedLength({.axis = 1})});
  const auto messages = bench.Run(1);
  EXPECT_EQ(messages.back(), (Message{240, 1, 0, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Halted);
}

TEST(RunMotion, TheStepsOfARevolutionAreFoundFromTheAxisBlock) {
  struct Case {
    int model;
    int free_steps;
    int per_unit;
    int factor;
    double steps_per_rev;
  };
  const Case cases[] = {{1, 8000, 20000, 40, 20000}, {1, 8000, 20000, 62, 12800}, {1, 8000, 20000, 16, 50000},
                        {11, 4000, 1000, 10, 4000},  {8, 8000, 8000, 16, 20000},  {3, 8000, 20000, 4000, 200},
                        {1, 8000, 100, 0, 20000},    {1, 8000, 20000, 31, 25600}};
  for (const auto& one : cases) {
    std::string block = AxisBlockOf(one.model);
    block.replace(5, 2, Big2(one.free_steps));
    block.replace(8, 3, Big3(one.per_unit));
    block.replace(24, 3, Big3(one.factor));
    HubBench bench;
    bench.Download({StartStop(3, 0)}, block + SystemOf(1).substr(32));
    bench.Run(3);
    EXPECT_EQ(bench.hub.Axis(0).steps_per_rev, one.steps_per_rev) << one.model << ' ' << one.factor;
    EXPECT_NEAR(bench.hub.Axis(0).speed_steps_s, 3 * one.steps_per_rev, 1e-6);
  }
}

}  // namespace
}  // namespace tavlo::hubsim
