// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "checks/scans.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "model/kinds.h"

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

/// The lines that a scan finds among one line of each type, as types.
template <class Scan>
std::vector<int> TypesFound(Program program, Scan scan, int axis, std::int16_t input = 0) {
  for (int type = 0; type < kTypes; ++type) {
    Instruction& line = program.Prog[type];
    line.Type = static_cast<std::int16_t>(type);
    line.Drive = static_cast<std::int16_t>(axis);
    line.SubType = DisplayOnly;
    line.IONum = input;
  }
  return scan(program);
}

TEST(BadMoveorMMIAxis, FindsWhatNeedsADriveBeyondTheFourthAxis) {
  const std::vector<int> types = {FL, FR, FS, FSR, SH, FP, SP, CC, FLSO, LP, IM};
  std::vector<int> sorted = types;
  std::ranges::sort(sorted);
  EXPECT_TRUE(TypesFound(Fresh(), BadMoveorMMIAxis, 3).empty());
  for (const int axis : {4, 5, 7}) EXPECT_EQ(TypesFound(Fresh(), BadMoveorMMIAxis, axis), sorted) << axis;
  Program program = Fresh();
  program.Prog[0].Type = MMI;
  program.Prog[0].Drive = 4;
  for (int kind = 0; kind <= Menu; ++kind) {
    program.Prog[0].SubType = static_cast<std::int16_t>(kind);
    EXPECT_EQ(BadMoveorMMIAxis(program).size(), kind == GetDistance || kind == GetSpeed ? 1U : 0U) << kind;
  }
}

TEST(In5678used, FindsWaitsAndIfsOnTheHubsOwnInputsFromTheFifthOn) {
  EXPECT_TRUE(TypesFound(Fresh(), In5678used, 4, 3).empty());
  EXPECT_EQ(TypesFound(Fresh(), In5678used, 4, 4), (std::vector<int>{WI, II}));
  EXPECT_TRUE(TypesFound(Fresh(), In5678used, 3, 4).empty());
  EXPECT_TRUE(TypesFound(Fresh(), In5678used, 5, 4).empty());
}

TEST(IOpast5, FindsWaitsOutputsAndIfsBehindTheHubsOwn) {
  EXPECT_TRUE(TypesFound(Fresh(), IOpast5, 4).empty());
  for (const int axis : {5, 7}) {
    EXPECT_EQ(TypesFound(Fresh(), IOpast5, axis), (std::vector<int>{WI, SO, II})) << axis;
  }
}

TEST(FixMultiIn, CutsTheTestsOfSeveralInputsOfTheHubsOwnAxisAlone) {
  for (int type = 0; type < kTypes; ++type) {
    for (const int axis : {3, 4, 5}) {
      Program program = Fresh();
      program.Prog[9].Type = static_cast<std::int16_t>(type);
      program.Prog[9].Drive = static_cast<std::int16_t>(axis);
      program.Prog[9].InMask = 0xF3;
      program.Prog[9].InState = 0xA1;
      FixMultiIn(program);
      const bool cut = axis == 4 && (type == III || type == WII);
      EXPECT_EQ(program.Prog[9].InMask, cut ? 0x3 : 0xF3) << type << ' ' << axis;
      EXPECT_EQ(program.Prog[9].InState, cut ? 0x1 : 0xA1) << type << ' ' << axis;
    }
  }
}

TEST(SetOutput4, FindsTheFourthOutputOfADriveWithThreeOnEitherHub) {
  for (const std::int16_t hub : {HubOcto, HubQuad}) {
    Program program = Fresh();
    program.HubIndex = hub;
    program.Axis.DriveModel.fill(1);
    EXPECT_EQ(TypesFound(program, SetOutput4, 0, 3), std::vector<int>{SO});
    EXPECT_TRUE(TypesFound(program, SetOutput4, 0, 2).empty());
    EXPECT_EQ(TypesFound(program, SetOutput4, 4, 3).empty(), hub == HubQuad);
  }
}

bool IsIn(int type, const std::vector<int>& types) {
  return std::ranges::find(types, type) != types.end();
}

const std::vector<int> kPlainFeeds = {FL, FR, FS, FSR, FP, FSS};

TEST(ScanProgMMI, EachTypeTestsItsPairsOfFlagAndVariable) {
  for (int type = 0; type < kTypes; ++type) {
    const bool feed = IsIn(type, kPlainFeeds) || type == FLSO || type == FLCS;
    struct {
      bool Instruction::*flag;
      int variable;
      bool tested;
    } const pairs[] = {{&Instruction::DistIsMMI, 11, feed},
                       {&Instruction::SpeedIsMMI, 12, feed},
                       {&Instruction::Dist2IsMMI, 13, type == FLSO || type == FLCS},
                       {&Instruction::Speed2IsMMI, 14, type == FLCS},
                       {&Instruction::CountIsMMI, 11, type == RP}};
    for (const auto& pair : pairs) {
      Program program = Fresh();
      Instruction& line = program.Prog[6];
      line.Type = static_cast<std::int16_t>(type);
      line.SubType = DisplayOnly;
      // A learned position fills a variable of its own.
      line.DistVar = 11;
      line.SpeedVar = 12;
      line.Dist2Var = 13;
      line.Speed2Var = 14;
      line.*pair.flag = true;
      const auto found = ScanProgMMI(program);
      ASSERT_EQ(found.has_value(), pair.tested) << type << ' ' << pair.variable;
      if (!found) continue;
      EXPECT_EQ(found->variable, pair.variable) << type;
      EXPECT_EQ(found->line, 6) << type;
    }
  }
}

TEST(ScanProgMMI, OnlyPromptsForAValueAndLearnedPositionsFillAVariable) {
  for (int type = 0; type < kTypes; ++type) {
    for (int kind = 0; kind <= Menu; ++kind) {
      Program program = Fresh();
      program.Prog[0].Type = FL;
      program.Prog[0].DistIsMMI = true;
      program.Prog[0].DistVar = 50;
      program.Prog[199].Type = static_cast<std::int16_t>(type);
      program.Prog[199].SubType = static_cast<std::int16_t>(kind);
      program.Prog[199].DistVar = 50;
      const bool fills = type == LP || (type == MMI && kind <= GetCount);
      EXPECT_EQ(ScanProgMMI(program).has_value(), !fills) << type << ' ' << kind;
    }
  }
}

TEST(ScanMMIspeeds, LooksAtSpeedPromptsAloneAndTheLastOneWins) {
  Program program = Fresh();
  program.Axis.StepResCode.fill(16);  // its own steps per revolution
  program.Axis.StepsPerUnit.fill(10000);
  program.Axis.StepsPerRev.fill(400000);
  for (int kind = 0; kind <= Menu; ++kind) {
    program.Prog[kind].Type = MMI;
    program.Prog[kind].SubType = static_cast<std::int16_t>(kind);
    program.Prog[kind].Drive = 2;
  }
  EXPECT_FALSE(ScanMMIspeeds(program).has_value()) << "40 passes";
  program.Axis.StepsPerRev[2] = 400001;
  ASSERT_TRUE(ScanMMIspeeds(program).has_value()) << "40.0001 does not";
  EXPECT_EQ(ScanMMIspeeds(program)->line, GetSpeed);
  program.Prog[150] = program.Prog[GetSpeed];
  program.Prog[150].Drive = 7;
  EXPECT_EQ(ScanMMIspeeds(program)->line, GetSpeed);
  program.Axis.StepsPerRev[7] = 400001;
  EXPECT_EQ(ScanMMIspeeds(program)->line, 150);
  EXPECT_EQ(ScanMMIspeeds(program)->axis, 7);
}

TEST(ScanMMItypes, EachUseWantsAPromptOfItsKind) {
  struct Use {
    bool Instruction::*flag;
    int kind;
  };
  for (const Use& use : {Use{&Instruction::DistIsMMI, GetDistance}, Use{&Instruction::SpeedIsMMI, GetSpeed},
                         Use{&Instruction::CountIsMMI, GetCount}, Use{&Instruction::Dist2IsMMI, -1},
                         Use{&Instruction::Speed2IsMMI, -1}}) {
    for (int type = 0; type < kTypes; ++type) {
      if (type == MMI) continue;
      for (int kind = 0; kind <= Menu; ++kind) {
        Program program = Fresh();
        Instruction& line = program.Prog[4];
        line.Type = static_cast<std::int16_t>(type);
        line.DistVar = line.SpeedVar = line.Dist2Var = line.Speed2Var = 9;
        line.*use.flag = true;
        program.Prog[2].Type = MMI;
        program.Prog[2].SubType = static_cast<std::int16_t>(kind);
        program.Prog[2].DistVar = 9;
        const bool looked_at = use.kind == GetCount ? type == RP : use.kind >= 0 && IsIn(type, kPlainFeeds);
        const auto found = ScanMMItypes(program);
        ASSERT_EQ(found.has_value(), looked_at && kind <= GetCount && kind != use.kind)
            << type << ' ' << use.kind << ' ' << kind;
        if (!found) continue;
        EXPECT_EQ(found->variable, 9);
        EXPECT_EQ(found->line, 4);
        EXPECT_EQ(found->prompt_line, 2);
        EXPECT_EQ(found->prompt_kind, kind);
        EXPECT_EQ(found->as_speed, use.kind == GetSpeed);
        program.Prog[2].DistVar = 8;
        EXPECT_FALSE(ScanMMItypes(program).has_value()) << "a prompt for another variable";
      }
    }
  }
}

TEST(ScanMMItypes, TheLastHitWinsAndWithinALineTheSpeedStandsBehindTheDistance) {
  Program program = Fresh();
  for (const int line : {1, 5}) {
    program.Prog[line].Type = FL;
    program.Prog[line].DistIsMMI = program.Prog[line].SpeedIsMMI = true;
    program.Prog[line].DistVar = program.Prog[line].SpeedVar = 3;
  }
  for (const int line : {0, 7}) {
    program.Prog[line].Type = MMI;
    program.Prog[line].SubType = GetCount;
    program.Prog[line].DistVar = 3;
  }
  ASSERT_TRUE(ScanMMItypes(program).has_value());
  EXPECT_EQ(ScanMMItypes(program)->line, 5);
  EXPECT_EQ(ScanMMItypes(program)->prompt_line, 7);
  EXPECT_TRUE(ScanMMItypes(program)->as_speed);
  program.Prog[7].SubType = GetSpeed;
  EXPECT_EQ(ScanMMItypes(program)->prompt_line, 7);
  EXPECT_FALSE(ScanMMItypes(program)->as_speed) << "its speed is right, its distance is not";
}

TEST(CheckNone, EveryOtherTypeNeedsItsDriveButForTheHubsOwnInputsAndOutputs) {
  for (const std::int16_t hub : {HubOcto, HubQuad}) {
    for (const int axis : {3, 4, 5}) {
      for (int type = 0; type < kTypes; ++type) {
        if (type == MMI) continue;
        Program program = Fresh();
        program.HubIndex = hub;
        program.Axis.DriveModel.fill(0);
        program.Prog[8].Type = static_cast<std::int16_t>(type);
        program.Prog[8].Drive = static_cast<std::int16_t>(axis);
        const bool none = IsIn(type, {WT, GT, RP, ER, NO, CM, RL, CL, RT});
        const bool own = hub == HubQuad && axis == 4 && IsIn(type, {WI, SO, II, III, WII});
        const auto found = CheckNone(program);
        ASSERT_EQ(found.has_value(), !none && !own) << type << ' ' << axis << ' ' << hub;
        if (!found) continue;
        EXPECT_EQ(found->line, 8);
        EXPECT_EQ(found->axis, axis);
        program.Axis.DriveModel[axis] = 1;
        EXPECT_FALSE(CheckNone(program).has_value()) << type;
      }
    }
  }
}

TEST(CheckNone, AWaitForEnterNeedsADriveOnEachAxisThatItJogsAndOnNoOther) {
  struct Case {
    bool left_right;
    bool up_down;
    std::optional<int> axis;
  };
  for (const Case& c :
       {Case{false, false, std::nullopt}, Case{true, false, 2}, Case{false, true, 3}, Case{true, true, 3}}) {
    Program program = Fresh();
    program.Axis.DriveModel[2] = program.Axis.DriveModel[3] = program.Axis.DriveModel[5] = 0;
    Instruction& line = program.Prog[40];
    line.Type = MMI;
    line.SubType = WaitEnter;
    line.Drive = 5;
    line.JogLR = c.left_right;
    line.JogLRDrive = 2;
    line.JogUD = c.up_down;
    line.JogUDDrive = 3;
    const auto found = CheckNone(program);
    EXPECT_EQ(found ? std::optional(found->axis) : std::nullopt, c.axis);
  }
}

TEST(ScanProgMMI, AVariableThatThereIsNotIsNeverFilled) {
  for (const int variable : {-1, kMMIVariables + 1}) {
    Program program = Fresh();
    program.Prog[0].Type = MMI;
    program.Prog[0].SubType = GetDistance;
    program.Prog[1].Type = FL;
    program.Prog[1].DistIsMMI = true;
    program.Prog[0].DistVar = program.Prog[1].DistVar = static_cast<std::int16_t>(variable);
    const auto found = ScanProgMMI(program);
    ASSERT_TRUE(found.has_value()) << variable;
    EXPECT_EQ(found->variable, variable);
    EXPECT_EQ(found->line, 1);
  }
}

TEST(Scans, The201stRecordIsNoLine) {
  for (int type = 0; type < kTypes; ++type) {
    for (const int axis : {0, kHubQuadIO, 6}) {
      for (const int sub : {GetDistance, GetSpeed, GetCount, WaitEnter}) {
        Program program = Fresh();
        program.HubIndex = HubQuad;
        program.Axis.DriveModel.fill(1);
        program.Axis.DriveModel[6] = 0;
        program.Axis.StepsPerUnit.fill(1);
        program.Prog[198].Type = FL;
        program.Prog[198].Proceed = true;
        Instruction& beyond = program.Prog[kLines];
        beyond.Type = static_cast<std::int16_t>(type);
        beyond.SubType = static_cast<std::int16_t>(sub);
        beyond.Drive = beyond.JogLRDrive = static_cast<std::int16_t>(axis);
        beyond.DistIsMMI = beyond.SpeedIsMMI = beyond.CountIsMMI = beyond.JogLR = true;
        beyond.IONum = 7;
        beyond.InMask = beyond.InState = 0xF3;
        beyond.LineNum = kNoRepeat;
        EXPECT_TRUE(BadMoveorMMIAxis(program).empty()) << type;
        EXPECT_TRUE(In5678used(program).empty()) << type;
        EXPECT_TRUE(IOpast5(program).empty()) << type;
        EXPECT_TRUE(SetOutput4(program).empty()) << type;
        EXPECT_FALSE(ScanProgMMI(program)) << type;
        EXPECT_FALSE(ScanMMIspeeds(program)) << type;
        EXPECT_FALSE(CheckNone(program)) << type;
        EXPECT_FALSE(ScanConcurrent(program)) << type;
        EXPECT_TRUE(CallsOK(program) && ReturnsOK(program)) << type;
        EXPECT_EQ(CountRepeats(program) + CountEndRepeats(program), 0) << type;
        EXPECT_FALSE(ERbeforeRP(program)) << type;
        FixMultiIn(program);
        EXPECT_EQ(beyond.InMask, 0xF3) << type;
        EXPECT_EQ(beyond.InState, 0xF3) << type;
      }
    }
  }
}

TEST(ScanMMItypes, The201stRecordIsNeitherUseNorPrompt) {
  Program program = Fresh();
  program.Prog[0].Type = FL;
  program.Prog[0].DistIsMMI = true;
  program.Prog[kLines].Type = MMI;
  program.Prog[kLines].SubType = GetCount;
  EXPECT_FALSE(ScanMMItypes(program));
  EXPECT_TRUE(ScanProgMMI(program)) << "it fills no variable either";
  std::swap(program.Prog[0], program.Prog[kLines]);
  EXPECT_FALSE(ScanMMItypes(program));
}

TEST(Scans, RecordsOfAnyValueAreScannedWithoutReachingOutside) {
  std::mt19937 random(20261121);
  const auto any = [&random] { return static_cast<std::int16_t>(random()); };
  int faults = 0;
  const auto expect_on_a_line = [&faults](const auto& fault) {
    if (!fault) return;
    ++faults;
    EXPECT_GE(fault->line, 0);
    EXPECT_LT(fault->line, kLines);
  };
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
    expect_on_a_line(ScanProgMMI(program));
    expect_on_a_line(CheckNone(program));
    static_cast<void>(ScanMMIspeeds(program));
    static_cast<void>(ScanMMItypes(program));
    static_cast<void>(ScanConcurrent(program));
  }
  EXPECT_GT(faults, 0);
}

}  // namespace
}  // namespace tavlo::testing
