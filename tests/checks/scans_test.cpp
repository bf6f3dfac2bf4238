// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "checks/scans.h"

#include <gtest/gtest.h>

#include <random>

namespace tavlo::testing {
namespace {

Program Fresh() {
  Program program;
  InitHardware(program.Axis);
  program.Axis.DriveModel.fill(11);
  InitProg(program);
  return program;
}

TEST(ScanConcurrent, ANoWaitMoveOnLine199MeetsItsOnlyFollowerAndOneOnLine200IsNotLookedAt) {
  Program program = Fresh();
  program.Prog[198].Type = FL;
  program.Prog[198].Proceed = true;
  program.Prog[199].Type = FL;
  program.Prog[199].Proceed = true;
  const auto found = ScanConcurrent(program);
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->first_line, 198);
  EXPECT_EQ(found->second_line, 199);
  program.Prog[198].Type = NO;
  EXPECT_FALSE(ScanConcurrent(program).has_value());
}

TEST(ScanConcurrent, ABranchOrAWaitingMoveEndsItAndANoWaitMoveOnAnotherAxisIsPassedOver) {
  for (const bool stops : {false, true}) {
    Program program = Fresh();
    program.Prog[0].Type = FL;
    program.Prog[0].Proceed = true;
    program.Prog[1].Type = FL;
    program.Prog[1].Drive = 1;
    program.Prog[1].Proceed = !stops;
    program.Prog[2].Type = FP;
    EXPECT_EQ(ScanConcurrent(program).has_value(), !stops);
    program.Prog[1].Type = GT;
    EXPECT_FALSE(ScanConcurrent(program).has_value());
  }
}

TEST(ScanConcurrent, WhatIsTransparentAndWhatIsAMove) {
  for (int type = 0; type < kTypes; ++type) {
    Program program = Fresh();
    program.Prog[0].Type = SH;
    program.Prog[0].Proceed = true;
    program.Prog[1].Type = static_cast<std::int16_t>(type);
    program.Prog[2].Type = FLCS;
    const auto found = ScanConcurrent(program);
    const bool move = IsMove(type);
    const bool passive = type == WT || type == SO || type == NO || type == CM || type == MMI || type == IM;
    EXPECT_EQ(found.has_value(), move || passive) << type;
    if (found) {
      EXPECT_EQ(found->second_line, move ? 1 : 2) << type;
    }
  }
}

TEST(ScanConcurrent, ASecondMoveOnTheSameAxisIsCaughtWhetherOrNotItHasProceed) {
  for (const bool proceed : {false, true}) {
    Program program = Fresh();
    program.Prog[3].Type = FS;
    program.Prog[3].Proceed = true;
    program.Prog[4].Type = FR;
    program.Prog[4].Proceed = proceed;
    EXPECT_TRUE(ScanConcurrent(program).has_value());
  }
}

TEST(CheckNone, APromptNeedsDrivesByItsKind) {
  Program program = Fresh();
  program.Axis.DriveModel[3] = 0;
  Instruction& line = program.Prog[0];
  line.Type = MMI;
  line.Drive = 3;
  for (int kind = 0; kind <= Menu; ++kind) {
    line.SubType = static_cast<std::int16_t>(kind);
    EXPECT_EQ(CheckNone(program).has_value(), kind == GetDistance || kind == GetSpeed) << kind;
  }
  line.SubType = WaitEnter;
  line.Drive = 0;
  line.JogUD = true;
  line.JogUDDrive = 3;
  ASSERT_TRUE(CheckNone(program).has_value());
  EXPECT_EQ(CheckNone(program)->axis, 3);
  program.Axis.DriveModel[2] = 0;
  line.JogLR = true;
  line.JogLRDrive = 2;
  EXPECT_EQ(CheckNone(program)->axis, 3) << "left and right first, so up and down wins";
}

TEST(CheckNone, TypesThatNameNoAxisNeedNoDriveAndTheLastOffenderWins) {
  Program program = Fresh();
  program.Axis.DriveModel.fill(0);
  for (const std::int16_t type : {WT, GT, RP, ER, NO, CM, RL, CL, RT}) {
    program.Prog[0].Type = type;
    EXPECT_FALSE(CheckNone(program).has_value()) << type;
  }
  program.Prog[0].Type = FL;
  program.Prog[5].Type = SP;
  EXPECT_EQ(CheckNone(program)->line, 5);
}

TEST(ScanProgMMI, TheSecondOperandsOfTheTwoStepMovesAreTestedToo) {
  Program program = Fresh();
  program.Prog[0].Type = FLSO;
  program.Prog[0].Dist2IsMMI = true;
  program.Prog[0].Dist2Var = 4;
  program.Prog[0].Speed2IsMMI = true;
  program.Prog[0].Speed2Var = 9;
  ASSERT_TRUE(ScanProgMMI(program).has_value());
  EXPECT_EQ(ScanProgMMI(program)->variable, 4) << "a second speed is not FLSO's";
  program.Prog[0].Type = FLCS;
  EXPECT_EQ(ScanProgMMI(program)->variable, 9);
}

TEST(ScanProgMMI, WaitsIfsAndKnobLinesAreNotTested) {
  for (const std::int16_t type : {WI, II, FE}) {
    Program program = Fresh();
    program.Prog[0].Type = type;
    program.Prog[0].CountIsMMI = program.Prog[0].DistIsMMI = true;
    EXPECT_FALSE(ScanProgMMI(program).has_value()) << type;
  }
}

TEST(ScanMMItypes, TypesFLSOAndFLCSAreNotExamined) {
  for (const std::int16_t type : {FLSO, FLCS}) {
    Program program = Fresh();
    program.Prog[0].Type = type;
    program.Prog[0].DistIsMMI = true;
    program.Prog[1].Type = MMI;
    program.Prog[1].SubType = GetSpeed;
    EXPECT_FALSE(ScanMMItypes(program).has_value()) << type;
  }
}

TEST(Scans, RecordsOfAnyValueAreScannedWithoutReachingOutside) {
  std::mt19937 random(20261121);
  const auto any = [&random] { return static_cast<std::int16_t>(random()); };
  for (int round = 0; round < 300; ++round) {
    Program program = Fresh();
    program.HubIndex = round % 2 == 0 ? HubOcto : HubQuad;
    for (int i = 0; i < kLines; ++i) {
      Instruction& line = program.Prog[i];
      line.Type = round % 3 == 0 ? any() : static_cast<std::int16_t>(random() % kTypes);
      line.SubType = static_cast<std::int16_t>(random() % 9);
      line.Drive = line.JogLRDrive = line.JogUDDrive = any();
      line.DistVar = line.SpeedVar = line.Dist2Var = line.Speed2Var = any();
      line.DistIsMMI = line.SpeedIsMMI = line.Dist2IsMMI = line.Speed2IsMMI = line.CountIsMMI = true;
      line.Proceed = line.JogLR = line.JogUD = true;
      line.IONum = line.LineNum = line.InMask = line.InState = any();
    }
    ScanLoops(program);
    FixMultiIn(program);
    const std::size_t found = BadMoveorMMIAxis(program).size() + In5678used(program).size() +
                              IOpast5(program).size() + SetOutput4(program).size();
    EXPECT_LE(found, 4u * kLines);
    for (const int line : {ScanProgMMI(program)->line, CheckNone(program)->line}) {
      EXPECT_GE(line, 0);
      EXPECT_LT(line, kLines);
    }
    static_cast<void>(ScanMMIspeeds(program));
    static_cast<void>(ScanMMItypes(program));
    static_cast<void>(ScanConcurrent(program));
  }
}

}  // namespace
}  // namespace tavlo::testing
