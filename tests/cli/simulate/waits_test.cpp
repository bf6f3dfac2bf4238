// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/simulated.h"

namespace tavlo::testing {
namespace {

class Waits : public Simulated {
 protected:
  /// What a program waits for that consists of one line.
  std::string WaitedFor(const Instruction& line) {
    Line(1) = line;
    const Json waits = SimulateJson()["waits"];
    return waits.empty() ? "no wait" : waits[0]["freedBy"].get<std::string>();
  }
};

TEST_F(Waits, ALineWaitsUntilItsInputComes) {
  Line(1) = With(WI, 3);
  Line(2) = WaitTime(10);
  EXPECT_EQ(Simulate("at 2.5 axis 1 input 3 low"),
            (Outcome{0,
                     "0.000\t1\tstarted\tAxis 1:Wait for Input 3 low\n"
                     "0.000\t1\twaits\taxis 1 input 3 low\n"
                     "2.500\tact\taxis 1 input 3 low\n"
                     "2.500\t1\twaited\t2.500 s\n"
                     "2.500\t1\tfinished\tAxis 1:Wait for Input 3 low\n"
                     "2.500\t2\tstarted\tWait 0.01 seconds\n"
                     "2.600\t2\tfinished\tWait 0.01 seconds\n"
                     "Total\t2.600\n"
                     "Ended\tthe program came to its end\n"
                     "Waited\t1\t2.500 s\n",
                     ""}));
  const Json waits = SimulateJson("at 2.5 axis 1 input 3 low")["waits"];
  EXPECT_EQ(waits, (Json{{{"line", 1}, {"start", 0.0}, {"end", 2.5}, {"freedBy", "axis 1 input 3 low"}}}));
}

TEST_F(Waits, AnInputThatIsThereAlreadyIsNotWaitedFor) {
  Line(1) = With(WI, 3);
  EXPECT_EQ(SimulateJson("at 0 axis 1 input 3 low")["waits"], Json::array());
}

TEST_F(Waits, WhatNothingSetsFreeEndsTheRun) {
  Line(1) = WaitTime(10);
  Line(2) = With(WI, 3);
  Line(3) = WaitTime(10);
  const std::string message = "line 2 waits for ever: axis 1 input 3 low would set it free";
  const Outcome outcome = Simulate("at 50 axis 1 input 4 low");
  EXPECT_EQ(outcome.code, 9);
  EXPECT_EQ(outcome.err, "tavlo: " + message + "\n");
  EXPECT_TRUE(outcome.out.ends_with("50.000\tact\taxis 1 input 4 low\nTotal\t50.000\nEnded\t" + message +
                                    "\nNever ran\t3\tWait 0.01 seconds\n"))
      << outcome.out;
  const Json document = SimulateJson();
  EXPECT_EQ(document["ended"], "waits");
  EXPECT_EQ(document["total"], 0.1);
  EXPECT_EQ(document["waits"][0]["end"], nullptr);
  EXPECT_EQ(document["error"], (Json{{"code", 9}, {"message", message}}));
}

TEST_F(Waits, EachKindOfLineTellsWhatWouldSetItFree) {
  struct Row {
    Instruction line;
    std::string freed_by;
  };
  Instruction x1 = With(WI, 1);
  x1.IONum = kFirstDriveInput + 1;
  program.Axis.DriveModel[0] = 20;
  Instruction all = OfType(WII);
  all.InMask = 5;
  all.InState = 4;
  all.WaitAND = true;
  Instruction any = all;
  any.WaitAND = false;
  Instruction sensor = Revolution();
  sensor.Type = FS;
  sensor.State = 1;
  Instruction home = With(SH, 2);
  home.Speed = 1;
  home.Accel = home.Decel = 10;
  Instruction number = Prompt(GetDistance, "Length");
  number.LowerInt = 5;
  number.UpperInt = 900;
  number.UpperFrac = 5000;
  Instruction yes_no = Prompt(BranchYesNo, "Again?");
  Instruction menu = Prompt(Menu, "1 or 3");
  menu.MenuKey = {false, true, false, true};
  const std::vector<Row> rows = {
      {With(WI, 3, 0), "no wait"},
      {With(WI, 20, 1), "nothing"},
      {With(WI, 3, 1), "axis 1 input 3 low"},
      {With(WI, 3, 2), "axis 1 input 3 high after low"},
      {With(WI, 3, 3), "axis 1 input 3 low after high"},
      {x1, "axis 1 input X1 low"},
      {all, "axis 1 input 1 low and axis 1 input 3 high"},
      {sensor, "axis 1 input 1 low"},
      {home, "axis 1 input 2 low"},
      {number, "type a number from 5 to 900.5"},
      {Prompt(WaitEnter, "Go"), "key enter"},
      {yes_no, "key yes or key no"},
      {menu, "key 1 or key 3"},
  };
  for (const Row& row : rows) EXPECT_EQ(WaitedFor(row.line), row.freed_by);
  EXPECT_EQ(WaitedFor(any), "no wait") << "one of them is high as it is";
  any.InMask = 0;
  EXPECT_EQ(WaitedFor(any), "nothing");
}

TEST_F(Waits, AMoveWaitsForItsSensorOnly) {
  Line(1) = Revolution();
  Line(1).Type = FS;
  Line(1).State = 1;
  const Json document = SimulateJson("at 2 axis 1 input 1 low");
  EXPECT_EQ(document["waits"][0]["end"], 2.0);
  EXPECT_NEAR(document["total"].get<double>(), 2 + 0.95 + 0.1, 1e-6) << "one revolution more, then it brakes";
}

TEST_F(Waits, AMoveThatGoesOnBesideTheProgramWaitsToo) {
  Line(1) = Revolution();
  Line(1).Type = FS;
  Line(1).State = 1;
  Line(1).Proceed = true;
  Line(2) = WaitTime(50);
  EXPECT_EQ(SimulateJson()["ended"], "waits") << "the program is over, its move is not";
  const Json document = SimulateJson("at 3 axis 1 input 1 low");
  EXPECT_EQ(document["ended"], "end");
  EXPECT_EQ(document["waits"][0]["end"], 3.0);
}

TEST_F(Waits, TheKeypadAnswersTheWaitsOfALineInTurn) {
  Line(1) = Prompt(Menu, "1 count, 2 run");
  Line(1).MenuKey = {false, true, true};
  Line(1).MenuLine = {0, 1, 3};
  Line(2) = Prompt(GetCount, "How many");
  Line(2).DistVar = 35;
  Line(2).LowerInt = 1;
  Line(2).UpperInt = 9;
  Line(3) = To(GT, 1);
  Line(4) = Times(1);
  Line(4).CountIsMMI = true;
  Line(4).DistVar = 35;
  Line(5) = WaitTime(100);
  Line(6) = OfType(ER);
  Line(7) = To(GT, 1);
  const Json document = SimulateJson(
      "once line 1 after 1 key 1\n"
      "when line 2 after 0.5 type 3\n"
      "once line 1 after 1 key 2\n");
  EXPECT_EQ(document["total"], 5.5);
  EXPECT_EQ(document["ended"], "waits");
  EXPECT_EQ(document["message"], "line 1 waits for ever: key 1 or key 2 would set it free");
  ASSERT_EQ(document["waits"].size(), 4U);
  EXPECT_EQ(document["waits"][1],
            (Json{{"line", 2}, {"start", 1.0}, {"end", 1.5}, {"freedBy", "type a number from 1 to 9"}}));
}

TEST_F(Waits, ARowForEachWaitIsCarriedOutEachTime) {
  Line(1) = Times(3);
  Line(2) = With(WI, 1);
  Line(3) = With(WI, 1, 0);
  Line(4) = OfType(ER);
  const Json document = SimulateJson("when line 2 after 1 axis 1 input 1 low for 0.25");
  EXPECT_EQ(document["ended"], "end");
  EXPECT_EQ(document["total"], 3.75);
  EXPECT_EQ(document["acts"].size(), 6U);
}

TEST_F(Waits, ActsThatDoNothingAreTold) {
  Line(1) = WaitTime(100);
  const Outcome outcome =
      Simulate("at 0.5 key enter\nat 0.6 axis 1 wheel 5\nat 0.7 key 0\nat 2 axis 1 input 1 low");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.out.find("0.500\tact\tkey enter\tnothing happens\n"
                             "0.600\tact\taxis 1 wheel 5\tnothing happens\n"
                             "0.700\tact\tkey 0\tnothing happens\n"
                             "1.000\t1\tfinished"),
            std::string::npos)
      << outcome.out;
  EXPECT_TRUE(outcome.out.ends_with("Total\t1.000\nEnded\tthe program came to its end\n")) << outcome.out;
}

TEST_F(Waits, ANullIsNoCommandToAPromptThatTakesNoNumber) {
  Line(1) = WaitTime(100);
  Line(2) = Prompt(WaitEnter, "Go");
  const Json document = SimulateJson("when line 2 key 0");
  EXPECT_EQ(document["acts"][0]["effect"], false);
  EXPECT_EQ(document["total"], 1.0);
  EXPECT_EQ(document["ended"], "waits");
}

TEST_F(Waits, AHandWheelIsFollowed) {
  Line(1) = OfType(FE);
  Line(1).State = 1;
  Line(1).Dist = 8;
  const Outcome outcome = Simulate("at 1 axis 1 wheel 100\nat 2 axis 1 input 1 low");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.out.find("\tfinished\t\tAxis 1 0.04 rev\n"), std::string::npos) << outcome.out;
}

TEST_F(Waits, AProgramThatAsksAgainAndAgainWaitsToo) {
  Line(1) = IfInput(3, 5);
  Line(2) = IfInput(4, 6);
  Line(3) = To(GT, 1);
  Line(5) = WaitTime(10);
  Line(6) = WaitTime(20);
  const Json waits = SimulateJson()["waits"];
  ASSERT_EQ(waits.size(), 1U);
  EXPECT_EQ(waits[0]["freedBy"], "axis 1 input 3 low or axis 1 input 4 low");
  EXPECT_EQ(Simulate().code, 9);
  const Json document = SimulateJson("when line 2 after 4 axis 1 input 4 low");
  EXPECT_EQ(document["ended"], "end");
  EXPECT_EQ(document["total"], 4.2);
  EXPECT_EQ(document["waits"][0]["end"], 4.0);
  EXPECT_EQ(document["neverRan"], Json{5});
}

TEST_F(Waits, OfTheRoundsOfSuchAProgramOneIsTold) {
  Line(1) = IfInput(3, 5);
  Line(2) = To(GT, 1);
  Line(5) = WaitTime(10);
  EXPECT_EQ(Simulate("at 4 axis 1 input 3 low").out,
            "0.000\t1\tran\tAxis 1:If Input 3 low, go to line 5\n"
            "0.000\t2\tran\tGo to line 1\n"
            "0.000\t1\twaits\taxis 1 input 3 low\n"
            "4.000\tact\taxis 1 input 3 low\n"
            "4.000\t2\tran\tGo to line 1\n"
            "4.000\t1\tran\tAxis 1:If Input 3 low, go to line 5\n"
            "4.000\t5\tstarted\tWait 0.01 seconds\n"
            "4.000\t1\twaited\t4.000 s\n"
            "4.100\t5\tfinished\tWait 0.01 seconds\n"
            "Total\t4.100\n"
            "Ended\tthe program came to its end\n"
            "Waited\t1\t4.000 s\n");
}

TEST_F(Waits, ALineThatARoundComesToTwiceWaitsOnce) {
  Line(1) = To(CL, 10);
  Line(2) = To(CL, 10);
  Line(3) = To(GT, 1);
  Line(10) = IfInput(3, 20);
  Line(11) = OfType(RT);
  Line(20) = With(WI, 4);
  const Json document =
      SimulateJson("once line 10 after 1 axis 1 input 5 low\nonce line 10 after 1 axis 1 input 3 low");
  EXPECT_EQ(document["acts"].size(), 1U);
  EXPECT_EQ(document["message"], "line 10 waits for ever: axis 1 input 3 low would set it free");
}

TEST_F(Waits, AProgramMayAskWhileAnAxisMoves) {
  Line(1) = Revolution();
  Line(1).Proceed = true;
  Line(2) = IfInput(3, 5);
  Line(2).Proceed = true;
  Line(3) = To(GT, 2);
  Line(3).Proceed = true;
  Line(5) = To(IM, 5);
  const Json document = SimulateJson("at 0.25 axis 1 input 3 low");
  EXPECT_EQ(document["ended"], "end");
  EXPECT_EQ(document["total"], 1.1);
  EXPECT_EQ(document["waits"][0]["end"], 0.25);
}

}  // namespace
}  // namespace tavlo::testing
