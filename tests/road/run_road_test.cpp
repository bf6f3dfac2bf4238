// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <algorithm>

#include "link/download.h"
#include "link/execution.h"
#include "support/sim_desk.h"

namespace tavlo::testing {
namespace {

/// A session whose program stands in the simulated hub.
class RunRoad : public ::testing::Test {
 protected:
  void DownloadNow() {
    ASSERT_EQ(Download(desk.road), DownloadResult::Done);
    desk.view.rows.clear();
    desk.sim.sent.clear();
  }

  /// Presses Execute; the run window starts the program and `during` plays its part.
  ExecuteResult RunWith(const std::function<void()>& during) {
    desk.run.on_show = [this, during](RunWindow window) {
      StartRun(desk.road, window);
      during();
    };
    return Execute(desk.road);
  }

  RowState State(int line) { return desk.source.shown.rows[line].state; }

  SimDesk desk;
};

TEST_F(RunRoad, EachLineLightsUpWhileItExecutesAndGoesBackWhenItIsFinished) {
  desk.Line(0).Type = WT;
  desk.Line(0).Time = 100;
  desk.Line(1).Type = WT;
  desk.Line(1).Time = 100;
  DownloadNow();
  EXPECT_EQ(RunWith([&] {
              desk.sim.RunEventLoop(0.5);
              EXPECT_EQ(State(0), RowState::Executing);
              EXPECT_EQ(State(1), RowState::Normal);
              desk.sim.RunEventLoop(1);
              EXPECT_EQ(State(0), RowState::Normal);
              EXPECT_EQ(State(1), RowState::Executing);
              desk.sim.RunEventLoop(1);
              EXPECT_EQ(State(1), RowState::Normal);
              StopRun(desk.road, RunWindow::ExecStatus);
            }),
            ExecuteResult::Ran);
  EXPECT_EQ(desk.run.shown, std::vector<RunWindow>{RunWindow::ExecStatus});
  EXPECT_EQ(std::ranges::count(desk.sim.sent, 'I'), 2);
  EXPECT_EQ(std::ranges::count(desk.sim.sent, 'X'), 1);
}

TEST_F(RunRoad, AMoveThatGoesOnInTheBackgroundIsPaleRedUntilItEnds) {
  desk.Line(0).Type = FL;
  desk.Line(0).Dist = 200000;
  desk.Line(0).Proceed = true;
  desk.Line(1).Type = WT;
  desk.Line(1).Time = 20;
  DownloadNow();
  RunWith([&] {
    desk.sim.RunEventLoop(0.1);
    EXPECT_EQ(State(0), RowState::WentOn);
    EXPECT_EQ(State(1), RowState::Executing);
    desk.sim.RunEventLoop(60);
    EXPECT_EQ(State(0), RowState::Normal);
  });
}

TEST_F(RunRoad, ARepeatRunsItsLinesSoManyTimes) {
  desk.Line(0).Type = RP;
  desk.Line(0).Count = 7;
  desk.Line(1).Type = SO;
  desk.Line(2).Type = ER;
  DownloadNow();
  desk.view.scrolls.clear();
  RunWith([&] { desk.sim.RunEventLoop(2); });
  // A row that lights up is brought into view.
  EXPECT_EQ(std::ranges::count(desk.view.scrolls, 1), 7);
  EXPECT_EQ(desk.sim.hub.State(), hubsim::HubState::Ended);
}

TEST_F(RunRoad, AProgramWithPromptsOpensTheEmulator) {
  desk.Line(0).Type = MMI;
  desk.Line(0).Text = "Hello";
  DownloadNow();
  RunWith([&] { EXPECT_TRUE(desk.source.display.MMIActive); });
  EXPECT_EQ(desk.run.shown, std::vector<RunWindow>{RunWindow::fakeMMI});
}

TEST_F(RunRoad, ALimitHitHaltsTheRunAndYesResetsTheHubWithTenR) {
  desk.Line(0).Type = FL;
  desk.Line(0).Dist = 2000000;
  DownloadNow();
  desk.boxes.setNextAnswer(Answer::Yes);
  RunWith([&] {
    desk.sim.RunEventLoop(0.5);
    EXPECT_TRUE(desk.sim.hub.HitLimit(0, desk.clock.now));
    desk.sim.RunEventLoop(0.1);
  });
  ASSERT_EQ(desk.boxes.shown.size(), 1u);
  EXPECT_EQ(desk.boxes.shown[0].title, "LIMIT");
  EXPECT_TRUE(desk.source.run.Halted);
  EXPECT_EQ(desk.run.hides, 1);
  EXPECT_NE(desk.sim.sent.find("RRRRRRRRRR"), std::string::npos);
  EXPECT_EQ(State(0), RowState::Normal);
}

TEST_F(RunRoad, TheStopButtonOfADriveAndAFaultEndTheRun) {
  desk.Line(0).Type = FL;
  desk.Line(0).Dist = 2000000;
  DownloadNow();
  desk.boxes.setNextAnswer(Answer::No);
  RunWith([&] {
    desk.sim.RunEventLoop(0.5);
    EXPECT_TRUE(desk.sim.hub.PressStop(desk.clock.now));
    desk.sim.RunEventLoop(0.1);
  });
  EXPECT_EQ(desk.boxes.shown.back().title, "STOP");
  RunWith([&] {
    desk.sim.RunEventLoop(0.5);
    desk.sim.hub.Fail(2, 1 << 5, desk.clock.now);
    desk.sim.RunEventLoop(0.1);
  });
  ASSERT_EQ(desk.run.faults.size(), 1u);
  EXPECT_EQ(desk.run.faults[0].code, 1 << 5);
  EXPECT_EQ(desk.run.faults[0].FaultMessage,
            "We are experiencing a servo fault on axis 3. The program has been halted.");
}

TEST_F(RunRoad, ACallWithoutAReturnAndAReturnWithoutACallAreTold) {
  // Each has its partner somewhere, so that no check stops it; the run never gets there.
  desk.Line(0).Type = CL;
  desk.Line(0).LineNum = 0;
  desk.Line(9).Type = RT;
  DownloadNow();
  desk.boxes.setNextAnswer(Answer::No);
  RunWith([&] { desk.sim.RunEventLoop(5); });
  ASSERT_FALSE(desk.boxes.shown.empty());
  EXPECT_EQ(desk.boxes.shown.back().title, "Stack Overflow");
  desk.Line(0).Type = RT;
  desk.Line(9).Type = CL;
  DownloadNow();
  desk.boxes.setNextAnswer(Answer::No);
  RunWith([&] { desk.sim.RunEventLoop(5); });
  ASSERT_FALSE(desk.boxes.shown.empty());
  EXPECT_EQ(desk.boxes.shown.back().title, "Stack Underflow");
}

TEST_F(RunRoad, AHubThatRestartsInMidRunClosesTheRunWindow) {
  desk.Line(0).Type = FL;
  desk.Line(0).Dist = 2000000;
  DownloadNow();
  RunWith([&] {
    desk.sim.RunEventLoop(0.5);
    desk.sim.hub.PowerUp(desk.clock.now);
    desk.sim.RunEventLoop(0.1);
  });
  EXPECT_EQ(desk.run.hides, 1);
  EXPECT_EQ(desk.beeper.beeps, 1);
  EXPECT_NE(desk.sim.sent.find("*0"), std::string::npos);
  EXPECT_TRUE(desk.boxes.shown.empty());
}

TEST_F(RunRoad, AfterStopTheHubStandsStillAndNothingMoreGoesOut) {
  desk.Line(0).Type = GT;
  desk.Line(0).LineNum = 1;
  desk.Line(1).Type = WT;
  desk.Line(1).Time = 1;
  desk.Line(2).Type = GT;
  desk.Line(2).LineNum = 0;
  DownloadNow();
  RunWith([&] {
    desk.sim.RunEventLoop(0.5);
    StopRun(desk.road, RunWindow::ExecStatus);
  });
  const std::size_t sent = desk.sim.sent.size();
  desk.sim.RunEventLoop(5);
  EXPECT_EQ(desk.sim.hub.State(), hubsim::HubState::Idle);
  EXPECT_EQ(desk.sim.sent.size(), sent);
}

}  // namespace
}  // namespace tavlo::testing
