// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::Hex;
using testing::NewProgram;
using testing::OneLine;

TEST(CompilePrompt, DisplayOnlyIsTheHeaderAlone) {
  OneLine one(MMI);
  one.line().Text = "Hi";
  EXPECT_EQ(one.Compiled(), Bytes({14, 3, 0, 0, 0}));
  EXPECT_EQ(one.pool.Pool, "Hi\xff");
  EXPECT_EQ(one.pool.PoolPtr, 3);
  EXPECT_EQ(one.pool.PoolItem, 3);
}

TEST(CompilePrompt, GetDistanceSpeedAndCountCarryVariableAndLimits) {
  for (int sub = 0; sub <= 2; ++sub) {
    OneLine one(MMI);
    Instruction& line = one.line();
    line.SubType = static_cast<std::int16_t>(sub);
    line.DistVar = 0x21;
    line.LowerInt = 0x010203, line.LowerFrac = 0x0405;
    line.UpperInt = 0x060708, line.UpperFrac = 0x090A;
    line.Drive = 7;
    EXPECT_EQ(one.InHex(), "0e0" + std::to_string(sub) +
                               "0000002101020304050607"
                               "08090a07");
    EXPECT_EQ(one.Compiled().size(), 17U);
    line.LowerInt = line.LowerFrac = line.UpperInt = line.UpperFrac = 0;
    EXPECT_EQ(one.Compiled().substr(5), Bytes({0x21, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 7})) << "zeros stay";
  }
}

TEST(CompilePrompt, WaitForEnterCarriesTwoJogs) {
  OneLine one(MMI);
  Instruction& line = one.line();
  line.SubType = 4;
  line.JogLRDrive = 2, line.JogLRSpeed = 3.0F, line.JogLRAccel = 0x0102;
  line.JogUDDrive = 5, line.JogUDSpeed = 0.0F, line.JogUDAccel = 0;
  EXPECT_EQ(one.Compiled(), Bytes({14, 4, 0, 0, 0, 130, 0, 120, 1, 2, 133, 0, 1, 0, 1}));
  line.JogLR = true;
  EXPECT_EQ(one.Compiled(), Bytes({14, 4, 0, 0, 0, 2, 0, 120, 1, 2, 133, 0, 1, 0, 1}));
  line.JogUD = true;
  EXPECT_EQ(one.Compiled(), Bytes({14, 4, 0, 0, 0, 2, 0, 120, 1, 2, 5, 0, 1, 0, 1}));
  line.JogLRSpeed = 0.0F, line.JogLRAccel = 0;
  EXPECT_EQ(one.Compiled(), Bytes({14, 4, 0, 0, 0, 2, 0, 1, 0, 1, 5, 0, 1, 0, 1})) << "no 0 in either block";
}

TEST(CompilePrompt, YesNoBranchCarriesItsTarget) {
  OneLine one(MMI);
  one.line().SubType = 5;
  one.line().LineNum = 199;
  EXPECT_EQ(one.Compiled(), Bytes({14, 5, 0, 0, 0, 199}));
}

TEST(CompilePrompt, AMenuHasCode26AndItsOwnLayout) {
  OneLine one(MMI);
  one.line().SubType = 6;
  one.line().Text = "1 Go";
  EXPECT_EQ(one.Compiled(), Bytes({26, 0, 0, 0x0F, 9, 19, 29, 39, 49, 59, 69, 79, 0}));
  EXPECT_EQ(one.line().Type, 14) << "26 stands in the hub bytes only";
  EXPECT_EQ(one.pool.Pool, "1 Go\xff");
}

TEST(CompilePrompt, KeyIOfAMenuIsBitIMinus1) {
  for (int key = 0; key <= 8; ++key) {
    OneLine one(MMI);
    one.line().SubType = 6;
    one.line().MenuKey.fill(false);
    one.line().MenuKey[static_cast<std::size_t>(key)] = true;
    EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[3]), key == 0 ? 0 : 1 << (key - 1));
  }
}

TEST(CompilePrompt, AMenuWithNoKeyInUseStillSendsTheEightTargets) {
  OneLine one(MMI);
  one.line().SubType = 6;
  one.line().MenuKey.fill(false);
  for (int i = 0; i < 9; ++i)
    one.line().MenuLine[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(100 + i);
  EXPECT_EQ(one.Compiled(), Bytes({26, 0, 0, 0, 101, 102, 103, 104, 105, 106, 107, 108, 0}));
}

TEST(CompilePrompt, TheFlagByteRecordsHowTheTextWasCut) {
  struct {
    bool Instruction::*flag;
    int value;
    bool menu_only;
  } const cases[] = {{&Instruction::Wrap1, 1, false}, {&Instruction::Blank1, 2, false},
                     {&Instruction::Wrap2, 4, false}, {&Instruction::Blank2, 8, false},
                     {&Instruction::Wrap3, 16, true}, {&Instruction::Blank3, 32, true}};
  for (const auto& c : cases) {
    for (int sub = 0; sub <= 5; ++sub) {
      OneLine one(MMI);
      one.line().SubType = static_cast<std::int16_t>(sub);
      one.line().*c.flag = true;
      EXPECT_EQ(one.Compiled()[4], c.menu_only ? 0 : c.value) << sub;
    }
    OneLine menu(MMI);
    menu.line().SubType = 6;
    menu.line().*c.flag = true;
    EXPECT_EQ(menu.Compiled()[12], c.value);
  }
}

TEST(CompilePrompt, TwoPromptsWithEmptyTextTakeOneByteEachAndTheSecondHoldsOffset1) {
  Program program = NewProgram();
  program.Prog[0].Type = program.Prog[1].Type = MMI;
  StringPool pool;
  EXPECT_EQ(Compile(program, 0, pool), Bytes({14, 3, 0, 0, 0}));
  EXPECT_EQ(Compile(program, 1, pool), Bytes({14, 3, 0, 1, 0}));
  EXPECT_EQ(pool.Pool, "\xff\xff");
}

TEST(CompilePrompt, EntriesAreNotSharedAndOffsetsAreHighByteFirst) {
  Program program = NewProgram();
  for (int i = 0; i < 3; ++i) {
    program.Prog[static_cast<std::size_t>(i)].Type = MMI;
    program.Prog[static_cast<std::size_t>(i)].Text = std::string(299, 'p');
  }
  program.Prog[2].SubType = 6;
  StringPool pool;
  (void)Compile(program, 0, pool);
  EXPECT_EQ(Compile(program, 1, pool).substr(2, 2), Bytes({300 / 256, 300 % 256}));
  EXPECT_EQ(Compile(program, 2, pool).substr(1, 2), Bytes({600 / 256, 600 % 256}));
  EXPECT_EQ(pool.PoolPtr, 900);
  EXPECT_EQ(pool.Pool.size(), 900U);
}

TEST(CompilePrompt, ALineThatCompilesTwiceTakesTwoEntries) {
  Program program = NewProgram();
  program.Prog[0].Type = MMI;
  program.Prog[0].Text = "x";
  StringPool pool;
  (void)Compile(program, 0, pool);
  (void)Compile(program, 0, pool);
  EXPECT_EQ(pool.Pool, "x\xffx\xff");
}

TEST(CompilePrompt, Type26IsTreatedLike14) {
  OneLine one(MMImenu);
  one.line().Text = "Hi";
  EXPECT_EQ(one.Compiled(), Bytes({26, 3, 0, 0, 0}));
  EXPECT_EQ(one.pool.Pool, "Hi\xff");
  one.line().SubType = 6;
  EXPECT_EQ(one.Compiled().size(), 13U);
}

TEST(CompileFollow, ThePlainForm) {
  OneLine one(FE);
  Instruction& line = one.line();
  line.IONum = 130, line.State = 2, line.Dist = 0x1234, line.Drive = 6;
  EXPECT_EQ(one.Compiled(), Bytes({18, 130, 2, 0x34, 6}));
}

TEST(CompileFollow, AShortTextStandsWholeInTheLine) {
  for (const std::size_t length : {0U, 1U, 10U}) {
    OneLine one(FE);
    Instruction& line = one.line();
    line.CountIsMMI = true;
    line.Dist = 7;
    line.Wrap1 = line.Blank2 = line.Wrap3 = true;
    line.Text = std::string(length, 't');
    EXPECT_EQ(one.Compiled(), Bytes({82, 9, 0, 7, 0}) + line.Text + "\xff");
    EXPECT_EQ(one.pool.Pool, "");
    EXPECT_EQ(one.pool.PoolPtr, 0);
  }
}

TEST(CompileFollow, ATextOfExactly11CharactersAddsOneByteToThePool) {
  OneLine one(FE);
  one.line().CountIsMMI = true;
  one.line().Dist = 7;
  one.line().Text = "01234567890";
  EXPECT_EQ(one.Compiled(), Bytes({82, 0, 0, 7, 0}) + "01234567890");
  EXPECT_EQ(one.pool.Pool, "\xff");
  EXPECT_EQ(one.pool.PoolPtr, 1);
}

TEST(CompileFollow, ALongTextPutsItsRestIntoThePoolAndTheValueBetweenTheBytesOfTheOffset) {
  Program program = NewProgram();
  program.Prog[0].Type = MMI;
  program.Prog[0].Text = std::string(0x0101, 'p');
  program.Prog[1].Type = FE;
  program.Prog[1].CountIsMMI = true;
  program.Prog[1].Dist = 0x55;
  program.Prog[1].Text = "Turn the knob until done";
  StringPool pool;
  (void)Compile(program, 0, pool);
  ASSERT_EQ(pool.PoolPtr, 0x0102);
  EXPECT_EQ(Compile(program, 1, pool), Bytes({82, 0, 0x01, 0x55, 0x02}) + "Turn the kn");
  EXPECT_EQ(pool.Pool.substr(0x0102), "ob until done\xff");
  EXPECT_EQ(pool.PoolPtr, 0x0102 + 24 - 10);
  EXPECT_EQ(static_cast<int>(pool.Pool.size()), pool.PoolPtr);
}

TEST(CompileFollow, TheTextFormWithProceedCarriesInto128AndWithWaitThisHasNoFirstByte) {
  OneLine one(FE);
  one.line().CountIsMMI = true;
  one.line().Proceed = true;
  EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[0]), 146);
  one.line().Proceed = false;
  one.line().WaitThis = true;
  EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[0]), 210);
  one.line().Proceed = true;
  EXPECT_THROW((void)one.Compiled(), EncodeError);
}

}  // namespace
}  // namespace tavlo
