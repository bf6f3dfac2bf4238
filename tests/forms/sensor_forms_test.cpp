// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_sense.h"
#include "forms/feed_sense_ret.h"
#include "forms/form_bench.h"
#include "forms/seek_home.h"

namespace tavlo::testing {
namespace {

/// A line whose speeds are those of the sliders' grid. It stops within 312 or 313 steps.
Instruction ASearch(std::int16_t type) {
  return {.Type = type,
          .Dist = 40000,
          .SafetyDist = 60000,
          .Speed = 2.5F,
          .RetSpeed = 1.25F,
          .Dir = 1,
          .Accel = 100,
          .Decel = 200,
          .State = 3,
          .Time = 150,
          .LineNum = 41,
          .IONum = 2,
          .DistVar = 3,
          .SpeedVar = 21,
          .WaitThis = true};
}

template <class WhichForm>
struct SensorBench : FormBench<WhichForm> {
  explicit SensorBench(std::int16_t type) { this->Line() = ASearch(type); }
  [[nodiscard]] std::vector<std::string> Inputs(const std::vector<int>& numbers) {
    std::vector<std::string> names;
    for (const int number : numbers) names.push_back("OptIn(" + std::to_string(number) + ")");
    return this->Seen(names);
  }
};
struct FeedSenseBench : SensorBench<FeedSense> {
  explicit FeedSenseBench(std::int16_t type = FS) : SensorBench(type) {}
};
struct FeedSenseRetBench : SensorBench<FeedSenseRet> {
  FeedSenseRetBench() : SensorBench(FSR) {}
};
struct SeekHomeBench : SensorBench<SeekHome> {
  SeekHomeBench() : SensorBench(SH) {}
};

template <class Bench>
class EverySensorForm : public ::testing::Test {};
using SensorBenches = ::testing::Types<FeedSenseBench, FeedSenseRetBench, SeekHomeBench>;
TYPED_TEST_SUITE(EverySensorForm, SensorBenches);

TYPED_TEST(EverySensorForm, OpeningAndConfirmingChangesNothing) {
  for (const bool inches : {false, true}) {
    for (const int input : {0, 5, 128, 133}) {
      TypeParam d;
      d.program.Axis.DriveModel[0] = 20;
      if (inches) InInches(d.program, 0, 1999);
      d.Line().IONum = static_cast<std::int16_t>(input);
      const Instruction before = d.Line();
      d.Open();
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line(), before);
      EXPECT_TRUE(d.boxes.shown.empty());
    }
  }
}

TYPED_TEST(EverySensorForm, CancelGivesTheLineBack) {
  TypeParam d;
  const Instruction before = d.Line();
  d.Open();
  d.Move("SpeedBar", 1000);
  d.Click("OptIn(0)");
  d.form.Cancel();
  EXPECT_EQ(d.Line(), before);
}

TYPED_TEST(EverySensorForm, TellsTheStoppingDistanceAtOnceAndAfterEachChange) {
  TypeParam d;
  d.Line().Speed = 10;
  d.Line().Decel = 10;
  d.Line().Dist = 200000;
  d.Open();
  EXPECT_EQ(d.Caption("deceldist"), "100000");
  d.Move("SpeedBar", 200);
  EXPECT_EQ(d.Caption("deceldist"), "25000");
  d.Move("decelbar", 100);
  EXPECT_EQ(d.Caption("deceldist"), "2500");
  d.Enter("SpeedText", "10");
  EXPECT_EQ(d.Caption("deceldist"), "10000");
  d.Enter("DecelText", "3000");
  EXPECT_EQ(d.Caption("deceldist"), "333");
  d.Enter("SpeedText", "0");
  EXPECT_EQ(d.Caption("deceldist"), "1") << "never less than a step";
}

TYPED_TEST(EverySensorForm, WritesTheInputAndItsStateChosen) {
  for (int state = 0; state < 4; ++state) {
    for (const int input : {0, 1, 4, 5, 128, 129, 133}) {
      TypeParam d;
      d.program.Axis.DriveModel[0] = 21;
      d.Open();
      d.Click("OptIn(" + std::to_string(input) + ")");
      d.Click("OptState(" + std::to_string(state) + ")");
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line().IONum, input);
      EXPECT_EQ(d.Line().State, state);
      d.Open();
      EXPECT_TRUE(d.Chosen("OptIn(" + std::to_string(input) + ")"));
      EXPECT_TRUE(d.Chosen("OptState(" + std::to_string(state) + ")"));
    }
  }
}

TYPED_TEST(EverySensorForm, ALimitInputMayBeChosenOnlyWhereLimitsAreNotUsed) {
  for (const int kind : {0, 1, 2}) {
    TypeParam d;
    d.program.Axis.DriveModel[0] = 10;
    d.program.Axis.LimitKind[0] = static_cast<std::int16_t>(kind);
    d.Open();
    EXPECT_TRUE(d.Visible("OptIn(5)"));
    EXPECT_EQ(d.Enabled("OptIn(5)"), kind == 2);
    EXPECT_TRUE(d.Enabled("OptIn(4)"));
    d.program.Axis.DriveModel[0] = 25;
    d.Open();
    EXPECT_TRUE(d.Visible("OptIn(134)"));
    EXPECT_EQ(d.Enabled("OptIn(134)"), kind == 2);
    EXPECT_EQ(d.Enabled("OptIn(135)"), kind == 2);
    EXPECT_TRUE(d.Enabled("OptIn(133)"));
  }
}

TYPED_TEST(EverySensorForm, OfferOfAnOldServoIsTheIndexAlone) {
  const struct {
    int model;
    bool index;
  } rows[] = {{1, false}, {8, true}, {9, true}, {10, false}, {48, true}, {49, true}, {50, true}};
  for (const auto& row : rows) {
    TypeParam d;
    d.program.Axis.DriveModel[0] = static_cast<std::int16_t>(row.model);
    d.Open();
    EXPECT_EQ(d.Inputs({128, 129, 130, 131, 132, 133, 134, 135}).size(), row.index ? 1U : 0U) << row.model;
    EXPECT_EQ(d.Visible("OptIn(128)"), row.index) << row.model;
    EXPECT_EQ(d.Visible("lblservo"), row.index) << row.model;
    EXPECT_EQ(d.Caption("lblservo"), "(servo only)");
  }
}

TYPED_TEST(EverySensorForm, AnAxisWithoutTheInputTakesTheFirstThatItHas) {
  TypeParam d;
  d.program.Axis.DriveModel[0] = 20;
  d.program.Axis.DriveModel[1] = 1;
  d.Line().IONum = 130;
  d.Open();
  d.Choose("Drive", 1);
  EXPECT_TRUE(d.Chosen("OptIn(0)"));
  EXPECT_FALSE(d.Chosen("OptIn(130)"));
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().IONum, 0);
  EXPECT_EQ(d.Line().Drive, 1);
}

TYPED_TEST(EverySensorForm, AnAxisThatHasTheInputKeepsIt) {
  TypeParam d;
  d.program.Axis.DriveModel[0] = 20;
  d.program.Axis.DriveModel[1] = 30;
  d.Line().IONum = 130;
  d.Open();
  d.Choose("Drive", 1);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().IONum, 130);
}

TYPED_TEST(EverySensorForm, TheStoppingDistanceGoesByTheNewAxis) {
  TypeParam d;
  InSteps(d.program, 1);
  d.program.Axis.StepResCode[1] = 3;
  d.Line().Speed = 10;
  d.Line().Decel = 10;
  d.Line().Dist = 150000;
  d.Open();
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Caption("deceldist"), "10000") << "2000 steps to a revolution";
}

template <class Bench>
class EverySensorFeed : public ::testing::Test {};
using FeedBenches = ::testing::Types<FeedSenseBench, FeedSenseRetBench>;
TYPED_TEST_SUITE(EverySensorFeed, FeedBenches);

TYPED_TEST(EverySensorFeed, ADistanceShorterThanItTakesToStopIsRaised) {
  TypeParam d;
  d.Line().Speed = 10;
  d.Line().Decel = 10;
  d.Line().Dist = 100;
  d.Open();
  EXPECT_EQ(d.Text("disttext"), "100000") << "at once";
  d.Enter("disttext", "5");
  EXPECT_EQ(d.Text("disttext"), "100000");
  d.Enter("disttext", "120000");
  EXPECT_EQ(d.Text("disttext"), "120000");
  d.Move("SpeedBar", 800);
  EXPECT_EQ(d.Text("disttext"), "400000") << "a faster move";
  d.Move("SpeedBar", 400);
  EXPECT_EQ(d.Text("disttext"), "400000") << "a slower one needs no less";
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 400000);
}

TYPED_TEST(EverySensorFeed, ADistanceThatIsBeingTypedIsRaisedWhenItIsLeft) {
  TypeParam d;
  d.Open();
  d.Type("disttext", "70000");
  d.Move("SpeedBar", 100);
  EXPECT_EQ(d.Text("disttext"), "70000");
  d.Type("disttext", "7");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 312) << "2.5 rev/s, 200 rev/s/s: 312.5 steps, ties to even";
}

TYPED_TEST(EverySensorFeed, TheFarthestDistanceWinsOverTheStoppingDistance) {
  TypeParam d;
  d.Line().Speed = 50;
  d.Line().Decel = 1;
  d.Open();
  EXPECT_EQ(d.Caption("deceldist"), "25000000");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 16000000);
}

TYPED_TEST(EverySensorFeed, CountsInTheUnitsOfTheAxis) {
  TypeParam d;
  InInches(d.program, 0, 2000);
  d.Line().Speed = 10;
  d.Line().Decel = 10;
  d.Open();
  EXPECT_EQ(d.Caption("distunit"), "inch beyond sensor");
  EXPECT_EQ(d.Caption("deceldist"), "50.0");
  EXPECT_EQ(d.Caption("deceldistunit"), "inch");
  EXPECT_EQ(d.Text("disttext"), "50.0");
  EXPECT_EQ(d.Caption("speedunit"), "inch/sec");
  EXPECT_EQ(d.Caption("accelunit"), "inch/sec/sec");
  EXPECT_EQ(d.Caption("decelunit"), "inch/sec/sec");
  InSteps(d.program, 0);
  d.Open();
  EXPECT_EQ(d.Caption("distunit"), "Steps beyond sensor");
  EXPECT_EQ(d.Caption("deceldistunit"), "Steps");
  EXPECT_EQ(d.Caption("speedunit"), "Rev/sec");
  EXPECT_EQ(d.Caption("decelunit"), "Rev/sec/sec");
}

TYPED_TEST(EverySensorFeed, AStoredInputThatTheAxisDoesNotOfferGivesWayToTheFirst) {
  for (const int input : {7, 8, 127, 128, 136, -1, 32767}) {
    TypeParam d;
    d.program.Axis.DriveModel[0] = 10;
    d.Line().IONum = static_cast<std::int16_t>(input);
    d.Open();
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().IONum, 0) << input;
  }
}

TYPED_TEST(EverySensorFeed, AVariableTakesThePlaceOfDistanceOrSpeed) {
  TypeParam d;
  d.Open();
  d.Click("getmmidst");
  d.Click("GetMMISpd");
  d.Choose("dstname", 7);
  d.Choose("spdname", 22);
  EXPECT_FALSE(d.Enabled("disttext"));
  EXPECT_FALSE(d.Enabled("SpeedBar"));
  EXPECT_TRUE(d.OK());
  EXPECT_TRUE(d.Line().DistIsMMI && d.Line().SpeedIsMMI);
  EXPECT_EQ(d.Line().DistVar, 7);
  EXPECT_EQ(d.Line().SpeedVar, 22);
}

const std::vector<std::string> kSafety = {"SafetyDist", "SafetyLine", "Spin1"};

TEST(FeedSense, ASafetyDistanceMakesItAnotherKindOfLine) {
  FeedSenseBench d;
  d.Open();
  EXPECT_FALSE(d.Checked("ChkSafety"));
  for (const std::string& control : kSafety) EXPECT_FALSE(d.Enabled(control)) << control;
  EXPECT_EQ(d.Text("SafetyDist"), "60000");
  EXPECT_EQ(d.Text("SafetyLine"), "42");
  EXPECT_EQ(d.Caption("sfdistunit"), "Steps");
  d.Click("ChkSafety");
  for (const std::string& control : kSafety) EXPECT_TRUE(d.Enabled(control)) << control;
  d.Enter("SafetyDist", "0");
  EXPECT_EQ(d.Text("SafetyDist"), "1");
  d.Enter("SafetyLine", "201");
  EXPECT_EQ(d.Text("SafetyLine"), "200");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, FSS);
  EXPECT_EQ(d.Line().SafetyDist, 1);
  EXPECT_EQ(d.Line().LineNum, 199);
  d.Open();
  EXPECT_TRUE(d.Checked("ChkSafety"));
}

TEST(FeedSense, SafetyDistanceAndLineAreWrittenWithoutItToo) {
  FeedSenseBench d(FSS);
  d.Open();
  d.Enter("SafetyDist", "70000");
  d.Enter("SafetyLine", "0");
  d.Click("ChkSafety");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, FS);
  EXPECT_EQ(d.Line().SafetyDist, 70000);
  EXPECT_EQ(d.Line().LineNum, 0);
}

TEST(FeedSense, TheSafetyDistanceFollowsTheAxisAndOpeningItKeepsItsKind) {
  FeedSenseBench d(FSS);
  InInches(d.program, 1, 2000);
  const Instruction before = d.Line();
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), before);
  d.Open();
  d.Enter("SafetyDist", "20");
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Text("SafetyDist"), "20.0");
  EXPECT_EQ(d.Caption("sfdistunit"), "inch");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().SafetyDist, 40000);
}

TEST(FeedSenseRet, ShowsTheWayBackAndWritesIt) {
  FeedSenseRetBench d;
  d.Open();
  EXPECT_EQ(d.Text("retdelay"), "1.50");
  EXPECT_EQ(d.Position("retdelaybar"), 150);
  EXPECT_EQ(d.Text("retspeedtext"), "1.250");
  EXPECT_EQ(d.Position("RetSpeedBar"), 50);
  d.Enter("retspeedtext", "5");
  d.Enter("retdelay", "400");
  EXPECT_EQ(d.Text("retdelay"), "300.00");
  EXPECT_EQ(d.Caption("deceldist"), "312") << "goes by the way there";
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, FSR);
  EXPECT_EQ(d.Line().RetSpeed, 5.0F);
  EXPECT_EQ(d.Line().Time, 30000);
}

TEST(FeedSenseRet, LeavesSafetyDistanceAndLineAlone) {
  FeedSenseRetBench d;
  d.Line().LineNum = 777;
  d.Line().SafetyDist = -3;
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().LineNum, 777);
  EXPECT_EQ(d.Line().SafetyDist, -3);
}

TEST(SeekHome, ShowsTheClearance) {
  SeekHomeBench d;
  InInches(d.program, 0, 2000);
  d.Line().Speed = 10;
  d.Line().Decel = 10;
  d.Open();
  EXPECT_EQ(d.Caption("LblClearance"), "Required clearance between limits && hard stop");
  EXPECT_EQ(d.Caption("deceldist"), "50.000");
  d.Enter("SpeedText", "0");
  EXPECT_EQ(d.Caption("deceldist"), "0.001") << "a step of 0.0005 inches";
  EXPECT_EQ(d.form.First().name, "SpeedText");
}

TEST(SeekHome, HasNoDistanceAndNoVariablesAndWritesNone) {
  SeekHomeBench d;
  d.Line().Dist = -5;
  d.Line().DistIsMMI = d.Line().SpeedIsMMI = true;
  d.Open();
  EXPECT_TRUE(d.Enabled("SpeedText"));
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, SH);
  EXPECT_EQ(d.Line().Dist, -5);
  EXPECT_TRUE(d.Line().DistIsMMI);
  EXPECT_TRUE(d.Line().SpeedIsMMI);
}

TEST(SeekHome, RefusesAStoredInputThatCannotBeChosen) {
  const struct {
    int model;
    int input;
    int limits;
  } rows[] = {{1, 6, 2}, {1, 7, 2}, {1, 128, 2}, {10, 5, 0}, {20, 134, 1}, {36, 4, 2}, {8, 129, 2}};
  for (const auto& row : rows) {
    SeekHomeBench d;
    d.program.Axis.DriveModel[0] = static_cast<std::int16_t>(row.model);
    d.program.Axis.LimitKind[0] = static_cast<std::int16_t>(row.limits);
    d.Line().IONum = static_cast<std::int16_t>(row.input);
    const Instruction before = d.Line();
    d.Open();
    EXPECT_FALSE(d.OK()) << row.model;
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.boxes.shown[0].text, "Please select an input for the home sensor.");
    EXPECT_EQ(d.boxes.shown[0].title, "Error");
    EXPECT_EQ(d.Line(), before);
    d.Click("OptIn(2)");
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().IONum, 2);
  }
}

}  // namespace
}  // namespace tavlo::testing
