// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "motion/units.h"

#include <gtest/gtest.h>

#include <limits>

#include "motion/scaled_program.h"

namespace tavlo {
namespace {

using testing::NewProgram;
using testing::WithScale;

TEST(StepsPerRev, EveryCodeHasItsResolution) {
  constexpr int kSteps[] = {200,   400,   1000,  2000,  5000,  10000, 12800, 18000,
                            20000, 21600, 25000, 25400, 25600, 36000, 50000, 50800};
  Program program = NewProgram();
  program.Axis.StepsPerRev[2] = 12345;
  for (int code = 0; code < 16; ++code) {
    program.Axis.StepResCode[2] = static_cast<std::int16_t>(code);
    EXPECT_EQ(GetStepsPerRev(program, 2), kSteps[code]) << code;
  }
  program.Axis.StepResCode[2] = 16;
  EXPECT_EQ(GetStepsPerRev(program, 2), 12345);
  for (const int code : {-1, 17, 32767, -32768}) {
    program.Axis.StepResCode[2] = static_cast<std::int16_t>(code);
    EXPECT_EQ(GetStepsPerRev(program, 2), 0) << code;
  }
}

TEST(StepsPerRev, AnAxisOutsideTheSlotsHasNone) {
  const Program program = NewProgram();
  for (const int axis : {-1, 9, 255, 32767, -32768}) EXPECT_EQ(GetStepsPerRev(program, axis), 0);
}

TEST(Conversion, WithUAndREqualTheUserUnitIsTheRevolution) {
  const Program program = WithScale(20000, 20000);
  for (const double x : {0.0, 1.0, 2.5, 49.9975}) {
    EXPECT_DOUBLE_EQ(UserToRev(program, x, 0), x);
    EXPECT_DOUBLE_EQ(RevToUser(program, x, 0), x);
  }
}

TEST(Conversion, UserToRevIsXTimesUOverRAndRevToUserTheInverse) {
  const Program program = WithScale(20000, 5000);
  EXPECT_DOUBLE_EQ(UserToRev(program, 4, 0), 1);
  EXPECT_DOUBLE_EQ(RevToUser(program, 1, 0), 4);
}

TEST(Conversion, TheyDoNotLookAtUseUnitsAndTheShownOnesDo) {
  const Program units = WithScale(20000, 5000, true);
  const Program steps = WithScale(20000, 5000, false);
  EXPECT_DOUBLE_EQ(UserToRev(steps, 4, 0), 1);
  EXPECT_DOUBLE_EQ(RevToUser(steps, 1, 0), 4);
  EXPECT_DOUBLE_EQ(ShownSpeed(units, 1, 0), 4);
  EXPECT_DOUBLE_EQ(ShownSpeed(steps, 1, 0), 1);
  EXPECT_DOUBLE_EQ(ShownDist(units, 10000, 0), 2);
  EXPECT_DOUBLE_EQ(ShownDist(steps, 10000, 0), 10000);
}

TEST(Format, DistancesInUnitsAndInSteps) {
  EXPECT_EQ(FormatDist(WithScale(20000, 20000), 20000, 0), "1.0");
  EXPECT_EQ(FormatDist(WithScale(20000, 20000), 1, 0), "0.00005");
  EXPECT_EQ(FormatDist(WithScale(20000, 3000), 1000, 0), "0.33333");
  EXPECT_EQ(FormatDist(WithScale(20000, 20000), -50000, 0), "-2.5");
  EXPECT_EQ(FormatDist(WithScale(20000, 20000, false), 20000, 0), "20000");
  EXPECT_EQ(FormatDist(WithScale(20000, 20000, false), 0, 0), "0");
}

TEST(Format, SpeedsInUnitsAndInRevolutions) {
  EXPECT_EQ(FormatSpeed(WithScale(20000, 20000), 3, 0), "3.0000");
  EXPECT_EQ(FormatSpeed(WithScale(20000, 5000), 1.2325, 0), "4.9300");
  EXPECT_EQ(FormatSpeed(WithScale(20000, 20000, false), 3, 0), "3.000");
  EXPECT_EQ(FormatSpeed(WithScale(20000, 20000, false), 1.2325, 0), "1.2325");
}

TEST(Format, AccelerationsByTheScaleOfTheAxis) {
  EXPECT_EQ(FormatAccel(WithScale(20000, 20000), 100, 0), "100.0");
  EXPECT_EQ(FormatAccel(WithScale(20000, 12000), 1, 0), "1.67");
  EXPECT_EQ(FormatAccel(WithScale(20000, 3000), 1, 0), "6.7");
  EXPECT_EQ(FormatAccel(WithScale(20000, 300), 1, 0), "67");
  EXPECT_EQ(FormatAccel(WithScale(20000, 20000, false), 2.5, 0), "2");
  EXPECT_EQ(FormatAccel(WithScale(20000, 20000, false), 99.6, 0), "100");
}

TEST(Format, AccelFormatForGoesByTheStepsPerUnit) {
  struct {
    int steps_per_unit;
    std::string_view picture;
  } const cases[] = {{50000, "###0.0#"}, {10000, "###0.0#"}, {9999, "###0.0"},
                     {1000, "###0.0"},   {999, "####"},      {1, "####"}};
  for (const auto& c : cases) {
    EXPECT_EQ(AccelFormatFor(WithScale(20000, c.steps_per_unit), 0), c.picture) << c.steps_per_unit;
  }
}

TEST(Format, AnAccelerationBelowHalfAUserUnitWithUBelow1000ShowsAsAnEmptyText) {
  EXPECT_EQ(FormatAccel(WithScale(400, 999), 1, 0), "");
  EXPECT_EQ(FormatAccel(WithScale(500, 999), 1, 0), "1");
}

struct SpeedLimitRow {
  int model;
  bool fast;
};

TEST(Limits, OnlyServosAndModel3Reach100RevPerSecondUpTo25400Steps) {
  for (int model = 0; model <= 51; ++model) {
    const bool fast = model == 3 || (model >= 8 && model <= 18) || (model >= 48 && model <= 50);
    Program program = WithScale(25400, 20000);
    program.Axis.DriveModel[0] = static_cast<std::int16_t>(model);
    EXPECT_EQ(MaxSpeed(program, 0), fast ? 100 : 50) << model;
    program.Axis.StepsPerRev[0] = 25401;
    EXPECT_EQ(MaxSpeed(program, 0), 50) << model;
  }
}

TEST(Limits, AnAxisOfModelCode10HasMaxSpeed100AtR25400And50At25600) {
  Program program = NewProgram();
  program.Axis.DriveModel[0] = 10;
  program.Axis.StepResCode[0] = 11;
  EXPECT_EQ(MaxSpeed(program, 0), 100);
  program.Axis.StepResCode[0] = 12;
  EXPECT_EQ(MaxSpeed(program, 0), 50);
}

TEST(Limits, Model3LooksAtTheFreeStepsPerRevWhateverTheCodeSays) {
  struct {
    int steps_per_rev;
    double min_speed;
    int min_accel;
  } const cases[] = {{200, 0.25, 10},  {399, 0.25, 10},  {400, 0.125, 5},
                     {1999, 0.125, 5}, {2000, 0.025, 1}, {8000, 0.025, 1}};
  for (const auto& c : cases) {
    for (const int code : {0, 8, 16}) {
      Program program = NewProgram();
      program.Axis.StepResCode[0] = static_cast<std::int16_t>(code);
      program.Axis.StepsPerRev[0] = c.steps_per_rev;
      program.Axis.DriveModel[0] = 3;
      EXPECT_EQ(MinSpeed(program, 0), c.min_speed) << c.steps_per_rev;
      EXPECT_EQ(MinAccel(program, 0), c.min_accel) << c.steps_per_rev;
      program.Axis.DriveModel[0] = 1;
      EXPECT_EQ(MinSpeed(program, 0), 0.025);
      EXPECT_EQ(MinAccel(program, 0), 1);
    }
  }
}

TEST(Limits, HighestAccelerationAndLongestMove) {
  EXPECT_EQ(kMaxAccel, 3000);
  EXPECT_EQ(kMaxSteps, 16000000);
}

TEST(Limits, Round4CutsTowardMinusInfinityToFourDecimals) {
  EXPECT_DOUBLE_EQ(Round4(1.23456), 1.2345);
  EXPECT_DOUBLE_EQ(Round4(1.99999), 1.9999);
  EXPECT_DOUBLE_EQ(Round4(-1.23451), -1.2346);
  EXPECT_DOUBLE_EQ(Round4(800), 800);
}

TEST(Limits, SliderEndsAreSpeedsTimes40) {
  Program program = NewProgram();
  SliderEnds ends = BarEnds(program, 0);
  EXPECT_EQ(ends.speed_min, 1);
  EXPECT_EQ(ends.speed_max, 2000);
  EXPECT_EQ(ends.accel_min, 1);
  program.Axis.DriveModel[0] = 3;
  program.Axis.StepsPerRev[0] = 200;
  ends = BarEnds(program, 0);
  EXPECT_EQ(ends.speed_min, 10);
  EXPECT_EQ(ends.speed_max, 4000);
  EXPECT_EQ(ends.accel_min, 10);
}

TEST(Conversion, ScalesOfZeroAndAxesOutsideTheSlotsAreNoCrash) {
  const Program zero = WithScale(0, 0);
  const Program normal = NewProgram();
  for (const Program* program : {&zero, &normal}) {
    for (const int axis : {0, -1, 9, 32767, -32768}) {
      (void)UserToRev(*program, 1, axis);
      (void)RevToUser(*program, 1, axis);
      (void)FormatDist(*program, 1, axis);
      (void)FormatSpeed(*program, 1, axis);
      (void)FormatAccel(*program, 1, axis);
      (void)AccelFormatFor(*program, axis);
      (void)BarEnds(*program, axis);
      (void)CleanUpSpeed(*program, "1", axis);
      (void)CleanUpSpeed2(*program, "1", axis, 2);
      (void)CleanUpAccel(*program, "1", axis);
      (void)CleanUpJogAccel(*program, "1", axis);
      (void)CleanUpDist(*program, "1", axis);
      (void)CleanUpPosition(*program, "-1", axis);
      EXPECT_GT(MinSpeed(*program, axis), 0);
    }
  }
}

}  // namespace
}  // namespace tavlo
