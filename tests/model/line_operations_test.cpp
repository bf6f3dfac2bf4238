// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/line_operations.h"

#include <gtest/gtest.h>

#include <vector>

namespace tavlo {
namespace {

/// Every line is a move of its own length.
Program FullProgram() {
  Program program;
  InitProg(program);
  for (int line = 0; line < kLines; ++line) program.Prog[line] = {.Type = FL, .Dist = line};
  return program;
}

Instruction Naming(std::int16_t type, int line, std::int16_t sub_type = 0) {
  return {.Type = type, .LineNum = static_cast<std::int16_t>(line), .SubType = sub_type};
}

TEST(InsertLine, PushesTheLinesBelowDownAndLosesTheLast) {
  Program program = FullProgram();
  InsertLine(program, 50);
  for (int line = 0; line < kLines; ++line) {
    EXPECT_EQ(program.Prog[line].Dist, line <= 50 ? line : line - 1) << line;
    EXPECT_EQ(program.Prog[line].Type, line == 50 ? NO : FL) << line;
  }
  EXPECT_EQ(program.Prog[50].Dist, 50) << "only the kind of the new line is written";
}

TEST(InsertLine, AtLine200OnlyEmptiesIt) {
  Program program = FullProgram();
  InsertLine(program, 199);
  for (int line = 0; line < kLines; ++line) EXPECT_EQ(program.Prog[line].Dist, line);
  EXPECT_EQ(program.Prog[199].Type, NO);
  EXPECT_EQ(program.Prog[198].Type, FL);
}

TEST(DeleteLine, MovesTheLinesBelowUpAndEmptiesTheLast) {
  Program program = FullProgram();
  DeleteLine(program, 50);
  for (int line = 0; line < kLines - 1; ++line)
    EXPECT_EQ(program.Prog[line].Dist, line < 50 ? line : line + 1);
  EXPECT_EQ(program.Prog[199].Type, NO);
  EXPECT_EQ(program.Prog[199].Dist, 199) << "the rest of the row is as it was";
}

TEST(DeleteLine, OfLine200ClearsIt) {
  Program program = FullProgram();
  DeleteLine(program, 199);
  EXPECT_EQ(program.Prog[199].Type, NO);
  EXPECT_EQ(program.Prog[199].Dist, 199);
  EXPECT_EQ(program.Prog[198].Dist, 198);
}

TEST(LinesThatNameALine, FollowItWhenLinesAreInserted) {
  const struct {
    int target;
    int inserted;
    int after;
  } rows[] = {{4, 4, 5},       {4, 5, 4}, {4, 0, 5},       {199, 10, 200},
              {199, 199, 200}, {0, 0, 1}, {1000, 3, 1001}, {-1, 0, -1}};
  for (const auto& row : rows) {
    Program program = FullProgram();
    // Above every place at which a line is inserted here it does not move itself.
    program.Prog[0] = Naming(GT, row.target);
    InsertLine(program, row.inserted);
    const int self = row.inserted == 0 ? 1 : 0;
    EXPECT_EQ(program.Prog[self].LineNum, row.after) << row.target << " with " << row.inserted;
  }
}

TEST(LinesThatNameALine, FollowItWhenLinesAreDeleted) {
  const struct {
    int target;
    int deleted;
    int after;
  } rows[] = {{5, 4, 4}, {4, 4, 4}, {4, 5, 4}, {199, 10, 198}, {1000, 3, 999}};
  for (const auto& row : rows) {
    Program program = FullProgram();
    program.Prog[0] = Naming(GT, row.target);
    DeleteLine(program, row.deleted);
    EXPECT_EQ(program.Prog[0].LineNum, row.after) << row.target << " without " << row.deleted;
  }
}

TEST(LinesThatNameALine, AreTheJumpsCallsBranchesResetsAndTheYesNoPrompt) {
  const struct {
    const char* what;
    Instruction line;
    bool follows;
  } rows[] = {{"Go To", Naming(GT, 90), true},
              {"If Input", Naming(II, 90), true},
              {"If of several inputs", Naming(III, 90), true},
              {"Reset Loop", Naming(RL, 90), true},
              {"Call", Naming(CL, 90), true},
              {"If Moving", Naming(IM, 90), true},
              {"a prompt that branches on yes", Naming(MMI, 90, BranchYesNo), true},
              {"any other prompt", Naming(MMI, 90, WaitEnter), false},
              {"the way out of a sensor that is not found", Naming(FSS, 90), false},
              {"End Repeat, which is paired anew", Naming(ER, 90), false}};
  for (const auto& row : rows) {
    Program program = FullProgram();
    program.Prog[0] = row.line;
    InsertLine(program, 10);
    EXPECT_EQ(program.Prog[0].LineNum, row.follows ? 91 : 90) << row.what;
    DeleteLine(program, 10);
    EXPECT_EQ(program.Prog[0].LineNum, 90) << row.what;
  }
}

TEST(LinesThatNameALine, TheTargetsOfAMenuStay) {
  Program program = FullProgram();
  program.Prog[0] = Naming(MMI, 0, Menu);
  program.Prog[0].MenuLine[1] = 90;
  program.Prog[0].MenuKey[1] = true;
  InsertLine(program, 10);
  EXPECT_EQ(program.Prog[0].MenuLine[1], 90);
}

TEST(LinesThatNameALine, ANumberBeyondAllLinesDoesNotOverflow) {
  Program program = FullProgram();
  program.Prog[0] = Naming(GT, 32767);
  program.Prog[1] = Naming(GT, -32768);
  InsertLine(program, 5);
  DeleteLine(program, 5);
  EXPECT_EQ(program.Prog[1].LineNum, -32768);
}

TEST(LimitBranch, MovesWithTheRows) {
  const struct {
    double branch;
    int line;
    double inserted;
    double deleted;
  } rows[] = {
      // The branch counts from 1: line 10 from 0 is its row 11.
      {11, 10, 12, 11},    {10, 10, 10, 10}, {12, 10, 13, 11}, {199, 10, 200, 198},
      {200, 10, 200, 199}, {1, 0, 2, 1},     {2, 0, 3, 1},
  };
  for (const auto& row : rows) {
    Program program = FullProgram();
    program.LimitBranch = row.branch;
    InsertLine(program, row.line);
    EXPECT_EQ(program.LimitBranch, row.inserted) << row.branch << " with " << row.line;
    program = FullProgram();
    program.LimitBranch = row.branch;
    DeleteLine(program, row.line);
    EXPECT_EQ(program.LimitBranch, row.deleted) << row.branch << " without " << row.line;
  }
}

}  // namespace
}  // namespace tavlo
