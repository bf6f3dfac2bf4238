// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <vector>

#include "session/rows.h"

namespace tavlo {
namespace {

Program NewProgram() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  return program;
}

Instruction& Put(Program& program, int line, int type, int target = 0) {
  Instruction& record = program.Prog[static_cast<std::size_t>(line)];
  record.Type = static_cast<std::int16_t>(type);
  record.LineNum = static_cast<std::int16_t>(target);
  return record;
}

TEST(Arrows, AProgramWithoutConnectionsHasNone) {
  Program program = NewProgram();
  EXPECT_TRUE(ArrowsOf(program).empty());
  for (const int type : {FL, WT, RP, RL, MMI, CM, RT, SS}) Put(program, type, type, 5);
  Put(program, 50, FSS, 60);
  EXPECT_EQ(ArrowsOf(program).size(), 1U) << "the safety branch alone";
}

TEST(Arrows, JumpsAndCallsComeFirstBranchesNextEndsOfLoopsLastEachFromLine199Upwards) {
  Program program = NewProgram();
  Put(program, 3, GT, 10);
  Put(program, 180, CL, 100);
  Put(program, 20, II, 1);
  Put(program, 21, MMI, 2).SubType = BranchYesNo;
  Put(program, 22, III, 3);
  Put(program, 23, FSS, 4);
  Put(program, 24, IM, 5);
  Put(program, 30, ER, 28);
  Put(program, 60, ER, 50);
  Put(program, 61, ER, 1000);
  const std::vector<std::pair<int, int>> expected = {{180, 100}, {3, 10}, {24, 5},  {23, 4}, {22, 3},
                                                     {21, 2},    {20, 1}, {60, 50}, {30, 28}};
  const std::vector<Arrow> arrows = ArrowsOf(program);
  ASSERT_EQ(arrows.size(), expected.size());
  std::set<int> lanes;
  for (std::size_t i = 0; i < arrows.size(); ++i) {
    EXPECT_EQ(arrows[i].from, expected[i].first) << i;
    EXPECT_EQ(arrows[i].to, expected[i].second) << i;
    EXPECT_EQ(arrows[i].lanes, 9) << i;
    EXPECT_EQ(arrows[i].colour, static_cast<int>(i) % 7) << i;
    lanes.insert(arrows[i].lane);
  }
  EXPECT_EQ(lanes.size(), 9U);
  EXPECT_EQ(*lanes.begin(), 0);
  EXPECT_EQ(*lanes.rbegin(), 8);
}

TEST(Arrows, AnyPromptButTheYesNoBranchHasNone) {
  for (int sub = 0; sub <= 6; ++sub) {
    Program program = NewProgram();
    Put(program, 0, MMI, 7).SubType = static_cast<std::int16_t>(sub);
    EXPECT_EQ(ArrowsOf(program).size(), sub == BranchYesNo ? 1U : 0U) << sub;
  }
}

TEST(Arrows, ATargetThatIsNoLineHasNone) {
  for (const int target : {-1, 200, 255, 1000, 32767, -32768}) {
    Program program = NewProgram();
    Put(program, 0, GT, target);
    Put(program, 1, II, target);
    Put(program, 2, ER, target);
    EXPECT_TRUE(ArrowsOf(program).empty()) << target;
    Put(program, 3, GT, 199);
    ASSERT_EQ(ArrowsOf(program).size(), 1U);
    EXPECT_EQ(ArrowsOf(program)[0], (Arrow{3, 199, 0, 1, 0}));
  }
}

TEST(Arrows, ColoursCycleThroughSeven) {
  Program program = NewProgram();
  for (int i = 0; i < kLines; ++i) Put(program, i, GT, 0);
  const std::vector<Arrow> arrows = ArrowsOf(program);
  ASSERT_EQ(arrows.size(), 200U);
  EXPECT_EQ(kArrowColours, 7);
  for (std::size_t i = 0; i < arrows.size(); ++i) EXPECT_EQ(arrows[i].colour, static_cast<int>(i % 7));
}

TEST(LabelColours, TargetsOfCallsAreRedAndOfMenusBlue) {
  Program program = NewProgram();
  Put(program, 0, CL, 30);
  Put(program, 1, GT, 31);
  Put(program, 2, II, 32);
  Put(program, 3, MMI).SubType = Menu;
  const auto colours = LabelColoursOf(program);
  EXPECT_EQ(colours[30], LabelColour::Red);
  EXPECT_EQ(colours[31], LabelColour::Plain);
  EXPECT_EQ(colours[32], LabelColour::Plain);
  for (const int target : {9, 19, 29, 39})
    EXPECT_EQ(colours[static_cast<std::size_t>(target)], LabelColour::Blue);
  EXPECT_EQ(colours[0], LabelColour::Plain);
  EXPECT_EQ(colours[199], LabelColour::Plain);
}

TEST(LabelColours, OtherPromptsAndTargetsThatAreNoLineColourNothing) {
  Program program = NewProgram();
  Put(program, 0, MMI).SubType = DisplayOnly;
  for (const int target : {-1, 200, 32767, -32768}) Put(program, 1, CL, target);
  Put(program, 2, MMI).SubType = Menu;
  program.Prog[2].MenuLine.fill(-7);
  Put(program, 3, MMI).SubType = Menu;
  program.Prog[3].MenuLine.fill(200);
  for (const LabelColour colour : LabelColoursOf(program)) EXPECT_EQ(colour, LabelColour::Plain);
}

/// Frames of the first lines of a program of these types; a negative one is a move that goes on past itself.
std::vector<int> Frames(std::initializer_list<int> types) {
  Program program = NewProgram();
  for (int i = 0; i < kLines; ++i) Put(program, i, GT);
  int line = 0;
  for (const int type : types) {
    Put(program, line, type < 0 ? -type : type).Proceed = type < 0;
    ++line;
  }
  const auto all = ChainFramesOf(program);
  return {all.begin(), all.begin() + line + 1};
}

TEST(Chains, TheMoveThatOpensAStretchIsNotFramedItselfTheLinesThatRunWhileItMovesAre) {
  EXPECT_EQ(Frames({-FR, WT, SO, FL, WT}), (std::vector{1, 3, 3, 1, 1, 1}));
}

TEST(Chains, EachMoveThatGoesOnOpensAStretch) {
  for (const int type : {FR, FS, FSR, SH, FP, FLSO, FLCS, FSS}) {
    EXPECT_EQ(Frames({-type, WT, GT}), (std::vector{1, 3, 1, 1})) << type;
  }
  Program program = NewProgram();
  Put(program, 0, FL).Proceed = true;
  EXPECT_EQ(ChainFramesOf(program)[1], kChainFrame);
}

TEST(Chains, NoOtherTypeOpensAStretchEvenWithProceed) {
  for (const int type : {WT, GT, RP, ER, SO, II, NO, CM, MMI, IM, SS, SP}) {
    EXPECT_EQ(Frames({-type, WT}), (std::vector{1, 1, 1})) << type;
  }
}

TEST(Chains, LinesThatCanBePassedCarryTheStretchOn) {
  EXPECT_EQ(Frames({-FR, WT, SO, NO, CM, MMI, IM, WT}), (std::vector{1, 3, 3, 3, 3, 3, 3, 3, 1}));
}

TEST(Chains, AnyOtherLineEndsTheStretchAndHasAThinFrame) {
  for (const int type : {GT, WI, RP, ER, II, ED, SP, CC, FE, III, WII, RL, LP, CL, RT, SS}) {
    EXPECT_EQ(Frames({-FR, WT, type, WT}), (std::vector{1, 3, 1, 1, 1})) << type;
  }
  EXPECT_EQ(Frames({-FR, FR, WT}), (std::vector{1, 1, 1, 1}));
}

TEST(Chains, AMoveThatGoesOnWithinAStretchIsFramedAndKeepsItUp) {
  EXPECT_EQ(Frames({-FR, -FP, WT, -FS, SO, FR}), (std::vector{1, 3, 3, 3, 3, 1, 1}));
}

TEST(Chains, Line0HasNoPredecessorAndTheLastLineNoSuccessor) {
  EXPECT_EQ(Frames({WT})[0], 1);
  Program program = NewProgram();
  Put(program, 198, FL).Proceed = true;
  Put(program, 199, FL).Proceed = true;
  const auto frames = ChainFramesOf(program);
  EXPECT_EQ(frames[198], 1);
  EXPECT_EQ(frames[199], 3);
}

}  // namespace
}  // namespace tavlo
