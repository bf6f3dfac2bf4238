// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <chrono>

#include "cli/simulate/simulated.h"

namespace tavlo::testing {
namespace {

using TimeLine = Simulated;

TEST_F(TimeLine, ARowTellsEachThingThatHappens) {
  Line(1) = Revolution();
  Line(2) = WaitTime(50);
  Line(3) = With(SO, 1);
  EXPECT_EQ(Simulate(), (Outcome{0,
                                 "0.000\t1\tstarted\tAxis 1:CW 1.0 rev, 1.0 rps\n"
                                 "1.100\t1\tfinished\tAxis 1:CW 1.0 rev, 1.0 rps\tAxis 1 1.0 rev\n"
                                 "1.100\t2\tstarted\tWait 0.05 seconds\n"
                                 "1.600\t2\tfinished\tWait 0.05 seconds\n"
                                 "1.600\t3\tran\tAxis 1:Set Output 1 low\n"
                                 "1.600\toutput\tAxis 1\t1 low\n"
                                 "Total\t1.600\n"
                                 "Ended\tthe program came to its end\n",
                                 ""}));
}

TEST_F(TimeLine, TheDocumentHoldsTheSame) {
  Line(1) = Revolution();
  Line(2) = With(SO, 2);
  Line(3) = To(GT, 5);
  Line(4) = WaitTime(1);
  const Json document = SimulateJson();
  EXPECT_EQ(document["ended"], "end");
  EXPECT_EQ(document["total"], 1.1);
  EXPECT_EQ(document["message"], "the program came to its end");
  EXPECT_EQ(document["halt"], nullptr);
  ASSERT_EQ(document["lines"].size(), 3U);
  EXPECT_EQ(document["lines"][0],
            (Json{{"line", 1},
                  {"type", "FL"},
                  {"text", "Axis 1:CW 1.0 rev, 1.0 rps"},
                  {"start", 0.0},
                  {"wentOn", nullptr},
                  {"end", 1.1},
                  {"positions", {{{"axis", 1}, {"steps", 20000.0}, {"position", "1.0"}, {"unit", "rev"}}}}}));
  EXPECT_EQ(document["outputs"], (Json{{{"seconds", 1.1}, {"axis", 1}, {"output", "2"}, {"level", "low"}}}));
  EXPECT_EQ(document["neverRan"], Json{4});
  EXPECT_FALSE(document.contains("error"));
}

TEST_F(TimeLine, MovesTakeTheTimesThatAreWorkedOutByHand) {
  struct Row {
    const char* what;
    Instruction line;
    double seconds;
  };
  Instruction triangle = Revolution();
  triangle.Dist = 2000;  // Half of 0.1 rev up and half down at 10 rev/s/s.
  Instruction crooked = Revolution();
  crooked.Decel = 5;  // 0.05 rev up, 0.1 rev down, 0.85 rev between.
  Instruction there_and_back = Revolution();
  there_and_back.Type = FR;
  there_and_back.RetSpeed = 2;  // 0.2 rev up, 0.2 rev down, 0.6 rev between.
  there_and_back.Time = 40;
  Instruction change = Revolution();
  change.Type = FLCS;
  change.Dist2 = 10000;
  change.Speed2 = 0.5F;  // 0.05 up, 0.45 at 1, 0.0375 down, then 0.45 at 0.5, 0.0125 down.
  const std::vector<Row> rows = {
      {"a trapezoid", Revolution(), 1.1},
      {"a triangle", triangle, 0.2},
      {"slower down than up", crooked, 0.1 + 0.85 + 0.2},
      {"there and back", there_and_back, 1.1 + 0.4 + 0.2 + 0.3 + 0.2},
      {"a second speed", change, 0.1 + 0.45 + 0.05 + 0.9 + 0.05},
      {"a wait", WaitTime(123), 1.23},
  };
  for (const Row& row : rows) {
    Line(1) = row.line;
    EXPECT_NEAR(SimulateJson()["total"].get<double>(), row.seconds, 1e-4) << row.what;
  }
}

TEST_F(TimeLine, AMoveGoesOnBesideTheNextLines) {
  Line(1) = Revolution(0);
  Line(1).Proceed = true;
  Line(2) = WaitTime(50);
  Line(3) = Revolution(1);
  const Outcome outcome = Simulate();
  EXPECT_EQ(outcome.out,
            "0.000\t1\tstarted\tAxis 1:CW 1.0 rev, 1.0 rps\n"
            "0.000\t1\twent on\tAxis 1:CW 1.0 rev, 1.0 rps\n"
            "0.000\t2\tstarted\tWait 0.05 seconds\n"
            "0.500\t2\tfinished\tWait 0.05 seconds\n"
            "0.500\t3\tstarted\tAxis 2:CW 1.0 rev, 1.0 rps\n"
            "1.100\t1\tfinished\tAxis 1:CW 1.0 rev, 1.0 rps\tAxis 1 1.0 rev\n"
            "1.600\t3\tfinished\tAxis 2:CW 1.0 rev, 1.0 rps\tAxis 2 1.0 rev\n"
            "Total\t1.600\nEnded\tthe program came to its end\n");
  const Json line = SimulateJson()["lines"][0];
  EXPECT_EQ(line["wentOn"], 0.0);
  EXPECT_EQ(line["end"], 1.1);
}

TEST_F(TimeLine, ALineThatRunsAnewBeforeItsMoveIsOverHasTwoEnds) {
  Line(1) = Times(2);
  Line(2) = Revolution();
  Line(2).Proceed = true;
  Line(3) = OfType(ER);
  Line(3).Proceed = true;
  const Json lines = SimulateJson()["lines"];
  std::vector<std::pair<double, double>> runs;
  for (const Json& line : lines) {
    if (line["line"] == 2) runs.emplace_back(line["start"], line["end"]);
  }
  ASSERT_EQ(runs.size(), 2U);
  EXPECT_EQ(runs[0].second, 1.1);
  EXPECT_EQ(runs[1].second, 2.2);
}

TEST_F(TimeLine, TheEndWaitsForTheMovesThatGoOn) {
  Line(1) = Revolution();
  Line(1).Proceed = true;
  EXPECT_EQ(SimulateJson()["total"], 1.1);
}

TEST_F(TimeLine, AnAxisThatWasNeverStoppedIsTold) {
  Line(1) = OfType(SS);
  Line(1).SubType = StartAxis;
  Line(1).Speed = 1;
  Line(1).Accel = 10;
  const Outcome outcome = Simulate();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.out.find("Still turns\tAxis 1\n"), std::string::npos) << outcome.out;
  EXPECT_EQ(SimulateJson()["stillTurning"], Json{1});
}

TEST_F(TimeLine, APulseFallsBack) {
  Line(1) = With(SO, 1, 3);
  Line(1).Time = 80;
  const Json outputs = SimulateJson()["outputs"];
  ASSERT_EQ(outputs.size(), 2U);
  EXPECT_EQ(outputs[0]["level"], "low");
  EXPECT_NEAR(outputs[1]["seconds"].get<double>(), 0.08, 1e-4);
  EXPECT_EQ(outputs[1]["level"], "high");
}

TEST_F(TimeLine, TheDisplayIsTold) {
  Line(1) = Prompt(DisplayOnly, "Good morning");
  const Outcome outcome = Simulate();
  EXPECT_NE(outcome.out.find("0.000\tdisplay\t1\tGood morning\n"), std::string::npos) << outcome.out;
  EXPECT_EQ(SimulateJson()["display"], (Json{{{"seconds", 0.0}, {"row", 1}, {"text", "Good morning"}}}));
}

TEST_F(TimeLine, AProgramThatDoesNotEndIsLeftAfterAnHourOrAsTold) {
  Line(1) = WaitTime(100);
  Line(2) = To(GT, 1);
  const Json hour = SimulateJson();
  EXPECT_EQ(hour["total"], 3600.0);
  EXPECT_EQ(hour["ended"], "limit");
  const Outcome outcome = Simulate({}, {"--for", "2.5"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_TRUE(
      outcome.out.ends_with("Total\t2.500\nEnded\tthe program still runs after the limit of 2.5 seconds\n"))
      << outcome.out;
}

TEST_F(TimeLine, TheHubQuadHasItsOwnOutputs) {
  program.HubIndex = HubQuad;
  Line(1) = With(SO, 1);
  Line(1).Drive = kHubQuadIO;
  EXPECT_NE(Simulate().out.find("0.000\toutput\thub\t1 low\n"), std::string::npos);
}

TEST_F(TimeLine, SpeedupLetsTheTimeOfTheWallPass) {
  Line(1) = WaitTime(40);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Simulate({}, {"--speedup", "4"}).code, 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
}

}  // namespace
}  // namespace tavlo::testing
