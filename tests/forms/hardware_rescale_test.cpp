// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "forms/hardware_bench.h"
#include "motion/units.h"

namespace tavlo {
namespace {

using testing::HardwareBench;

/// A program that moves axes 1, 2 and 7.
struct Moving : HardwareBench {
  Moving() {
    program.Prog[3] = {
        .Type = FL, .Dist = 40000, .Dist2 = 1, .Speed = 2, .Accel = 100, .Decel = 100, .Drive = 0};
    program.Prog[4] = {.Type = FP, .Dist = 1000, .Speed = 1, .Accel = 50, .Decel = 50, .Drive = 1};
    program.Prog[5] = {.Type = FL, .Dist = 8000, .Speed = 4, .Accel = 200, .Decel = 200, .Drive = 6};
    for (const int line : {3, 4, 5}) {
      Instruction& record = program.Prog[line];
      record.SafetyDist = record.Dist2 = 1;
      record.RetSpeed = record.Speed2 = record.JogSpeed = 1;
      record.JogLRSpeed = record.JogUDSpeed = 1;
      record.JogAccel = record.JogLRAccel = record.JogUDAccel = 100;
    }
    Open();
  }
};

TEST(HardwareRescale, AMereOKChangesNoLineAndNoResolution) {
  Moving d;
  const Program before = d.program;
  ASSERT_TRUE(d.OK());
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.program.Prog, before.Prog);
  EXPECT_EQ(d.program.Axis, before.Axis) << "axis 7 keeps its code 8 although its box shows 8000";
}

TEST(HardwareRescale, ATouchedRowStoresItsStepsPerRevAsTold) {
  Moving d;
  d.Enter("TxtAxisName(6)", "Feeder");
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.StepResCode[6], 16);
  EXPECT_EQ(d.program.Axis.StepsPerRev[6], 8000);
  ASSERT_EQ(d.boxes.shown.size(), 1U) << "and the operator is told what becomes of its moves";
  EXPECT_FLOAT_EQ(d.program.Prog[5].Speed, 10.0F) << "4 * 20000 / 8000";
}

TEST(HardwareRescale, ARowThatWasTouchedAndPutBackCountsAsUntouched) {
  Moving d;
  d.Enter("TxtAxisName(6)", "Feeder");
  d.Enter("TxtAxisName(6)", "Axis 7");
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.StepResCode[6], 8);
}

TEST(HardwareRescale, NewUnitsRescaleTheProgramSoThatTheNumbersStay) {
  Moving d;
  d.Enter("TxtUUpitch(0)", "10000");
  ASSERT_TRUE(d.OK());
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(
      d.boxes.shown[0].text,
      "These settings change 1 program line: distances, speeds and accelerations are rescaled, so that they "
      "keep their numbers in user units, and held to the limits of the drives.");
  EXPECT_EQ(d.boxes.shown[0].buttons, Buttons::OKCancel);
  EXPECT_EQ(d.program.Prog[3].Dist, 20000);
  EXPECT_EQ(d.program.Prog[3].Speed, 1.0F);
  EXPECT_EQ(d.program.Prog[3].Accel, 50);
  EXPECT_EQ(FormatDist(d.program, d.program.Prog[3].Dist, 0), "2.0");
  EXPECT_EQ(d.program.Prog[4].Dist, 1000) << "another axis";
}

TEST(HardwareRescale, TheOperatorSeesHowManyLinesAndMayGoBack) {
  Moving d;
  const Program before = d.program;
  d.Click("SameUnits");
  d.Enter("TxtUUpitch(0)", "4000");
  d.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_FALSE(d.OK());
  EXPECT_NE(d.boxes.shown.at(0).text.find("change 3 program lines"), std::string::npos);
  EXPECT_EQ(d.program.Prog, before.Prog);
  EXPECT_EQ(d.program.Axis, before.Axis);
  EXPECT_EQ(d.Text("TxtUUpitch(0)"), "4000") << "the dialog stays as it was";
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.StepsPerUnit[6], 4000);
}

TEST(HardwareRescale, AHubThatAnnouncesItselfUnderTheQuestionIsNotForgotten) {
  Moving d;
  d.Enter("TxtUUpitch(0)", "4000");
  d.boxes.on_box = [&](const testing::ShownBox&) {
    d.program.HubIndex = HubQuad;
    d.program.HubVersion = 1.38F;
  };
  ASSERT_TRUE(d.OK());
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.program.HubIndex, HubQuad);
  EXPECT_EQ(d.program.HubVersion, 1.38F);
  EXPECT_EQ(d.program.Axis.StepsPerUnit[0], 4000);
}

TEST(HardwareRescale, LinesWithoutNumbersOfMotionAreNotCounted) {
  Moving d;
  for (const int line : {3, 4, 5}) d.program.Prog[line].Type = CM;
  d.program.Prog[6].Type = WI;
  d.program.Prog[7] = {.Type = MMI, .SubType = DisplayOnly};
  d.program.Prog[8] = {.Type = MMI, .SubType = WaitEnter, .JogUDDrive = 0};
  d.Open();
  d.Enter("TxtUUpitch(0)", "10000");
  ASSERT_TRUE(d.OK());
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(HardwareRescale, APositionOf0BecomesPosition1WithoutAWord) {
  Moving d;
  d.program.Prog[4].Dist = 0;
  d.Open();
  ASSERT_TRUE(d.OK());
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.program.Prog[4].Dist, 1);
}

TEST(HardwareRescale, JogsAreCountedByTheAxesThatTheyMove) {
  Moving d;
  for (const int line : {3, 4, 5}) d.program.Prog[line].Type = CM;
  d.program.Prog[6].Type = WI;
  d.program.Prog[6].JogOn = true;
  for (const int line : {7, 8}) {
    Instruction& prompt = d.program.Prog[line];
    prompt.Type = MMI;
    prompt.SubType = WaitEnter;
    prompt.JogUD = true;
    prompt.Drive = 0;
    prompt.JogUDDrive = line == 7 ? 0 : 3;
  }
  d.Open();
  d.Enter("TxtUUpitch(0)", "10000");
  ASSERT_TRUE(d.OK());
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_NE(d.boxes.shown[0].text.find("change 2 program lines"), std::string::npos) << d.boxes.shown[0].text;
}

TEST(HardwareRescale, AModelWithLowerLimitsIsToldToo) {
  Moving d;
  d.program.Axis.DriveModel[0] = 12;
  d.program.Prog[3].Speed = 80;
  d.Open();
  d.ChooseModel(0, 26);
  d.Choose("SPR(0)", 5);
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.program.Prog[3].Speed, 50.0F);
}

}  // namespace
}  // namespace tavlo
