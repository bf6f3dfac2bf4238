// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_length.h"

#include "forms/form_bench.h"

namespace tavlo::testing {
namespace {

/// A line whose values are those of the sliders' grid, on an axis of 20000 steps a revolution.
struct FeedBench : FormBench<FeedLength> {
  FeedBench() {
    Line() = {.Type = FL,
              .Dist = 40000,
              .Dist2 = 30000,
              .Speed = 2.5F,
              .Speed2 = 1.25F,
              .Dir = 1,
              .Accel = 100,
              .Decel = 200,
              .DistVar = 3,
              .SpeedVar = 21,
              .Dist2Var = 4,
              .Speed2Var = 22,
              .WaitThis = true};
  }
};

TEST(FeedLength, ShowsTheLine) {
  FeedBench d;
  d.Open();
  EXPECT_EQ(d.Text("disttext"), "40000");
  EXPECT_EQ(d.Caption("distunit"), "Steps");
  EXPECT_EQ(d.Text("SpeedText"), "2.500");
  EXPECT_EQ(d.Caption("speedunit"), "Rev/sec");
  EXPECT_EQ(d.Position("SpeedBar"), 100);
  EXPECT_EQ(d.Text("AccelText"), "100");
  EXPECT_EQ(d.Caption("accelunit"), "Rev/sec/sec");
  EXPECT_EQ(d.Position("AccelBar"), 100);
  EXPECT_EQ(d.Text("DecelText"), "200");
  EXPECT_EQ(d.Position("decelbar"), 200);
  EXPECT_TRUE(d.Chosen("ccw"));
  EXPECT_FALSE(d.Chosen("cw"));
  EXPECT_TRUE(d.Chosen("OptWait"));
  EXPECT_EQ(d.Text("Dist2Text"), "30000");
  EXPECT_EQ(d.Text("speed2text"), "1.250");
  EXPECT_FALSE(d.Checked("ChkChangeSpeed"));
  EXPECT_EQ(d.List("dstname").list.size(), 50U);
  EXPECT_EQ(d.List("dstname").index, 3);
  EXPECT_EQ(d.List("spdname").index, 21);
  EXPECT_EQ(d.form.First().name, "disttext");
}

TEST(FeedLength, ShowsItInTheUnitsOfTheAxis) {
  FeedBench d;
  InInches(d.program, 0, 2000);
  d.Open();
  EXPECT_EQ(d.Text("disttext"), "20.0");
  EXPECT_EQ(d.Caption("distunit"), "inch");
  EXPECT_EQ(d.Text("SpeedText"), "25.0000");
  EXPECT_EQ(d.Caption("speedunit"), "inch/sec");
  EXPECT_EQ(d.Text("AccelText"), "1000.0");
  EXPECT_EQ(d.Caption("accelunit"), "inch/sec/sec");
  EXPECT_EQ(d.Caption("speed2unit"), "inch/sec");
}

TEST(FeedLength, OpeningAndConfirmingChangesNothing) {
  for (const bool inches : {false, true}) {
    for (const std::int16_t type : {FL, FLCS}) {
      FeedBench d;
      if (inches) InInches(d.program, 0, 1999);
      d.Line().Type = type;
      const Instruction before = d.Line();
      d.Open();
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line(), before);
      EXPECT_TRUE(d.boxes.shown.empty());
    }
  }
}

TEST(FeedLength, OnlyTheSpeedGoesToTheGridOfItsSlider) {
  FeedBench d;
  d.Line().Speed = 1.2345F;
  d.Open();
  EXPECT_EQ(d.Text("SpeedText"), "1.2345") << "shown as it stands";
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed, 1.225F);
}

TEST(FeedLength, ATypedSpeedIsBroughtDownToAMultipleOf50StepsASecond) {
  const struct {
    const char* typed;
    const char* shown;
    float stored;
  } rows[] = {{"1.23", "1.2300", 1.225F}, {"1.2345", "1.2325", 1.225F}, {"0", "0.0250", 0.025F},
              {"", "0.0250", 0.025F},     {"fast", "0.0250", 0.025F},   {"51", "50.0000", 50.0F},
              {"-1", "0.0250", 0.025F},   {"1E999", "50.0000", 50.0F}};
  for (const auto& row : rows) {
    FeedBench d;
    d.Open();
    d.Enter("SpeedText", row.typed);
    EXPECT_EQ(d.Text("SpeedText"), row.shown) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Speed, row.stored) << row.typed;
  }
}

TEST(FeedLength, ABoxLeftWithATextThatIsNoNumberShowsItsLowerLimitAtOnce) {
  FeedBench d;
  d.Open();
  for (const char* box : {"disttext", "SpeedText", "AccelText", "DecelText"}) d.Enter(box, "none");
  EXPECT_EQ(d.Text("disttext"), "1");
  EXPECT_EQ(d.Text("SpeedText"), "0.0250");
  EXPECT_EQ(d.Text("AccelText"), "1");
  EXPECT_EQ(d.Text("DecelText"), "1");
}

TEST(FeedLength, ADistanceIsForcedIntoItsRange) {
  const struct {
    const char* typed;
    const char* shown;
    std::int32_t stored;
  } steps[] = {
      {"0", "1", 1}, {"2.5", "2", 2}, {"3.5", "4", 4}, {"16000001", "16000000", 16000000}, {"-9", "1", 1}};
  for (const auto& row : steps) {
    FeedBench d;
    d.Open();
    d.Enter("disttext", row.typed);
    EXPECT_EQ(d.Text("disttext"), row.shown) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Dist, row.stored) << row.typed;
  }
  FeedBench d;
  InInches(d.program, 0, 2000);
  d.Open();
  d.Enter("disttext", "0");
  EXPECT_EQ(d.Text("disttext"), "0.0005") << "one step";
  d.Enter("disttext", "1.25");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 2500);
}

TEST(FeedLength, ASliderWritesTheTextBesideIt) {
  FeedBench d;
  d.Open();
  d.Type("SpeedText", "9");
  d.Move("SpeedBar", 50);
  EXPECT_EQ(d.Text("SpeedText"), "1.250");
  d.Move("AccelBar", 321);
  EXPECT_EQ(d.Text("AccelText"), "321");
  d.Move("decelbar", 5000);
  EXPECT_EQ(d.Text("DecelText"), "3000");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed, 1.25F);
  EXPECT_EQ(d.Line().Accel, 321);
  EXPECT_EQ(d.Line().Decel, 3000);
}

TEST(FeedLength, SlidersEndWhereTheDriveDoes) {
  FeedBench d;
  d.program.Axis.DriveModel[0] = 10;
  d.Open();
  EXPECT_EQ(d.Ends("SpeedBar"), std::pair(1, 4000));
  EXPECT_EQ(d.Ends("AccelBar"), std::pair(1, 3000));
  d.program.Axis.DriveModel[0] = 3;
  d.program.Axis.StepsPerRev[0] = 200;
  d.Open();
  EXPECT_EQ(d.Ends("SpeedBar"), std::pair(10, 4000));
  EXPECT_EQ(d.Ends("AccelBar"), std::pair(10, 3000));
  EXPECT_EQ(d.Ends("decelbar"), std::pair(10, 3000));
}

TEST(FeedLength, ARecordBeyondASlidersEndShowsItsTextAsStoredAndIsForcedAtOK) {
  FeedBench d;
  d.Line().Speed = 75;
  d.Line().Accel = 0;
  d.Line().Decel = 4000;
  d.Line().Dist = 0;
  d.Open();
  EXPECT_EQ(d.Text("SpeedText"), "75.000");
  EXPECT_EQ(d.Position("SpeedBar"), 2000);
  EXPECT_EQ(d.Text("AccelText"), "0");
  EXPECT_EQ(d.Position("AccelBar"), 1);
  EXPECT_EQ(d.Text("DecelText"), "4000");
  EXPECT_EQ(d.Text("disttext"), "0");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed, 50.0F);
  EXPECT_EQ(d.Line().Accel, 1);
  EXPECT_EQ(d.Line().Decel, 3000);
  EXPECT_EQ(d.Line().Dist, 1);
}

TEST(FeedLength, CancelAfterMovingASliderLeavesTheRecordsSpeedAsItWas) {
  FeedBench d;
  const Instruction before = d.Line();
  d.Open();
  d.Move("SpeedBar", 1);
  d.Enter("disttext", "5");
  d.form.Cancel();
  EXPECT_EQ(d.Line(), before);
}

TEST(FeedLength, EnterTakesTheSpeedShowsItAndStays) {
  FeedBench d;
  const Instruction before = d.Line();
  d.Open();
  d.Type("SpeedText", "1.2345");
  d.form.Enter();
  EXPECT_EQ(d.Text("SpeedText"), "1.2325");
  EXPECT_EQ(d.Line(), before);
}

const std::vector<std::string> kSecondSpeed = {"frameFLSO", "Dist2Text",  "dist2unit",  "getmmidst2",
                                               "CStoLabel", "speed2text", "speed2unit", "getmmispd2"};

TEST(FeedLength, TheChangeOfSpeedShowsItsBlock) {
  FeedBench d;
  d.Open();
  EXPECT_TRUE(d.Seen(kSecondSpeed).empty());
  d.Click("ChkChangeSpeed");
  EXPECT_EQ(d.Seen(kSecondSpeed), kSecondSpeed);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, FLCS);
  d.Open();
  EXPECT_TRUE(d.Checked("ChkChangeSpeed"));
  d.Click("ChkChangeSpeed");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, FL);
  EXPECT_EQ(d.Line().Dist2, 30000) << "is written all the same";
  EXPECT_EQ(d.Line().Speed2, 1.25F);
}

TEST(FeedLength, ASecondSpeedTypedHigherThanTheFirstShowsTheFirstAtOnce) {
  FeedBench d;
  d.Line().Type = FLCS;
  d.Open();
  d.Enter("speed2text", "7");
  EXPECT_EQ(d.Text("speed2text"), "2.500");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed2, 2.5F);
}

TEST(FeedLength, ASecondSpeedKeepsWhatNoSliderCutsAway) {
  FeedBench d;
  d.Line().Type = FLCS;
  d.Open();
  d.Enter("speed2text", "1.2345");
  EXPECT_EQ(d.Text("speed2text"), "1.2325");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed2, 1.2325F);
}

TEST(FeedLength, TheSecondSpeedIsHeldBelowTheFirstAtOKToo) {
  FeedBench d;
  d.Line().Type = FLCS;
  d.Open();
  d.Move("SpeedBar", 40);
  EXPECT_EQ(d.Text("speed2text"), "1.250");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed2, 1.0F);
  d.Line().Type = FL;
  d.Line().Speed2 = 0;
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed2, 0) << "a move at one speed has none to hold";
}

TEST(FeedLength, AVariableDimsItsEntryAndShowsItsName) {
  const struct {
    const char* check_box;
    const char* list;
    std::vector<const char*> dimmed;
  } rows[] = {{"getmmidst", "dstname", {"disttext"}},
              {"GetMMISpd", "spdname", {"SpeedText", "SpeedBar"}},
              {"getmmidst2", "dst2name", {"Dist2Text"}},
              {"getmmispd2", "spd2name", {"speed2text"}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.check_box);
    FeedBench d;
    d.Line().Type = FLCS;
    d.Open();
    EXPECT_FALSE(d.Visible(row.list));
    EXPECT_FALSE(d.Visible("lblvarname"));
    d.Click(row.check_box);
    EXPECT_TRUE(d.Visible(row.list));
    EXPECT_TRUE(d.Visible("lblvarname"));
    EXPECT_EQ(d.Caption("lblvarname"), "Name");
    for (const char* control : row.dimmed) EXPECT_FALSE(d.Enabled(control)) << control;
    d.Click(row.check_box);
    EXPECT_FALSE(d.Visible(row.list));
    for (const char* control : row.dimmed) EXPECT_TRUE(d.Enabled(control)) << control;
  }
}

TEST(FeedLength, AVariableWritesItsNumberAndAClearBoxOnlyTheFlag) {
  FeedBench d;
  d.Line().Type = FLCS;
  d.Open();
  for (const char* box : {"getmmidst", "GetMMISpd", "getmmidst2", "getmmispd2"}) d.Click(box);
  d.Choose("dstname", 7);
  d.Choose("spdname", 8);
  d.Choose("dst2name", 9);
  d.Choose("spd2name", 49);
  EXPECT_TRUE(d.OK());
  const Instruction& line = d.Line();
  EXPECT_TRUE(line.DistIsMMI && line.SpeedIsMMI && line.Dist2IsMMI && line.Speed2IsMMI);
  EXPECT_EQ(line.DistVar, 7);
  EXPECT_EQ(line.SpeedVar, 8);
  EXPECT_EQ(line.Dist2Var, 9);
  EXPECT_EQ(line.Speed2Var, 49);
  d.Open();
  for (const char* box : {"getmmidst", "GetMMISpd", "getmmidst2", "getmmispd2"}) d.Click(box);
  d.Choose("dstname", 1);
  EXPECT_TRUE(d.OK());
  EXPECT_FALSE(line.DistIsMMI || line.SpeedIsMMI || line.Dist2IsMMI || line.Speed2IsMMI);
  EXPECT_EQ(line.DistVar, 7);
}

TEST(FeedLength, TheExecutionOptionsWriteTheirFlags) {
  const struct {
    const char* option;
    bool proceed;
    bool wait_this;
  } rows[] = {{"OptProceed", true, true}, {"OptWait", false, true}, {"OptWaitAll", false, false}};
  for (const auto& row : rows) {
    FeedBench d;
    d.Open();
    d.Click(row.option);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Proceed, row.proceed) << row.option;
    EXPECT_EQ(d.Line().WaitThis, row.wait_this) << row.option;
    d.Open();
    for (const auto& other : rows) EXPECT_EQ(d.Chosen(other.option), other.option == row.option);
  }
}

TEST(FeedLength, TheDirectionWrites0Or1) {
  FeedBench d;
  d.Open();
  d.Click("cw");
  EXPECT_FALSE(d.Chosen("ccw"));
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dir, 0);
  d.Open();
  d.Click("ccw");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dir, 1);
}

TEST(FeedLength, AnAxisThatTheSmallHubDoesNotHaveShowsTheFirstAndOKWritesIt) {
  FeedBench d;
  d.program.HubIndex = HubQuad;
  d.Line().Drive = 6;
  d.Open();
  EXPECT_EQ(d.List("Drive").list.size(), 4U);
  EXPECT_EQ(d.List("Drive").index, 0);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Drive, 0);
}

TEST(FeedLength, OnAnotherAxisTheNumbersStayAndTheirMeaningMoves) {
  FeedBench d;
  InInches(d.program, 1, 2000);
  d.program.Axis.AxisName[1] = "Saw";
  d.Open();
  EXPECT_EQ(d.List("Drive").list.size(), 8U);
  EXPECT_EQ(d.List("Drive").list[1], "Saw");
  d.Enter("disttext", "20");
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Text("disttext"), "20.0");
  EXPECT_EQ(d.Caption("distunit"), "inch");
  EXPECT_EQ(d.Text("SpeedText"), "2.5000") << "inches a second now";
  EXPECT_EQ(d.Position("SpeedBar"), 10);
  EXPECT_EQ(d.Text("AccelText"), "100.0");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Drive, 1);
  EXPECT_EQ(d.Line().Dist, 40000);
  EXPECT_EQ(d.Line().Speed, 0.25F);
  EXPECT_EQ(d.Line().Accel, 10);
  EXPECT_EQ(d.Line().Dist2, 16000000) << "30000 inches are too far";
}

TEST(FeedLength, TheEndsOfTheNewAxisHoldForItsNumbers) {
  FeedBench d;
  InSteps(d.program, 1);
  d.program.Axis.DriveModel[0] = 10;
  d.Line().Speed = 80;
  d.Open();
  EXPECT_EQ(d.Position("SpeedBar"), 3200);
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Ends("SpeedBar"), std::pair(1, 2000));
  EXPECT_EQ(d.Text("SpeedText"), "50.0000");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Speed, 50.0F);
}

TEST(FeedLength, NothingOfAnEarlierLineIsLeft) {
  FeedBench d;
  d.Line(1) = {.Type = FLCS, .Dist = 5, .Dist2 = 3, .Speed = 1, .Speed2 = 0.5F, .Accel = 9, .Decel = 8};
  d.Line(1).SpeedIsMMI = true;
  d.Open();
  d.Type("disttext", "7");
  d.form.Cancel();
  d.Open(1);
  EXPECT_EQ(d.Text("disttext"), "5");
  EXPECT_TRUE(d.Visible("frameFLSO"));
  EXPECT_FALSE(d.Enabled("SpeedText"));
  const Instruction before = d.Line(1);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(1), before);
}

}  // namespace
}  // namespace tavlo::testing
