// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/line_blocks.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "model/kinds.h"

namespace tavlo::testing {
namespace {

Instruction To(std::int16_t type, int line) {
  return {.Type = type, .LineNum = static_cast<std::int16_t>(line)};
}
Instruction YesNo(int line) {
  return {.Type = MMI, .LineNum = static_cast<std::int16_t>(line), .SubType = BranchYesNo};
}
Instruction MenuTo(int line) {
  Instruction record = {.Type = MMI, .SubType = Menu};
  record.MenuKey[3] = true;
  record.MenuLine[3] = static_cast<std::int16_t>(line);
  record.MenuLine[4] = static_cast<std::int16_t>(line);
  return record;
}
int TargetOf(const Instruction& record) {
  return record.Type == MMI && record.SubType == Menu ? record.MenuLine[3] : record.LineNum;
}

/// Lines that can be told from each other, with one that leads somewhere.
Program Numbered(int in_use) {
  Program program;
  for (int line = 0; line < in_use; ++line) program.Prog[line] = {.Type = FL, .Dist = line + 1};
  return program;
}

struct TargetCase {
  const char* what;
  int target;
  /// What it leads to after a copy of lines 10 to 14 to line 3, to line 50, and after they were moved there.
  int copied_up;
  int copied_down;
  int moved_up;
  int moved_down;
  bool leads_out;
};

TEST(LineBlocks, WhatALineOfTheBlockNamesMovesAlongInsideAndStaysTheSameLineOutside) {
  const std::vector<TargetCase> cases = {
      {"first of the block", 10, 3, 50, 3, 50, false},
      {"last of the block", 14, 7, 54, 7, 54, false},
      {"above all", 2, 2, 2, 2, 2, true},
      {"between", 5, 10, 5, 10, 5, true},
      {"below the block", 15, 20, 15, 15, 10, true},
      {"where the block goes", 50, 55, 55, 50, 45, true},
      {"below all", 120, 125, 125, 120, 120, true},
      {"a line that does not exist", 200, 200, 200, 200, 200, false},
      {"no line at all", -1, -1, -1, -1, -1, false},
      {"any number", 32767, 32767, 32767, 32767, 32767, false},
  };
  const std::vector<std::function<Instruction(int)>> kinds = {[](int line) { return To(GT, line); },
                                                              [](int line) { return To(II, line); },
                                                              [](int line) { return To(III, line); },
                                                              [](int line) { return To(RL, line); },
                                                              [](int line) { return To(CL, line); },
                                                              [](int line) { return To(IM, line); },
                                                              [](int line) { return To(FSS, line); },
                                                              YesNo,
                                                              MenuTo};
  for (const TargetCase& c : cases) {
    for (const auto& kind : kinds) {
      Program program = Numbered(60);
      program.Prog[12] = kind(c.target);
      SCOPED_TRACE(std::string(c.what) + ", " + std::string(Mnemonic(program.Prog[12].Type)));
      const KeptLines copied = LinesOf(program, {10, 5});
      Program without = program;
      const CutOut cut = CutLines(without, {10, 5});
      struct Way {
        const Program& program;
        const KeptLines& block;
        int at;
        int target;
      };
      for (const Way& way :
           {Way{program, copied, 3, c.copied_up}, Way{program, copied, 50, c.copied_down},
            Way{without, cut.lines, 3, c.moved_up}, Way{without, cut.lines, 50, c.moved_down}}) {
        const auto inserted = InsertLines(way.program, way.block, way.at, &cut);
        ASSERT_TRUE(inserted);
        EXPECT_EQ(TargetOf(inserted->program.Prog[way.at + 2]), way.target) << way.at;
        EXPECT_EQ(inserted->lead_out, c.leads_out ? std::vector<int>{way.at + 2} : std::vector<int>())
            << way.at;
      }
    }
  }
}

TEST(LineBlocks, KeysOfAMenuThatAreNotInUseAndLinesThatNameNoneKeepTheirNumbers) {
  Program program = Numbered(60);
  program.Prog[12] = MenuTo(11);
  program.Prog[13] = To(FL, 11);
  const auto inserted = InsertLines(program, LinesOf(program, {10, 5}), 30);
  ASSERT_TRUE(inserted);
  EXPECT_EQ(inserted->program.Prog[32].MenuLine[3], 31);
  EXPECT_EQ(inserted->program.Prog[32].MenuLine[4], 11);
  EXPECT_EQ(inserted->program.Prog[33].LineNum, 11);
}

TEST(LineBlocks, TheRestOfTheProgramFollowsAsItDoesOnAnInsertedLine) {
  Program program = Numbered(60);
  program.Prog[20] = To(GT, 40);
  program.Prog[21] = MenuTo(40);
  program.LimitBranch = 45;
  const auto inserted = InsertLines(program, LinesOf(program, {10, 5}), 30);
  ASSERT_TRUE(inserted);
  EXPECT_EQ(inserted->program.Prog[20].LineNum, 45);
  EXPECT_EQ(inserted->program.Prog[21].MenuLine[3], 40);
  EXPECT_EQ(inserted->program.LimitBranch, 50);
  EXPECT_EQ(inserted->program.Prog[35], program.Prog[30]);
}

struct LossCase {
  const char* what;
  /// The program is in use up to here, with a hole in line 198.
  int in_use;
  int count;
  int at;
  std::optional<std::vector<int>> lost;
};

TEST(LineBlocks, LinesInUseThatArePushedOffTheEndAreNamedAndABlockThatDoesNotFitIsRefused) {
  const std::vector<LossCase> cases = {
      {"room for all", 100, 5, 50, std::vector<int>{}},
      {"exactly room", 195, 5, 50, std::vector<int>{}},
      {"one line of it in use", 196, 5, 50, std::vector<int>{195}},
      {"all in use but one", 200, 5, 50, std::vector<int>{195, 196, 198, 199}},
      {"fits in front of the end", 200, 5, 195, std::vector<int>{195, 196, 198, 199}},
      {"does not fit", 200, 5, 196, std::nullopt},
      {"nor does this, with nothing below", 10, 5, 196, std::nullopt},
  };
  for (const LossCase& c : cases) {
    SCOPED_TRACE(c.what);
    Program program = Numbered(c.in_use);
    program.Prog[197].Type = NO;
    const auto inserted = InsertLines(program, LinesOf(program, {0, c.count}), c.at);
    ASSERT_EQ(inserted.has_value(), c.lost.has_value());
    if (inserted) {
      EXPECT_EQ(inserted->lost, *c.lost);
    }
  }
}

TEST(LineBlocks, EmptyLinesAtTheEndOfABlockNeedNoPlace) {
  Program program = Numbered(3);
  const auto inserted = InsertLines(program, LinesOf(program, {1, 50}), 198);
  ASSERT_TRUE(inserted);
  EXPECT_EQ(inserted->program.Prog[198], program.Prog[1]);
  EXPECT_EQ(inserted->program.Prog[199], program.Prog[2]);
  EXPECT_TRUE(inserted->lost.empty());
}

TEST(LineBlocks, LinesThatAreCutAndPutBackLeaveNoTrace) {
  Program program = Numbered(60);
  program.Prog[5] = To(GT, 12);
  program.Prog[40] = To(GT, 11);
  program.LimitBranch = 13;
  Program without = program;
  const CutOut cut = CutLines(without, {10, 5});
  EXPECT_EQ(without.Prog[5].LineNum, 10) << "it goes to what has moved up";
  EXPECT_EQ(without.Prog[10], program.Prog[15]);
  const auto back = InsertLines(without, cut.lines, 10, &cut);
  ASSERT_TRUE(back);
  EXPECT_TRUE(back->program.Prog == program.Prog);
  EXPECT_EQ(back->program.LimitBranch, 13);
}

TEST(LineBlocks, WhatLedIntoTheBlockFollowsItToAnotherPlaceButNotAfterAnotherEdit) {
  Program program = Numbered(60);
  program.Prog[40] = To(GT, 12);
  const CutOut cut = CutLines(program, {10, 5});
  const auto moved = InsertLines(program, cut.lines, 20, &cut);
  EXPECT_EQ(moved->program.Prog[40].LineNum, 22);
  program.Prog[50].Dist = 4711;
  const auto edited = InsertLines(program, cut.lines, 20, &cut);
  EXPECT_EQ(edited->program.Prog[40].LineNum, 10);
}

TEST(LineBlocks, ACutThatWasTakenBackPastesAsACopy) {
  Program program = Numbered(60);
  program.Prog[12] = To(GT, 30);
  Program without = program;
  const CutOut cut = CutLines(without, {10, 5});
  const auto inserted = InsertLines(program, cut.lines, 50, &cut);
  EXPECT_EQ(inserted->program.Prog[52].LineNum, 30);
}

/// A program whose targets all exist, with empty lines at its end.
Program Random(std::mt19937& random) {
  const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  Program program;
  const int in_use = 1 + below(190);
  for (int line = 0; line < in_use; ++line) {
    Instruction& record = program.Prog[line];
    constexpr std::array<std::int16_t, 8> kLeading = {GT, II, III, RL, CL, IM, MMI, NO};
    record.Type = below(3) == 0 ? kLeading[below(kLeading.size())] : std::int16_t{FL};
    record.Dist = below(100000);
    record.SubType = BranchYesNo;
    record.LineNum = static_cast<std::int16_t>(below(in_use));
  }
  program.LimitBranch = 1 + below(in_use);
  return program;
}

TEST(LineBlocks, MovedElsewhereAndBackIsTheProgramAsItWas) {
  std::mt19937 random(20260822);
  for (int turn = 0; turn < 500; ++turn) {
    SCOPED_TRACE(turn);
    const Program start = Random(random);
    Program program = start;
    const int first = static_cast<int>(random() % 190);
    const int count = 1 + static_cast<int>(random() % (190 - first));
    const int to = static_cast<int>(random() % (200 - count));
    const CutOut away = CutLines(program, {first, count});
    const auto there = InsertLines(program, away.lines, to, &away);
    ASSERT_TRUE(there);
    EXPECT_TRUE(there->lost.empty());
    program = there->program;
    const CutOut home = CutLines(program, {to, count});
    const auto back = InsertLines(program, home.lines, first, &home);
    ASSERT_TRUE(back);
    for (int line = 0; line < kLines; ++line) {
      // An empty line keeps what stood in it.
      EXPECT_EQ(back->program.Prog[line].Type, start.Prog[line].Type) << line;
      if (start.Prog[line].Type != NO) {
        EXPECT_TRUE(back->program.Prog[line] == start.Prog[line]) << line;
      }
    }
    EXPECT_EQ(back->program.LimitBranch, start.LimitBranch);
  }
}

}  // namespace
}  // namespace tavlo::testing
