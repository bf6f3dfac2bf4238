// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_posn.h"
#include "forms/feed_return.h"
#include "forms/form_bench.h"
#include "forms/start_stop.h"

namespace tavlo::testing {
namespace {

/// A line whose speeds are those of the sliders' grid.
Instruction AMove(std::int16_t type) {
  return {.Type = type,
          .Dist = 40000,
          .Speed = 2.5F,
          .RetSpeed = 1.25F,
          .Dir = 1,
          .Accel = 100,
          .Decel = 200,
          .Time = 150,
          .SubType = StartAxis,
          .DistVar = 3,
          .SpeedVar = 21,
          .WaitThis = true};
}

TEST(FeedReturn, ShowsTheWayBackAndWritesIt) {
  FormBench<FeedReturn> d;
  d.Line() = AMove(FR);
  d.Open();
  EXPECT_EQ(d.Text("retdelay"), "1.50");
  EXPECT_EQ(d.Position("retdelaybar"), 150);
  EXPECT_EQ(d.Text("retspeedtext"), "1.250");
  EXPECT_EQ(d.Position("RetSpeedBar"), 50);
  EXPECT_EQ(d.Caption("retspeedunit"), "Rev/sec");
  d.Enter("retdelay", "0");
  EXPECT_EQ(d.Text("retdelay"), "0.01");
  d.Enter("retspeedtext", "1.2345");
  EXPECT_EQ(d.Text("retspeedtext"), "1.2325");
  d.Move("retdelaybar", 999);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, FR);
  EXPECT_EQ(d.Line().Time, 999);
  EXPECT_EQ(d.Line().RetSpeed, 1.225F);
  EXPECT_EQ(d.Line().Speed, 2.5F);
}

TEST(FeedReturn, TheVariableOfTheSpeedIsForTheWayThereAlone) {
  FormBench<FeedReturn> d;
  d.Line() = AMove(FR);
  d.Open();
  d.Click("GetMMISpd");
  EXPECT_FALSE(d.Enabled("SpeedText"));
  EXPECT_TRUE(d.Enabled("retspeedtext"));
  EXPECT_TRUE(d.Enabled("RetSpeedBar"));
}

TEST(FeedReturn, OnAnotherAxisTheWayBackGoesByItsUnitsToo) {
  FormBench<FeedReturn> d;
  InInches(d.program, 1, 2000);
  d.Line() = AMove(FR);
  d.Open();
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Caption("retspeedunit"), "inch/sec");
  EXPECT_EQ(d.Text("retspeedtext"), "1.2500");
  EXPECT_EQ(d.Position("RetSpeedBar"), 5);
}

template <class WhichForm>
void ExpectUnchanged(const Instruction& line) {
  FormBench<WhichForm> d;
  d.Line() = line;
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), line);
  d.form.Enter();
  d.form.Cancel();
  EXPECT_EQ(d.Line(), line);
}

TEST(Moves, OpeningAndConfirmingChangesNothing) {
  ExpectUnchanged<FeedReturn>(AMove(FR));
  ExpectUnchanged<FeedPosn>(AMove(FP));
  ExpectUnchanged<StartStop>(AMove(SS));
}

TEST(FeedPosn, APositionOfMinus100IsADistanceOf100OnTheOtherSide) {
  FormBench<FeedPosn> d;
  d.Line() = AMove(FP);
  d.Open();
  EXPECT_EQ(d.Text("disttext"), "-40000");
  d.Enter("disttext", "-100");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, FP);
  EXPECT_EQ(d.Line().Dist, 100);
  EXPECT_EQ(d.Line().Dir, 1);
  d.Open();
  d.Enter("disttext", "25.5");
  EXPECT_EQ(d.Text("disttext"), "26");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 26);
  EXPECT_EQ(d.Line().Dir, 0);
}

TEST(FeedPosn, APositionIsForcedIntoItsRange) {
  const struct {
    const char* typed;
    std::int32_t dist;
    int dir;
  } rows[] = {
      {"16000001", 16000000, 0}, {"-16000001", 16000000, 1}, {"there", 0, 0}, {"", 0, 0}, {"-0.4", 0, 0}};
  for (const auto& row : rows) {
    FormBench<FeedPosn> d;
    d.Open();
    d.Enter("disttext", row.typed);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Dist, row.dist) << row.typed;
    EXPECT_EQ(d.Line().Dir, row.dir) << row.typed;
  }
}

TEST(FeedPosn, ADamagedDistanceIsForcedToo) {
  for (const std::int32_t dist : {INT32_MIN, INT32_MAX, -16000001}) {
    FormBench<FeedPosn> d;
    d.Line() = AMove(FP);
    d.Line().Dist = dist;
    d.Open();
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Dist, 16000000) << dist;
  }
}

TEST(StartStop, EachOptionHasItsControls) {
  const struct {
    const char* option;
    int sub_type;
    bool speed;
    bool direction;
    bool accel;
    bool axis;
  } rows[] = {{"optStartAxis", 3, true, true, true, true},
              {"optStopAxis", 2, false, false, false, true},
              {"optChangeSpeed", 1, true, false, false, true},
              {"optStopAll", 0, false, false, false, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.option);
    FormBench<StartStop> d;
    d.Line() = AMove(SS);
    d.Line().SubType = StopAxis;
    d.Open();
    d.Click(row.option);
    for (const char* control : {"SpeedText", "SpeedBar", "GetMMISpd"})
      EXPECT_EQ(d.Enabled(control), row.speed) << control;
    for (const char* control : {"cw", "ccw"}) EXPECT_EQ(d.Enabled(control), row.direction) << control;
    for (const char* control : {"AccelText", "AccelBar"}) EXPECT_EQ(d.Enabled(control), row.accel) << control;
    EXPECT_EQ(d.Enabled("Drive"), row.axis);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Type, SS);
    EXPECT_EQ(d.Line().SubType, row.sub_type);
    d.Open();
    for (const auto& other : rows) EXPECT_EQ(d.Chosen(other.option), other.option == row.option);
  }
}

TEST(StartStop, WritesWhatIsDimmedAsWellAndNoDeceleration) {
  FormBench<StartStop> d;
  d.Line() = AMove(SS);
  d.Open();
  d.Enter("AccelText", "77");
  d.Enter("SpeedText", "4");
  d.Click("optStopAll");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Accel, 77);
  EXPECT_EQ(d.Line().Speed, 4.0F);
  EXPECT_EQ(d.Line().Decel, 200);
}

TEST(StartStop, AVariableSpeedStaysDimmedWhenItsOptionComesBack) {
  FormBench<StartStop> d;
  d.Line() = AMove(SS);
  d.Line().SpeedIsMMI = true;
  d.Open();
  EXPECT_FALSE(d.Enabled("SpeedText"));
  d.Click("optStopAxis");
  d.Click("optChangeSpeed");
  EXPECT_FALSE(d.Enabled("SpeedText"));
  EXPECT_TRUE(d.Enabled("GetMMISpd"));
  EXPECT_TRUE(d.Visible("spdname"));
}

TEST(StartStop, AnUnknownSubTypeStopsAll) {
  FormBench<StartStop> d;
  d.Line() = AMove(SS);
  d.Line().SubType = 9;
  d.Open();
  EXPECT_TRUE(d.Chosen("optStopAll"));
}

}  // namespace
}  // namespace tavlo::testing
