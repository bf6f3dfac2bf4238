// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/simulated.h"

namespace tavlo::testing {
namespace {

using Endings = Simulated;

TEST_F(Endings, AHaltIsThatOfARun) {
  struct Row {
    const char* script;
    const char* cause;
    const char* text;
  };
  const std::vector<Row> rows = {
      {"at 0.5 axis 1 limit", "limit", "a limit was hit on axis 1"},
      {"at 0.5 stop", "stopButton", "the stop button was pressed"},
      {"at 0.5 axis 2 fault 8", "driveFault", "the drive reports a fault on axis 2, code 8"},
      {"at 0.5 axis 2 fault 8192", "driveFault", "the drive reports a fault on axis 2, code 8192"},
  };
  Line(1) = Revolution();
  Line(2) = WaitTime(10);
  for (const Row& row : rows) {
    const Outcome outcome = Simulate(row.script);
    EXPECT_EQ(outcome.code, 8) << row.script;
    EXPECT_EQ(outcome.err, "tavlo: the program was halted at line 1: " + std::string(row.text) + "\n");
    const Json document = SimulateJson(row.script);
    EXPECT_EQ(document["ended"], "halt");
    EXPECT_EQ(document["halt"], (Json{{"seconds", 0.5}, {"line", 1}, {"cause", row.cause}}));
    EXPECT_EQ(document["neverRan"], Json{2});
    EXPECT_EQ(document["error"]["code"], 8);
  }
}

TEST_F(Endings, CallsAndReturnsThatDoNotPairHalt) {
  Line(1) = To(CL, 1);
  Line(5) = OfType(RT);
  EXPECT_EQ(SimulateJson()["halt"]["cause"], "stackOverflow");
  Line(1) = To(GT, 5);
  Line(2) = To(CL, 5);
  EXPECT_EQ(SimulateJson()["halt"], (Json{{"seconds", 0.0}, {"line", 5}, {"cause", "stackUnderflow"}}));
}

TEST_F(Endings, ALimitMayBranch) {
  program.LimitList = BranchToLine;
  program.LimitBranch = 5;
  Line(1) = Revolution();
  Line(2) = WaitTime(100);
  Line(3) = To(GT, 6);
  Line(5) = With(SO, 1);
  const Json document = SimulateJson("at 0.5 axis 1 limit");
  EXPECT_EQ(document["ended"], "end");
  EXPECT_EQ(TimesOf(document, 1).second, 0.5);
  EXPECT_EQ(TimesOf(document, 5).first, 0.5);
  EXPECT_EQ(document["total"], 0.6) << "it brakes from 1 rev/s";
  EXPECT_EQ(document["neverRan"], (Json{2, 3}));
}

TEST_F(Endings, AProgramThatGoesRoundInNoTimeIsFoundOut) {
  Line(1) = WaitTime(50);
  Line(2) = With(SO, 1);
  Line(3) = To(GT, 2);
  const Outcome outcome = Simulate();
  EXPECT_EQ(outcome.code, 9);
  EXPECT_EQ(outcome.err, "tavlo: lines 2 and 3 go round for ever, and no time passes\n");
  EXPECT_TRUE(
      outcome.out.ends_with("0.500\t2\tran\tAxis 1:Set Output 1 low\n"
                            "0.500\toutput\tAxis 1\t1 low\n"
                            "0.500\t3\tran\tGo to line 2\n"
                            "Total\t0.500\n"
                            "Ended\tlines 2 and 3 go round for ever, and no time passes\n"))
      << outcome.out;
  EXPECT_EQ(SimulateJson()["ended"], "stuck");
  Line(1) = To(GT, 1);
  EXPECT_EQ(Simulate().err, "tavlo: line 1 goes round for ever, and no time passes\n");
}

TEST_F(Endings, LoopsThatCountDownInNoTimeComeToTheirEnd) {
  Line(1) = Times(300);
  Line(2) = Times(300);
  Line(3) = OfType(ER);
  Line(4) = OfType(ER);
  Line(5) = WaitTime(10);
  EXPECT_EQ(SimulateJson()["total"], 0.1);
  Line(1).Count = Line(2).Count = 32767;
  EXPECT_EQ(Simulate().err, "tavlo: the program runs on and on, and no time passes\n");
}

TEST_F(Endings, CallsFromManyPlacesAreNoRound) {
  for (int number = 1; number <= 40; ++number) Line(number) = To(CL, 51);
  Line(41) = WaitTime(10);
  Line(42) = To(GT, 60);
  Line(51) = OfType(RT);
  const Json document = SimulateJson();
  EXPECT_EQ(document["ended"], "end");
  EXPECT_EQ(document["lines"].size(), 82U);
}

TEST_F(Endings, AnEdgeThatIsSeenOnceIsNoRound) {
  Line(1) = WaitTime(10);
  for (int number = 2; number <= 30; ++number) Line(number) = With(SO, 1);
  Line(31) = With(II, 3, 3);
  Line(31).LineNum = 31;
  Line(32) = To(GT, 2);
  const Json document = SimulateJson("at 0.05 axis 1 input 3 low");
  EXPECT_EQ(document["waits"][0]["freedBy"], "axis 1 input 3 low after high");
}

TEST_F(Endings, AScriptThatAnswersInNoTimeForEverIsFoundOut) {
  Line(1) = Prompt(Menu, "1 again");
  Line(1).MenuKey = {false, true};
  Line(1).MenuLine = {0, 0};
  EXPECT_EQ(SimulateJson("when line 1 key 1", {"--for", "5"})["ended"], "stuck");
}

TEST_F(Endings, WhatADownloadRefusesIsRefusedInTheSameWords) {
  Line(1) = OfType(ER);
  const Outcome checked = Tavlo({"check", File()});
  const Outcome downloaded = Tavlo({"download", File(), "--port", "1"});
  EXPECT_EQ(checked.code, 3);
  EXPECT_EQ(downloaded.err, checked.err);
  EXPECT_EQ(Tavlo({"simulate", File()}), (Outcome{3, "", checked.err}));
}

TEST_F(Endings, ADriveThatIsNotThereIsAskedAboutAsBeforeARun) {
  Line(1) = Revolution();
  const Outcome outcome = Simulate({}, {"--drives", "0,4,3,2,5,7,8"});
  EXPECT_EQ(outcome.code, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err, "");
  EXPECT_EQ(Simulate({}, {"--drives", "1,4,3,2,5,7,8"}).code, 0);
}

TEST_F(Endings, ABadScriptIsRefusedRowByRow) {
  Line(1) = WaitTime(10);
  const Outcome outcome = Simulate("at 1 stop\nat one stop\n\nstop\n");
  const std::string name = folder.Path("inputs");
  EXPECT_EQ(outcome, (Outcome{4, "",
                              "tavlo: " + name + ":2: expected seconds, 0 or more, not 'one'\n" +
                                  "tavlo: " + name + ":4: expected at, when, once or after, not 'stop'\n"}));
  const std::string missing = folder.Path("none");
  EXPECT_EQ(Simulate({}, {"--inputs", missing}).code, 4);
  EXPECT_EQ(Tavlo({"simulate", "-", "--inputs", "-"}).code, 2);
}

TEST_F(Endings, OptionsThatMeanNothingAreRefused) {
  struct Row {
    std::vector<std::string> options;
    std::string reason;
  };
  const std::vector<Row> rows = {
      {{"--drives", "one"}, "--drives: 'one' is no list of drives, such as 1,4,3"},
      {{"--drives", ""}, "--drives: '' is no list of drives, such as 1,4,3"},
      {{"--speedup", "0"}, "--speedup: '0' is no number from 0.001 to 1000000"},
      {{"--speedup", "fast"}, "--speedup: 'fast' is no number from 0.001 to 1000000"},
      {{"--speedup", "nan"}, "--speedup: 'nan' is no number from 0.001 to 1000000"},
      {{"--for", "-1"}, "--for: '-1' is no number of seconds"},
      {{"--inputs", ""}, "--inputs: the name is empty"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Simulate({}, row.options),
              (Outcome{2, "", row.reason + "\nRun with --help for more information.\n"}));
  }
}

}  // namespace
}  // namespace tavlo::testing
