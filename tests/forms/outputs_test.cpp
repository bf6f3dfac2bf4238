// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/change_current.h"
#include "forms/feed_set_out.h"
#include "forms/form_bench.h"
#include "forms/set_output.h"

namespace tavlo::testing {
namespace {

template <class WhichForm>
struct OutputBench : FormBench<WhichForm> {
  /// Captions of the outputs that are seen, by their control.
  [[nodiscard]] std::vector<std::string> Outputs(const std::vector<std::string>& names) {
    std::vector<std::string> seen;
    for (const std::string& name : names) {
      if (this->Visible(name)) seen.push_back(name + " " + this->OptionCaption(name));
    }
    return seen;
  }
};

const std::vector<std::string> kSetOutputs = {"optout(0)",   "optout(1)",   "optout(2)",  "optout(3)",
                                              "optout(128)", "optout(129)", "optout(130)"};

TEST(SetOutput, OffersTheOutputsThatTheDriveHas) {
  const std::vector<std::string> three = {"optout(0) 1", "optout(1) 2", "optout(2) 3"};
  const std::vector<std::string> four = {"optout(0) 1", "optout(1) 2", "optout(2) 3", "optout(3) 4"};
  const std::vector<std::string> only_y = {"optout(0) Y1", "optout(1) Y2", "optout(2) Y3"};
  const std::vector<std::string> both = {"optout(0) 1",    "optout(1) 2",    "optout(2) 3",
                                         "optout(128) Y1", "optout(129) Y2", "optout(130) Y3"};
  const struct {
    std::vector<int> models;
    std::vector<std::string> outputs;
  } rows[] = {{{0, 1, 3, 5, 8, 9}, three},
              {{19, 36, 37, 40, 41, 43, 48, 50}, four},
              {{10, 12, 16, 26, 14, 15, 18, 28}, only_y},
              {{11, 13, 17, 30, 20, 22, 24, 27, 21, 23, 25, 29}, both}};
  for (const auto& row : rows) {
    for (const int model : row.models) {
      OutputBench<SetOutput> d;
      d.program.Axis.DriveModel[0] = static_cast<std::int16_t>(model);
      d.Open();
      EXPECT_EQ(d.Outputs(kSetOutputs), row.outputs) << model;
    }
  }
}

TEST(SetOutput, StoresTheOutputUnderItsNumber) {
  const struct {
    const char* option;
    int io_num;
  } rows[] = {{"optout(0)", 0}, {"optout(2)", 2}, {"optout(128)", 128}, {"optout(130)", 130}};
  for (const auto& row : rows) {
    FormBench<SetOutput> d;
    d.program.Axis.DriveModel[0] = 11;
    d.Open();
    d.Click(row.option);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Type, SO);
    EXPECT_EQ(d.Line().IONum, row.io_num);
    d.Open();
    EXPECT_TRUE(d.Chosen(row.option));
  }
}

TEST(SetOutput, AnOutputThatTheDriveLacksFallsBackToTheFirst) {
  const struct {
    int model;
    int stored;
    int after;
  } rows[] = {{1, 3, 0},  {1, 2, 2},      {1, 128, 0}, {19, 3, 3},  {19, 4, 0}, {19, 128, 0}, {10, 3, 0},
              {11, 3, 3}, {11, 130, 130}, {11, 77, 0}, {11, -1, 0}, {1, -5, 0}, {48, 3, 3}};
  for (const auto& row : rows) {
    FormBench<SetOutput> d;
    d.program.Axis.DriveModel[0] = static_cast<std::int16_t>(row.model);
    d.Line().IONum = static_cast<std::int16_t>(row.stored);
    d.Open();
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().IONum, row.after) << "model " << row.model << ", " << row.stored;
  }
}

TEST(SetOutput, APulseOf501MsStores500) {
  const struct {
    const char* typed;
    const char* shown;
    int stored;
  } rows[] = {{"501", "500", 500}, {"500", "500", 500}, {"2.5", "2", 2},  {"3.5", "4", 4},
              {"-1", "0", 0},      {"", "0", 0},        {"long", "0", 0}, {"1E999", "500", 500}};
  for (const auto& row : rows) {
    FormBench<SetOutput> d;
    d.Open();
    d.Click("OptState(2)");
    d.Enter("pw", row.typed);
    EXPECT_EQ(d.Text("pw"), row.shown) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Time, row.stored) << row.typed;
    EXPECT_EQ(d.Line().State, 2);
  }
}

TEST(SetOutput, ThePulseIsDimmedUnlessOneIsChosen) {
  FormBench<SetOutput> d;
  d.Open();
  for (const int state : {0, 1, 2, 3}) {
    d.Click("OptState(" + std::to_string(state) + ")");
    EXPECT_EQ(d.Enabled("pw"), state >= 2);
    EXPECT_EQ(d.Enabled("lblmsec"), state >= 2);
  }
}

TEST(SetOutput, OffersTheHubItselfOnAHubQuadAlone) {
  OutputBench<SetOutput> d;
  d.Line().Drive = 4;
  d.Line().IONum = 3;
  d.Open();
  EXPECT_EQ(d.List("Drive").list.size(), 8U);
  EXPECT_EQ(d.List("Drive").index, 4) << "an axis of an Octo";
  d.program.HubIndex = HubQuad;
  d.program.Axis.DriveModel[4] = 11;
  d.Open();
  EXPECT_EQ(d.List("Drive").list.size(), 5U);
  EXPECT_EQ(d.List("Drive").list[4], "Hub");
  EXPECT_EQ(d.List("Drive").index, 4);
  EXPECT_EQ(d.Outputs(kSetOutputs),
            (std::vector<std::string>{"optout(0) 1", "optout(1) 2", "optout(2) 3", "optout(3) 4"}));
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Drive, 4);
  EXPECT_EQ(d.Line().IONum, 3);
}

TEST(SetOutput, OnAnotherAxisItsOutputsAreOffered) {
  OutputBench<SetOutput> d;
  d.program.Axis.DriveModel[0] = 19;
  d.program.Axis.DriveModel[1] = 1;
  d.Line().IONum = 3;
  d.Open();
  EXPECT_EQ(d.Outputs(kSetOutputs).size(), 4U);
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Outputs(kSetOutputs).size(), 3U);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().IONum, 0);
  EXPECT_EQ(d.Line().Drive, 1);
}

Instruction AMoveWithOutput() {
  return {.Type = FLSO,
          .Dist = 40000,
          .Dist2 = 30000,
          .Speed = 2.5F,
          .Accel = 100,
          .Decel = 200,
          .State = 2,
          .Time = 30,
          .IONum = 1,
          .Dist2Var = 4,
          .Speed2IsMMI = true,
          .WaitThis = true};
}

struct SetOutBench : OutputBench<FeedSetOut> {
  SetOutBench() { Line() = AMoveWithOutput(); }
};

TEST(FeedSetOut, ShowsTheLine) {
  SetOutBench d;
  d.Open();
  EXPECT_EQ(d.Text("disttext"), "40000");
  EXPECT_EQ(d.Text("Dist2Text"), "30000");
  EXPECT_TRUE(d.Chosen("OptAtDist"));
  EXPECT_TRUE(d.Chosen("optout(1)"));
  EXPECT_TRUE(d.Chosen("OptState(2)"));
  EXPECT_EQ(d.Text("pw"), "60") << "the record counts 2 ms";
  EXPECT_EQ(d.Caption("lblmsec"), "msec");
}

TEST(FeedSetOut, OpeningAndConfirmingChangesNothing) {
  for (const bool during : {false, true}) {
    SetOutBench d;
    d.Line().Speed2IsMMI = during;
    const Instruction before = d.Line();
    d.Open();
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line(), before);
  }
}

TEST(FeedSetOut, APulseOf501MsIs250Times2) {
  const struct {
    const char* typed;
    const char* shown;
    int time;
  } rows[] = {{"501", "500", 250}, {"500", "500", 250}, {"5", "4", 2},
              {"7", "8", 4},       {"6", "6", 3},       {"-2", "0", 0}};
  for (const auto& row : rows) {
    SetOutBench d;
    d.Open();
    d.Enter("pw", row.typed);
    EXPECT_EQ(d.Text("pw"), row.shown) << "the number that is stored";
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Time, row.time) << row.typed;
  }
}

TEST(FeedSetOut, TheOutputsOfTheFurtherBlockFollowTheMainOnes) {
  for (int i = 0; i < 7; ++i) {
    SetOutBench d;
    d.program.Axis.DriveModel[0] = 11;
    d.Open();
    d.Click("optout(" + std::to_string(i) + ")");
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().IONum, i < 4 ? i : 124 + i);
  }
}

TEST(FeedSetOut, AnOutputThatTheNewAxisLacksFallsBackToTheFirst) {
  SetOutBench d;
  d.program.Axis.DriveModel[0] = 19;
  d.program.Axis.DriveModel[1] = 1;
  d.Open();
  d.Click("optout(3)");
  d.Choose("Drive", 1);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().IONum, 0);
}

TEST(FeedSetOut, TheOutputIsSetWithinTheMove) {
  SetOutBench d;
  d.Open();
  d.Enter("Dist2Text", "50000");
  EXPECT_EQ(d.Text("Dist2Text"), "40000");
  d.Enter("disttext", "1000");
  EXPECT_EQ(d.Text("Dist2Text"), "1000") << "follows the length";
  d.Enter("Dist2Text", "0");
  EXPECT_EQ(d.Text("Dist2Text"), "1");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 1000);
  EXPECT_EQ(d.Line().Dist2, 1);
}

TEST(FeedSetOut, ItsDistanceIsDimmedUnlessItIsSetDuringTheMove) {
  SetOutBench d;
  d.Open();
  EXPECT_TRUE(d.Enabled("Dist2Text") && d.Enabled("getmmidst2"));
  d.Click("getmmidst2");
  EXPECT_FALSE(d.Enabled("Dist2Text"));
  EXPECT_TRUE(d.Visible("dst2name") && d.Visible("lblvarname"));
  d.Click("OptEndOfMove");
  EXPECT_FALSE(d.Enabled("getmmidst2") || d.Enabled("Dist2Text"));
  EXPECT_TRUE(d.OK());
  EXPECT_FALSE(d.Line().Speed2IsMMI) << "the flag says that it is set during the move";
  EXPECT_TRUE(d.Line().Dist2IsMMI);
}

struct CurrentBench : FormBench<ChangeCurrent> {
  CurrentBench() {
    program.Axis.DriveModel[0] = 1;
    highest = MaxCurrent(1);
  }
  float highest;
};

TEST(ChangeCurrent, ItsOptionsChooseTheKind) {
  const struct {
    const char* option;
    int type;
    bool motor_on;
  } rows[] = {{"OptNew", CC, false}, {"OptDisable", ED, false}, {"OptResume", ED, true}};
  for (const auto& row : rows) {
    CurrentBench d;
    d.Line() = {.Type = CC, .Current = 1.5F, .IdlePct = 2};
    d.Open();
    d.Click(row.option);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Type, row.type) << row.option;
    EXPECT_EQ(d.Line().MotorOn, row.motor_on);
    EXPECT_EQ(d.Line().Current, 1.5F);
    EXPECT_EQ(d.Line().IdlePct, 2);
    d.Open();
    for (const auto& other : rows) EXPECT_EQ(d.Chosen(other.option), other.option == row.option);
    EXPECT_EQ(d.Enabled("Curr"), row.type == CC);
    EXPECT_EQ(d.Enabled("OptIdleCurrent(3)"), row.type == CC);
  }
}

TEST(ChangeCurrent, IsHeldToWhatTheDriveCanGive) {
  CurrentBench d;
  const std::string most = Format(d.highest, "0.00");
  const struct {
    std::string typed;
    std::string shown;
  } rows[] = {{"99", most},     {"-1", "0.00"},    {"", "0.00"},
              {"much", "0.00"}, {"1.234", "1.23"}, {"1.236", "1.24"}};
  for (const auto& row : rows) {
    d.Open();
    d.Enter("Curr", row.typed);
    EXPECT_EQ(d.Text("Curr"), row.shown) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(Format(d.Line().Current, "0.00"), row.shown);
  }
}

TEST(ChangeCurrent, ACurrentThatNobodyTouchedIsForcedOnlyOutsideItsRange) {
  CurrentBench d;
  d.Line() = {.Type = CC, .Current = 1.2345F};
  d.Open();
  EXPECT_EQ(d.Text("Curr"), "1.23");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Current, 1.2345F);
  d.Line().Current = 50;
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Current, d.highest);
}

TEST(ChangeCurrent, OnAnotherAxisItsMaximumHolds) {
  CurrentBench d;
  d.program.Axis.DriveModel[1] = 0;
  d.Line() = {.Type = CC, .Current = 3, .IdlePct = 3};
  d.Open();
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Text("Curr"), "2.00");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Current, 2);
  EXPECT_EQ(d.Line().Drive, 1);
}

}  // namespace
}  // namespace tavlo::testing
