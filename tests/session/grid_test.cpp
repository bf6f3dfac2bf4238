// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "support/fake_desk.h"

namespace tavlo {
namespace {

using testing::FakeDesk;

RowState StateOf(const FakeDesk& fake, int line) {
  return fake.source.shown.rows[static_cast<std::size_t>(line)].state;
}

/// The desk whose hub branches to operator's line 5 on a limit.
void BranchTo5(FakeDesk& fake) {
  fake.source.program.LimitList = BranchToLine;
  fake.source.program.LimitBranch = 5;
  fake.source.shown.LimitLine = 5;
}

TEST(Row, ShowDescWritesTheTextAndTellsTheView) {
  FakeDesk fake;
  fake.Line(7).Type = ER;
  fake.view.rows.clear();
  ShowDesc(fake.desk.grid(), 7);
  EXPECT_EQ(fake.source.shown.rows[7].desc, "End Repeat Loop");
  EXPECT_EQ(StateOf(fake, 7), RowState::Normal);
  EXPECT_TRUE(std::ranges::count(fake.view.rows, 7) > 0);
}

TEST(Row, ShowDescOnAnEmptyLineGivesAnEmptyRowAndTheRowOfTheLimitBranchStillTurnsPaleCyan) {
  FakeDesk fake;
  BranchTo5(fake);
  fake.source.shown.rows[4].desc = "old";
  ShowDesc(fake.desk.grid(), 4);
  EXPECT_EQ(fake.source.shown.rows[4].desc, "");
  EXPECT_EQ(StateOf(fake, 4), RowState::LimitTarget);
  ShowDesc(fake.desk.grid(), 5);
  EXPECT_EQ(StateOf(fake, 5), RowState::Normal);
}

TEST(Row, ATypeWithoutATextLeavesTheRowsTextAsItWas) {
  FakeDesk fake;
  for (const int type : {18, 26, 32, 500}) {
    fake.source.shown.rows[3].desc = "as it was";
    fake.Line(3).Type = static_cast<std::int16_t>(type);
    ShowDesc(fake.desk.grid(), 3);
    EXPECT_EQ(fake.source.shown.rows[3].desc, "as it was") << type;
  }
}

TEST(Row, TheBackgroundIsPaleCyanWhereLimitListIsAt1AndTheLineIsTheBranchTarget) {
  for (const int action : {0, 1, 2}) {
    FakeDesk fake;
    BranchTo5(fake);
    fake.source.program.LimitList = static_cast<std::int16_t>(action);
    for (const int line : {0, 3, 4, 5, 199}) {
      const RowState expected = action == 1 && line == 4 ? RowState::LimitTarget : RowState::Normal;
      EXPECT_EQ(RestState(fake.source.program, line), expected);
      fake.source.shown.rows[static_cast<std::size_t>(line)].state = RowState::Executing;
      RestoreDesc(fake.desk.grid(), line);
      EXPECT_EQ(StateOf(fake, line), expected);
    }
  }
}

TEST(Row, SetIconTakesTheCyanSetForTheBranchTarget) {
  FakeDesk fake;
  fake.Line(4).Type = CL;
  SetIcon(fake.desk.grid(), 4);
  EXPECT_EQ(IconOf(fake, 4), "CLicon");
  BranchTo5(fake);
  SetIcon(fake.desk.grid(), 4);
  EXPECT_EQ(IconOf(fake, 4), "cCLicon");
}

TEST(Row, ALinePickedForChangeShowsThePickedIconOnWhite) {
  FakeDesk fake;
  BranchTo5(fake);
  fake.Line(4).Type = WT;
  ShowPicked(fake.desk.grid(), 4);
  EXPECT_EQ(StateOf(fake, 4), RowState::Picked);
  EXPECT_EQ(IconOf(fake, 4), "iWTicon");
}

TEST(Run, ShowLinePaintsTheLineYellowAndScrolls) {
  FakeDesk fake;
  fake.Line(10).Type = SO;
  ShowLine(fake.desk.grid(), 10);
  EXPECT_EQ(StateOf(fake, 10), RowState::Executing);
  EXPECT_EQ(IconOf(fake, 10), "ySOicon");
  EXPECT_EQ(fake.view.scrolls, std::vector{10});
}

TEST(Run, ShowRedLinePaintsTheLinePaleRedAndScrolls) {
  FakeDesk fake;
  fake.Line(199).Type = FLSO;
  ShowRedLine(fake.desk.grid(), 199);
  EXPECT_EQ(StateOf(fake, 199), RowState::WentOn);
  EXPECT_EQ(IconOf(fake, 199), "RFLSOicon");
  EXPECT_EQ(fake.view.scrolls, std::vector{199});
}

TEST(Run, HideYelLinePutsTheLineToRestWithoutScrolling) {
  FakeDesk fake;
  BranchTo5(fake);
  for (const int line : {4, 9}) {
    fake.Line(line).Type = GT;
    ShowLine(fake.desk.grid(), line);
    fake.view.scrolls.clear();
    HideYelLine(fake.desk.grid(), line);
    EXPECT_EQ(StateOf(fake, line), line == 4 ? RowState::LimitTarget : RowState::Normal);
    EXPECT_EQ(IconOf(fake, line), line == 4 ? "cGTicon" : "GotoIcon");
    EXPECT_TRUE(fake.view.scrolls.empty());
  }
}

TEST(Run, ACallOrReturnLineTurnsIntoAMoveIconWhileItExecutes) {
  FakeDesk fake;
  fake.Line(0).Type = CL;
  fake.Line(1).Type = RT;
  for (const int line : {0, 1}) {
    ShowLine(fake.desk.grid(), line);
    EXPECT_EQ(IconOf(fake, line), "ymoveicon");
    ShowRedLine(fake.desk.grid(), line);
    EXPECT_EQ(IconOf(fake, line), "rMoveIcon");
    HideYelLine(fake.desk.grid(), line);
    EXPECT_EQ(IconOf(fake, line), line == 0 ? "CLicon" : "RTicon");
  }
}

TEST(Run, ALineOutsideTheProgramPaintsNothing) {
  FakeDesk fake;
  fake.view.rows.clear();
  for (const int line : {-1, 200, 201, 255, 2047, 100000, -100000}) {
    ShowLine(fake.desk.grid(), line);
    ShowRedLine(fake.desk.grid(), line);
    HideYelLine(fake.desk.grid(), line);
  }
  EXPECT_TRUE(fake.view.rows.empty());
  EXPECT_TRUE(fake.view.scrolls.empty());
}

TEST(Run, ARunTimeMessagePaintsOneLineOnly) {
  FakeDesk fake;
  fake.view.rows.clear();
  fake.view.all_rows = 0;
  ShowLine(fake.desk.grid(), 3);
  ShowRedLine(fake.desk.grid(), 3);
  HideYelLine(fake.desk.grid(), 3);
  EXPECT_EQ(fake.view.all_rows, 0);
  for (const int line : fake.view.rows) EXPECT_EQ(line, 3);
}

TEST(Run, ClearAnimationPutsAll200LinesToRest) {
  FakeDesk fake;
  BranchTo5(fake);
  for (int line = 0; line < kLines; ++line) {
    fake.Line(line).Type = WT;
    ShowLine(fake.desk.grid(), line);
  }
  ClearAnimation(fake.desk.grid());
  for (int line = 0; line < kLines; ++line) {
    EXPECT_EQ(StateOf(fake, line), line == 4 ? RowState::LimitTarget : RowState::Normal);
    EXPECT_EQ(IconOf(fake, line), line == 4 ? "cWTicon" : "WaitTimeIcon");
  }
}

TEST(Grid, DrawArrowsFillsArrowsAndLabels) {
  FakeDesk fake;
  fake.Line(0).Type = CL;
  fake.Line(0).LineNum = 50;
  fake.view.arrows = 0;
  DrawArrows(fake.desk.grid());
  EXPECT_EQ(fake.source.shown.arrows, ArrowsOf(fake.source.program));
  EXPECT_EQ(fake.source.shown.rows[50].label, LabelColour::Red);
  EXPECT_GT(fake.view.arrows, 0);
  fake.Line(0).Type = NO;
  DrawArrows(fake.desk.grid());
  EXPECT_TRUE(fake.source.shown.arrows.empty());
  EXPECT_EQ(fake.source.shown.rows[50].label, LabelColour::Plain);
}

TEST(Grid, MarkChainsWritesAFrameOnlyIfItDiffers) {
  FakeDesk fake;
  fake.Line(0).Type = FL;
  fake.Line(0).Proceed = true;
  fake.Line(1).Type = WT;
  fake.Line(2).Type = GT;
  MarkChains(fake.desk.grid());
  EXPECT_EQ(fake.source.shown.rows[0].frame, kPlainFrame);
  EXPECT_EQ(fake.source.shown.rows[1].frame, kChainFrame);
  EXPECT_EQ(fake.source.shown.rows[2].frame, kPlainFrame);
  EXPECT_FALSE(fake.Line(1).WaitThis);
  fake.view.rows.clear();
  fake.view.all_rows = 0;
  MarkChains(fake.desk.grid());
  EXPECT_TRUE(fake.view.rows.empty());
  EXPECT_EQ(fake.view.all_rows, 0);
}

TEST(Drives, EachAxisShowsItsNameItsModelAndItsCurrent) {
  FakeDesk fake;
  Program& program = fake.source.program;
  program.Axis.AxisName[1] = "Feeder";
  program.Axis.DriveCurrent[1] = 2.25F;
  const DriveDesc stepper = DriveDescOf(program, 1);
  EXPECT_EQ(stepper.name, "Feeder");
  EXPECT_EQ(stepper.model, "Oskel-C");
  EXPECT_EQ(stepper.current, "2.3A");
  program.Axis.DriveModel[2] = 12;
  program.Axis.ContCurrent[2] = 6.5F;
  EXPECT_EQ(DriveDescOf(program, 2).current, "6.5A");
  program.Axis.DriveModel[3] = 44;
  program.Axis.RunCurrent[3] = 3.0F;
  EXPECT_EQ(DriveDescOf(program, 3).current, "3.0A");
  EXPECT_EQ(DriveDescOf(program, 7).model, "none");
  EXPECT_EQ(DriveDescOf(program, 7).current, "");
}

TEST(Drives, ForAHubOfFourAxesRows4To7AreMadeEmpty) {
  FakeDesk fake;
  fake.source.program.HubIndex = HubQuad;
  for (int axis = 0; axis < 8; ++axis) {
    const DriveDesc row = DriveDescOf(fake.source.program, axis);
    EXPECT_EQ(row.name.empty(), axis >= 4) << axis;
    EXPECT_EQ(row.model.empty(), axis >= 4) << axis;
    EXPECT_EQ(row.current.empty(), axis >= 4) << axis;
  }
}

}  // namespace
}  // namespace tavlo
