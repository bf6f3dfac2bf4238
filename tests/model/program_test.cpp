// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program.h"

#include <gtest/gtest.h>

#include "model/line_operations.h"
#include "model/program_queries.h"
#include "support/new_program.h"

namespace tavlo {
namespace {

using testing::NewProgram;

TEST(InitProg, GivesEveryLineItsDefaults) {
  Program program;
  program.HubVersion = 1.38F;
  InitProg(program);
  EXPECT_EQ(program.HubVersion, 0);
  for (int i = 0; i < kLines; ++i) {
    SCOPED_TRACE(i);
    const Instruction& line = program.Prog[i];
    EXPECT_EQ(line.Type, 11);
    EXPECT_EQ(line.Dist, 20000);
    EXPECT_EQ(line.Dist2, 10000);
    EXPECT_EQ(line.SafetyDist, 10000);
    EXPECT_EQ(line.Speed, 3.0F);
    EXPECT_EQ(line.Speed2, 0.5F);
    EXPECT_EQ(line.RetSpeed, 3.0F);
    EXPECT_EQ(line.Accel, 100);
    EXPECT_EQ(line.Decel, 100);
    EXPECT_EQ(line.State, 1);
    EXPECT_EQ(line.Time, 10);
    EXPECT_EQ(line.IONum, 0);
    EXPECT_EQ(line.Count, 10);
    EXPECT_EQ(line.Text, "");
    EXPECT_EQ(line.SubType, 3);
    EXPECT_EQ(line.Reserved1, 1);
    EXPECT_EQ(line.UpperInt, 50);
    EXPECT_EQ(line.LowerInt, 1);
    EXPECT_EQ(line.LowerFrac, 0);
    EXPECT_EQ(line.DistVar, 0);
    EXPECT_EQ(line.SpeedVar, 25);
    EXPECT_EQ(line.Dist2Var, 1);
    EXPECT_EQ(line.Speed2Var, 26);
    EXPECT_TRUE(line.Reserved2);
    EXPECT_TRUE(line.WaitAND);
    EXPECT_EQ(line.InMask, 0);
    EXPECT_EQ(line.InState, 0);
    EXPECT_EQ(line.Current, 1.0F);
    EXPECT_EQ(line.IdlePct, 0);
    for (int key = 1; key <= 8; ++key) {
      EXPECT_EQ(line.MenuKey[key], key <= 4) << key;
      EXPECT_EQ(line.MenuLine[key], 10 * key - 1) << key;
    }
    EXPECT_FALSE(line.Proceed);
    EXPECT_FALSE(line.WaitThis);
    EXPECT_EQ(line.JogSpeed, 1.0F);
    EXPECT_EQ(line.JogLRSpeed, 1.0F);
    EXPECT_EQ(line.JogUDSpeed, 1.0F);
    EXPECT_EQ(line.JogAccel, 100);
    EXPECT_EQ(line.JogLRAccel, 100);
    EXPECT_EQ(line.JogUDAccel, 100);
    EXPECT_EQ(line.JogUDDrive, 1);
  }
}

TEST(InitProg, DriveAndTheFlagsForMMISourcesSurvive) {
  Program program;
  Instruction& line = program.Prog[7];
  line.Drive = 5;
  line.DistIsMMI = line.SpeedIsMMI = line.Dist2IsMMI = line.Speed2IsMMI = line.CountIsMMI = true;
  line.Dir = 1;
  line.LineNum = 33;
  line.UpperFrac = 77;
  line.JogLRDrive = 3;
  line.Reserved3 = true;
  line.DrvMask = 9;
  line.JogOn = line.JogLR = line.JogUD = line.MotorOn = true;
  line.MenuLine[0] = 44;
  line.MenuKey[0] = true;
  InitProg(program);
  EXPECT_EQ(line.Drive, 5);
  EXPECT_TRUE(line.DistIsMMI && line.SpeedIsMMI && line.Dist2IsMMI && line.Speed2IsMMI && line.CountIsMMI);
  EXPECT_EQ(line.Dir, 1);
  EXPECT_EQ(line.LineNum, 33);
  EXPECT_EQ(line.UpperFrac, 77);
  EXPECT_EQ(line.JogLRDrive, 3);
  EXPECT_TRUE(line.Reserved3);
  EXPECT_EQ(line.DrvMask, 9);
  EXPECT_TRUE(line.JogOn && line.JogLR && line.JogUD && line.MotorOn);
  EXPECT_EQ(line.MenuLine[0], 44);
  EXPECT_TRUE(line.MenuKey[0]);
}

TEST(InitProg, NeverTouchesElement200) {
  Program program;
  Instruction marked;
  marked.Type = FL;
  marked.Dist = 5;
  marked.Text = "kept";
  program.Prog[200] = marked;
  InitProg(program);
  EXPECT_EQ(program.Prog[200], marked);
}

TEST(LinesInProg, AfterInitProgItGives1) {
  EXPECT_EQ(LinesInProg(NewProgram()), 1);
}

TEST(LinesInProg, CountsUpToTheLastLineInUse) {
  Program program = NewProgram();
  program.Prog[0].Type = FL;
  EXPECT_EQ(LinesInProg(program), 1);
  program.Prog[41].Type = CM;
  EXPECT_EQ(LinesInProg(program), 42);
  program.Prog[199].Type = RT;
  EXPECT_EQ(LinesInProg(program), 200);
}

TEST(LinesInProg, Element200IsNoLine) {
  Program program = NewProgram();
  program.Prog[200].Type = FL;
  EXPECT_EQ(LinesInProg(program), 1);
}

TEST(ScanLoops, LinksEachEndRepeatToItsRepeat) {
  Program program = NewProgram();
  const int repeats[] = {2, 4, 10};
  const int ends[] = {8, 6, 12};
  for (const int line : repeats) program.Prog[line].Type = RP;
  for (const int line : ends) program.Prog[line].Type = ER;
  program.Prog[4].Proceed = true;
  program.Prog[8].Proceed = true;
  ScanLoops(program);
  EXPECT_EQ(program.Prog[2].LoopIndex, 0);
  EXPECT_EQ(program.Prog[4].LoopIndex, 1);
  EXPECT_EQ(program.Prog[10].LoopIndex, 2);
  EXPECT_EQ(program.Prog[6].LineNum, 4);
  EXPECT_EQ(program.Prog[6].LoopIndex, 1);
  EXPECT_TRUE(program.Prog[6].Proceed);
  EXPECT_EQ(program.Prog[8].LineNum, 2);
  EXPECT_EQ(program.Prog[8].LoopIndex, 0);
  EXPECT_FALSE(program.Prog[8].Proceed);
  EXPECT_EQ(program.Prog[12].LineNum, 10);
  EXPECT_EQ(program.Prog[12].LoopIndex, 2);
}

TEST(ScanLoops, ASecondEndRepeatAfterTheLoopsAreClosedHoldsLine1000AndNothingElseChanges) {
  Program program = NewProgram();
  program.Prog[0].Type = RP;
  program.Prog[1].Type = ER;
  program.Prog[2].Type = ER;
  program.Prog[2].LoopIndex = 7;
  program.Prog[2].Proceed = true;
  ScanLoops(program);
  EXPECT_EQ(program.Prog[1].LineNum, 0);
  EXPECT_EQ(program.Prog[2].LineNum, 1000);
  EXPECT_EQ(kNoRepeat, 1000);
  EXPECT_EQ(program.Prog[2].LoopIndex, 7);
  EXPECT_TRUE(program.Prog[2].Proceed);
}

TEST(ScanLoops, TwoHundredOpenRepeatsAndTwoHundredLooseEndsAreNoTrouble) {
  Program program = NewProgram();
  for (int i = 0; i < kLines; ++i) program.Prog[i].Type = RP;
  ScanLoops(program);
  EXPECT_EQ(program.Prog[199].LoopIndex, 199);
  for (int i = 0; i < kLines; ++i) program.Prog[i].Type = ER;
  ScanLoops(program);
  for (int i = 0; i < kLines; ++i) EXPECT_EQ(program.Prog[i].LineNum, 1000);
}

TEST(ScanLoops, LeavesElement200AndOtherKindsAlone) {
  Program program = NewProgram();
  program.Prog[0].Type = RP;
  program.Prog[1].Type = RL;
  program.Prog[1].LoopIndex = 5;
  program.Prog[200].Type = ER;
  program.Prog[200].LineNum = 3;
  ScanLoops(program);
  EXPECT_EQ(program.Prog[1].LoopIndex, 5);
  EXPECT_EQ(program.Prog[200].LineNum, 3);
}

TEST(MakeQuotesSingle, EachDoubleQuoteBecomesASingleOne) {
  EXPECT_EQ(MakeQuotesSingle("say \"go\""), "say 'go'");
  EXPECT_EQ(MakeQuotesSingle("\"\"\""), "'''");
  EXPECT_EQ(MakeQuotesSingle("plain 'x'"), "plain 'x'");
  EXPECT_EQ(MakeQuotesSingle(""), "");
}

TEST(StringsTooLong, ThePoolHolds1536BytesEachStringWithItsEndByteAndOneByteOfOverhead) {
  Program program = NewProgram();
  // One text alone: length + 1 and the byte of overhead.
  EXPECT_FALSE(StringsTooLong(program, 1534, 0));
  EXPECT_TRUE(StringsTooLong(program, 1535, 0));
  program.Prog[3].Type = MMI;
  program.Prog[3].Text = std::string(99, 'x');
  EXPECT_FALSE(StringsTooLong(program, 1434, 0));
  EXPECT_TRUE(StringsTooLong(program, 1435, 0));
}

TEST(PoolSize, IsOfEveryPromptItsTextAndItsEndAndOneByteForTheEndOfThePool) {
  Program program;
  InitProg(program);
  EXPECT_EQ(PoolSize(program), 1U);
  program.Prog[3].Type = program.Prog[199].Type = MMI;
  EXPECT_EQ(PoolSize(program), 3U) << "an empty text has an end too";
  program.Prog[3].Text = "Length";
  program.Prog[4].Text = "a comment does not count";
  EXPECT_EQ(PoolSize(program), 9U);
}

TEST(StringsTooLong, TheTargetLineAndOtherKindsDoNotCount) {
  Program program = NewProgram();
  program.Prog[3].Type = MMI;
  program.Prog[3].Text = std::string(1000, 'x');
  program.Prog[4].Type = CM;
  program.Prog[4].Text = std::string(1000, 'x');
  EXPECT_FALSE(StringsTooLong(program, 1534, 3));
  EXPECT_TRUE(StringsTooLong(program, 1534, 4));
}

TEST(ProgramQueries, ProgHasFindsATypeOnAnyLine) {
  Program program = NewProgram();
  EXPECT_FALSE(ProgHas(program, IM));
  EXPECT_TRUE(ProgHas(program, NO));
  program.Prog[199].Type = IM;
  EXPECT_TRUE(ProgHas(program, IM));
  program.Prog[199].Type = NO;
  program.Prog[200].Type = IM;
  EXPECT_FALSE(ProgHas(program, IM));
}

TEST(ProgramQueries, ProgHasCSFindsAChangeOfSpeedOnTheAxis) {
  Program program = NewProgram();
  program.Prog[10].Type = SS;
  program.Prog[10].SubType = 1;
  program.Prog[10].Drive = 2;
  EXPECT_TRUE(ProgHasCS(program, 2));
  EXPECT_FALSE(ProgHasCS(program, 1));
  program.Prog[10].SubType = 3;
  EXPECT_FALSE(ProgHasCS(program, 2));
}

struct MMICase {
  int type;
  bool dist;
  bool speed;
  bool dist2;
  bool speed2;
  bool count;
};

TEST(ProgramQueries, ProgHasMMILooksAtTheFlagsThatTheTypeUses) {
  for (int type = 0; type < kTypes; ++type) {
    const bool feed = type == 0 || type == 1 || type == 2 || type == 3 || type == 15 || type == 24;
    const bool counted = type == 5 || type == 7 || type == 10 || type == 18;
    const MMICase uses = {type,
                          feed || type == 21 || type == 22,
                          feed || type == 21 || type == 22,
                          type == 21 || type == 22,
                          type == 22,
                          counted};
    const auto has = [&](bool Instruction::*flag) {
      Program program = NewProgram();
      program.Prog[50].Type = static_cast<std::int16_t>(type);
      if (flag != nullptr) program.Prog[50].*flag = true;
      return ProgHasMMI(program);
    };
    SCOPED_TRACE(type);
    const bool always = type == 14;
    EXPECT_EQ(has(nullptr), always);
    EXPECT_EQ(has(&Instruction::DistIsMMI), always || uses.dist);
    EXPECT_EQ(has(&Instruction::SpeedIsMMI), always || uses.speed);
    EXPECT_EQ(has(&Instruction::Dist2IsMMI), always || uses.dist2);
    EXPECT_EQ(has(&Instruction::Speed2IsMMI), always || uses.speed2);
    EXPECT_EQ(has(&Instruction::CountIsMMI), always || uses.count);
  }
}

TEST(LimitTarget, IsTheLineOfLimitBranchWhileTheHubBranchesOnLimits) {
  Program program = NewProgram();
  program.LimitBranch = 5;
  for (const int action : {0, 1, 2}) {
    program.LimitList = static_cast<std::int16_t>(action);
    EXPECT_EQ(IsLimitTarget(program, 4), action == 1);
    EXPECT_FALSE(IsLimitTarget(program, 5));
    EXPECT_FALSE(IsLimitTarget(program, 3));
  }
}

}  // namespace
}  // namespace tavlo
