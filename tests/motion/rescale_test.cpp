// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "motion/scaled_program.h"
#include "motion/units.h"

namespace tavlo {
namespace {

using testing::NewProgram;
using testing::WithScale;

/// The program after its axis 0 went from one scale to another.
struct Change {
  Program program;
  OldUnits old;
};
Change ChangeOf(std::int32_t old_u, std::int32_t new_u, std::int32_t old_r = 20000,
                std::int32_t new_r = 20000) {
  Change change{WithScale(old_r, old_u), {}};
  change.old = UnitsOf(change.program);
  change.program.Axis.StepsPerUnit[0] = new_u;
  change.program.Axis.StepsPerRev[0] = new_r;
  return change;
}
void ScaleAll(Change& change) {
  ScaleDist(change.program, change.old);
  ScaleSpeed(change.program, change.old);
  ScaleAccel(change.program, change.old);
}

TEST(Rescale, UnitsOfTakesTheStepsPerUnitAndTheEffectiveStepsPerRev) {
  const OldUnits units = UnitsOf(NewProgram());
  EXPECT_EQ(units.U[0], 20000);
  EXPECT_EQ(units.U[6], 8000);
  EXPECT_EQ(units.R[0], 20000);
}

TEST(Rescale, WithNoChangeTheFactorsAre1AndOnlyTheLimitsAct) {
  Change change = ChangeOf(20000, 20000);
  const auto before = change.program.Prog;
  ScaleAll(change);
  EXPECT_EQ(change.program.Prog, before);
  Instruction& line = change.program.Prog[0];
  line.Dist = 0, line.SafetyDist = -5, line.Dist2 = 16000001;
  line.Speed = 0, line.RetSpeed = 51;
  line.Accel = 0, line.Decel = 3001;
  ScaleAll(change);
  EXPECT_EQ(line.Dist, 1);
  EXPECT_EQ(line.SafetyDist, 1);
  EXPECT_EQ(line.Dist2, 16000000);
  EXPECT_EQ(line.Speed, 0.025F);
  EXPECT_EQ(line.RetSpeed, 50.0F);
  EXPECT_EQ(line.Accel, 1);
  EXPECT_EQ(line.Decel, 3000);
}

TEST(Rescale, DistancesGrowWithTheStepsPerUnitOnAllLinesWhateverTheirType) {
  Change change = ChangeOf(20000, 5000);
  ScaleAll(change);
  for (int i = 0; i < kLines; ++i) {
    EXPECT_EQ(change.program.Prog[i].Dist, 5000);
    EXPECT_EQ(change.program.Prog[i].Dist2, 2500);
    EXPECT_EQ(change.program.Prog[i].SafetyDist, 2500);
  }
}

TEST(Rescale, WholeValuesTieToEven) {
  Change change = ChangeOf(20000, 10000);
  change.program.Prog[0].Dist = 5;
  change.program.Prog[0].Dist2 = 7;
  change.program.Prog[0].Accel = 5;
  change.program.Prog[0].Decel = 7;
  ScaleAll(change);
  EXPECT_EQ(change.program.Prog[0].Dist, 2);
  EXPECT_EQ(change.program.Prog[0].Dist2, 4);
  EXPECT_EQ(change.program.Prog[0].Accel, 2);
  EXPECT_EQ(change.program.Prog[0].Decel, 4);
}

TEST(Rescale, AChangeOfUnitsThatMakesAStoredDistExceed16MillionStepsCutsItTo16Million) {
  Change change = ChangeOf(1000, 2000);
  change.program.Prog[3].Dist = 9000000;
  ScaleDist(change.program, change.old);
  EXPECT_EQ(change.program.Prog[3].Dist, 16000000);
}

TEST(Rescale, TheLimitsOfAPromptAreHeldToTheLongestDistanceInUserUnits) {
  Change change = ChangeOf(1000, 30000);
  Instruction& line = change.program.Prog[0];
  // 16,000,000 / 30000 = 533.3333 cut to four decimals.
  line.UpperInt = 534, line.UpperFrac = 0;
  line.LowerInt = 533, line.LowerFrac = 3333;
  change.program.Prog[1].UpperInt = 533, change.program.Prog[1].UpperFrac = 3000;
  ScaleDist(change.program, change.old);
  EXPECT_EQ(line.UpperInt, 533);
  EXPECT_EQ(line.UpperFrac, 3333);
  EXPECT_EQ(line.LowerInt, 533);
  EXPECT_EQ(line.LowerFrac, 3333);
  EXPECT_EQ(change.program.Prog[1].UpperFrac, 3000);
}

TEST(Rescale, SpeedsFollowUnitsAndResolution) {
  Change change = ChangeOf(20000, 5000, 20000, 10000);
  change.program.Prog[0].Speed = 3.0F;
  change.program.Prog[0].JogSpeed = 1.0F;
  ScaleSpeed(change.program, change.old);
  // f = 5000/20000 * 20000/10000
  EXPECT_EQ(change.program.Prog[0].Speed, 1.5F);
  EXPECT_EQ(change.program.Prog[0].RetSpeed, 1.5F);
  EXPECT_EQ(change.program.Prog[0].Speed2, 0.25F);
  EXPECT_EQ(change.program.Prog[0].JogSpeed, 0.5F);
}

TEST(Rescale, TheResultIsNotQuantised) {
  Change change = ChangeOf(20000, 7000);
  change.program.Prog[0].Speed = 1.0F;
  ScaleSpeed(change.program, change.old);
  EXPECT_EQ(change.program.Prog[0].Speed, static_cast<float>(0.35));
}

TEST(Rescale, JogFieldsGoByTheAxesTheyJog) {
  Change change = ChangeOf(20000, 40000);
  Instruction& line = change.program.Prog[0];
  line.Drive = 1;
  line.JogLRDrive = 0;
  line.JogUDDrive = 2;
  ScaleAll(change);
  EXPECT_EQ(line.Speed, 3.0F);
  EXPECT_EQ(line.JogSpeed, 1.0F);
  EXPECT_EQ(line.JogLRSpeed, 2.0F);
  EXPECT_EQ(line.JogUDSpeed, 1.0F);
  EXPECT_EQ(line.Accel, 100);
  EXPECT_EQ(line.JogAccel, 100);
  EXPECT_EQ(line.JogLRAccel, 200);
  EXPECT_EQ(line.JogUDAccel, 100);
}

TEST(Rescale, AccelerationsTakeTheSameFactorAndTheLimitsOfTheModel) {
  Change change = ChangeOf(20000, 1000);
  change.program.Axis.DriveModel[0] = 3;
  change.program.Axis.StepsPerRev[0] = 1999;
  change.program.Axis.StepResCode[0] = 8;
  ScaleAll(change);
  EXPECT_EQ(change.program.Prog[0].Accel, 5);
  EXPECT_EQ(change.program.Prog[0].Decel, 5);
  EXPECT_EQ(change.program.Prog[0].Speed2, 0.125F);
}

/// Fields that hold what no entry gives, and axes that there are not.
void MakeOdd(Program& program) {
  Instruction& line = program.Prog[0];
  line.Dist = std::numeric_limits<std::int32_t>::max();
  line.Dist2 = std::numeric_limits<std::int32_t>::min();
  line.Accel = std::numeric_limits<std::int32_t>::max();
  line.Decel = std::numeric_limits<std::int32_t>::min();
  line.Speed = std::numeric_limits<float>::max();
  line.Speed2 = std::numeric_limits<float>::infinity();
  line.RetSpeed = std::numeric_limits<float>::quiet_NaN();
  line.JogSpeed = -std::numeric_limits<float>::infinity();
  line.UpperInt = std::numeric_limits<std::int32_t>::max();
  line.LowerInt = std::numeric_limits<std::int32_t>::min();
  int next = 1;
  for (const int axis : {-1, 9, 300, 32767, -32768}) {
    Instruction& other = program.Prog[next++];
    other.Drive = other.JogLRDrive = other.JogUDDrive = static_cast<std::int16_t>(axis);
  }
}

TEST(Rescale, AnyRecordEndsWithinTheLimitsAndAnAxisThatThereIsNotIsLeftAlone) {
  Change change = ChangeOf(1, std::numeric_limits<std::int32_t>::max());
  MakeOdd(change.program);
  const auto before = change.program.Prog;
  ScaleAll(change);
  const Instruction& line = change.program.Prog[0];
  EXPECT_EQ(line.Dist, 16000000);
  EXPECT_EQ(line.Dist2, 1);
  EXPECT_EQ(line.Accel, 3000);
  EXPECT_EQ(line.Decel, 1);
  EXPECT_EQ(line.Speed, 50.0F);
  EXPECT_EQ(line.Speed2, 50.0F);
  EXPECT_EQ(line.RetSpeed, 0.025F) << "what is no number is the slowest";
  EXPECT_EQ(line.JogSpeed, 0.025F);
  // 16,000,000 / 2147483647 = 0.0074 cut to four decimals.
  EXPECT_EQ(line.UpperInt, 0);
  EXPECT_EQ(line.UpperFrac, 74);
  EXPECT_EQ(line.LowerInt, std::numeric_limits<std::int32_t>::min());
  for (int other = 1; other <= 5; ++other) EXPECT_EQ(change.program.Prog[other], before[other]) << other;
}

TEST(Rescale, AnyTwoScalesLeaveEveryFieldWithinItsLimits) {
  constexpr std::int32_t kScales[] = {
      0, -1, -20000, 1, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
  for (const std::int32_t before : kScales) {
    for (const std::int32_t after : kScales) {
      SCOPED_TRACE(std::to_string(before) + " to " + std::to_string(after));
      Change change = ChangeOf(before, after, before, after);
      MakeOdd(change.program);
      ScaleAll(change);
      const Instruction& line = change.program.Prog[0];
      for (const std::int32_t steps : {line.Dist, line.SafetyDist, line.Dist2}) {
        EXPECT_TRUE(steps >= 1 && steps <= kMaxSteps) << steps;
      }
      for (const float speed : {line.Speed, line.RetSpeed, line.Speed2, line.JogSpeed}) {
        EXPECT_TRUE(speed >= 0.025F && speed <= 50.0F) << speed;
      }
      for (const std::int32_t accel : {line.Accel, line.Decel, line.JogAccel}) {
        EXPECT_TRUE(accel >= 1 && accel <= kMaxAccel) << accel;
      }
    }
  }
}

}  // namespace
}  // namespace tavlo
