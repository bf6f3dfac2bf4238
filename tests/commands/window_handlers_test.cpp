// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "commands/hub_choices.h"
#include "commands/program_files.h"
#include "session/grid.h"
#include "session/source.h"
#include "support/fake_desk.h"

namespace tavlo {
namespace {

using testing::FakeDesk;
using testing::ShownBox;

TEST(Session, StartsWithItsListsAndBoxesSet) {
  Source source;
  source.Changed = true;
  source.program.Axis.LimitKind.fill(2);
  InitSession(source);
  EXPECT_EQ(source.program.HubIndex, HubOcto);
  EXPECT_EQ(source.program.LimitList, HaltProgram);
  EXPECT_EQ(LimitBranchText(source.program), "1");
  EXPECT_EQ(source.shown.LimitLine, 1);
  EXPECT_EQ(source.link.DriveVersion, "?");
  EXPECT_FALSE(source.Changed);
  EXPECT_FALSE(source.display.MMIActive);
  EXPECT_FALSE(source.VOXterm.TermActive);
  EXPECT_FALSE(source.link.InMsg);
  EXPECT_EQ(source.link.MsgBuf, "");
  EXPECT_EQ(source.file_name, "untitled");
  for (int axis = 0; axis < kAxes; ++axis) EXPECT_EQ(source.program.Axis.LimitKind[axis], 0);
  EXPECT_EQ(LinesInProg(source.program), 1);
  for (const Row& row : source.shown.rows) {
    EXPECT_EQ(row.desc, "");
    EXPECT_EQ(IconName(row.icon), "NoneIcon");
    EXPECT_EQ(row.state, RowState::Normal);
    EXPECT_EQ(row.frame, kPlainFrame);
  }
}

TEST(Clear, AsksAndCancelKeepsTheProgram) {
  FakeDesk fake;
  fake.Line(4).Type = WT;
  fake.source.Changed = true;
  fake.boxes.setNextAnswer(Answer::Cancel);
  Clear(fake.desk);
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0], (ShownBox{"Do you want to clear your entire program?", "Erase Program",
                                           Buttons::OKCancel, Icon::None}));
  EXPECT_EQ(fake.Line(4).Type, WT);
  EXPECT_TRUE(fake.source.Changed);
}

TEST(Clear, OnOKTheProgramIsEmptyAndUntitled) {
  FakeDesk fake;
  fake.source.file_name = "/p/a.tvh";
  fake.source.Changed = true;
  fake.source.program.HubVersion = 1.38F;
  fake.source.program.LimitList = BranchToLine;
  fake.source.program.Axis.AxisName[0] = "Feeder";
  fake.Line(0).Type = FL;
  fake.Line(0).Proceed = true;
  fake.Line(1).Type = GT;
  fake.Line(5).Drive = 3;
  for (const int line : {0, 1}) {
    ShowDesc(fake.desk.grid(), line);
    SetIcon(fake.desk.grid(), line);
  }
  DrawArrows(fake.desk.grid());
  MarkChains(fake.desk.grid());
  Clear(fake.desk);
  EXPECT_EQ(fake.view.scrolls, std::vector{0});
  EXPECT_EQ(LinesInProg(fake.source.program), 1);
  EXPECT_EQ(fake.source.program.HubVersion, 0);
  EXPECT_EQ(fake.Line(5).Drive, 3) << "Drive survives";
  EXPECT_EQ(fake.source.program.Axis.AxisName[0], "Feeder");
  EXPECT_TRUE(fake.source.shown.arrows.empty());
  for (int line = 0; line < kLines; ++line) {
    const Row& row = fake.source.shown.rows[static_cast<std::size_t>(line)];
    EXPECT_EQ(row.desc, "");
    EXPECT_EQ(IconName(row.icon), line == 0 ? "cNOicon" : "NoneIcon");
    EXPECT_EQ(row.state, line == 0 ? RowState::LimitTarget : RowState::Normal);
    EXPECT_EQ(row.frame, kPlainFrame) << line;
  }
  EXPECT_FALSE(fake.source.Changed);
  EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - untitled");
}

TEST(ModelList, ChangingItRedrawsTheAxisSummaryAndKeepsTheArrays) {
  FakeDesk fake;
  const AxisConfig before = fake.source.program.Axis;
  const int drives = fake.view.drives;
  SelectModel(fake.desk, HubQuad);
  EXPECT_EQ(fake.source.program.HubIndex, HubQuad);
  EXPECT_GT(fake.view.drives, drives);
  EXPECT_EQ(DriveDescOf(fake.source.program, 5).name, "");
  SelectModel(fake.desk, HubOcto);
  EXPECT_EQ(fake.source.program.Axis, before);
  EXPECT_EQ(DriveDescOf(fake.source.program, 5).name, "Axis 6");
}

TEST(LimitList, ChangingItRedoesIconAndDescriptionOfTheTargetLine) {
  FakeDesk fake;
  LeaveLimitBranch(fake.desk, "5");
  fake.Line(4).Type = WT;
  SelectLimitAction(fake.desk, BranchToLine);
  EXPECT_EQ(fake.source.program.LimitList, BranchToLine);
  EXPECT_EQ(fake.source.shown.rows[4].state, RowState::LimitTarget);
  EXPECT_EQ(IconOf(fake, 4), "cWTicon");
  EXPECT_EQ(fake.source.shown.rows[4].desc, "Wait 0.01 seconds");
  EXPECT_GT(fake.view.limit, 0);
  SelectLimitAction(fake.desk, ContinueProgram);
  EXPECT_EQ(fake.source.shown.rows[4].state, RowState::Normal);
  EXPECT_EQ(IconOf(fake, 4), "WaitTimeIcon");
}

TEST(Changed, IsRaisedByEachControlOfTheWindowThatChangesTheProgramAndNotByChoosingTheSameAgain) {
  struct Case {
    const char* name;
    void (*change)(Desk&);
  };
  for (const Case& c :
       {Case{"the model", [](Desk& desk) { ChooseModel(desk, HubQuad); }},
        Case{"the limit action", [](Desk& desk) { SelectLimitAction(desk, ContinueProgram); }},
        Case{"the limit branch", [](Desk& desk) { LeaveLimitBranch(desk, "12"); }},
        Case{"a forced branch", [](Desk& desk) { LeaveLimitBranch(desk, "999"); }}}) {
    FakeDesk fake;
    c.change(fake.desk);
    EXPECT_TRUE(fake.source.Changed) << c.name;
    fake.source.Changed = false;
    c.change(fake.desk);
    EXPECT_FALSE(fake.source.Changed) << c.name;
  }
}

TEST(Changed, IsNotRaisedByTheModelThatTheHubTells) {
  FakeDesk fake;
  SelectModel(fake.desk, HubQuad);
  EXPECT_EQ(fake.source.program.HubIndex, HubQuad);
  EXPECT_FALSE(fake.source.Changed);
}

TEST(Changed, StaysUpWhenWhatWasChangedIsPutBack) {
  FakeDesk fake;
  ChooseModel(fake.desk, HubQuad);
  ChooseModel(fake.desk, HubOcto);
  EXPECT_TRUE(fake.source.Changed);
}

TEST(LimitBranch, IsForcedIntoTheProgram) {
  struct {
    std::string_view text;
    int value;
  } const cases[] = {{"", 1},      {"0", 1},     {"-3", 1},      {"abc", 1},     {"1", 1},    {"5", 5},
                     {"200", 200}, {"201", 200}, {"99999", 200}, {"1E300", 200}, {" 42", 42}, {"7th", 7}};
  for (const auto& c : cases) {
    FakeDesk fake;
    LeaveLimitBranch(fake.desk, "17");
    LeaveLimitBranch(fake.desk, c.text);
    EXPECT_EQ(fake.source.program.LimitBranch, c.value) << c.text;
    EXPECT_EQ(LimitBranchText(fake.source.program), std::to_string(c.value)) << c.text;
    EXPECT_EQ(fake.source.shown.LimitLine, c.value) << c.text;
  }
}

TEST(LimitBranch, ANewValueRepaintsTheOldTargetRowAndTheNewOne) {
  FakeDesk fake;
  SelectLimitAction(fake.desk, BranchToLine);
  EXPECT_EQ(fake.source.shown.rows[0].state, RowState::LimitTarget);
  fake.view.rows.clear();
  LeaveLimitBranch(fake.desk, "5");
  EXPECT_EQ(fake.source.shown.rows[0].state, RowState::Normal);
  EXPECT_EQ(IconOf(fake, 0), "NoneIcon");
  EXPECT_EQ(fake.source.shown.rows[4].state, RowState::LimitTarget);
  EXPECT_EQ(IconOf(fake, 4), "cNOicon");
  EXPECT_TRUE(std::ranges::count(fake.view.rows, 0) > 0);
  EXPECT_TRUE(std::ranges::count(fake.view.rows, 4) > 0);
}

TEST(LimitBranch, TheSameValueRepaintsNothing) {
  FakeDesk fake;
  LeaveLimitBranch(fake.desk, "5");
  fake.view.rows.clear();
  LeaveLimitBranch(fake.desk, "5");
  EXPECT_TRUE(fake.view.rows.empty());
}

TEST(LimitBranch, AnyNumberFromAFileIsShownAndLeftSafely) {
  for (const double value : {5.5, -7.0, 1e300, 201.0, 32768.0, 0.0}) {
    FakeDesk fake;
    fake.source.program.LimitBranch = value;
    fake.source.program.LimitList = BranchToLine;
    ShowAllDescs(fake.desk.grid());
    const std::string text = LimitBranchText(fake.source.program);
    SelectLimitAction(fake.desk, BranchToLine);
    LeaveLimitBranch(fake.desk, text);
    EXPECT_GE(fake.source.program.LimitBranch, 1) << value;
    EXPECT_LE(fake.source.program.LimitBranch, 200) << value;
  }
  Program program;
  program.LimitBranch = 5.5;
  EXPECT_EQ(LimitBranchText(program), "5.5");
}

TEST(Quit, WithoutChangesThereIsNoQuestion) {
  FakeDesk fake;
  EXPECT_TRUE(MayQuit(fake.desk));
  EXPECT_TRUE(fake.boxes.shown.empty());
}

TEST(Quit, ChangesAreAskedAbout) {
  FakeDesk fake;
  fake.source.Changed = true;
  fake.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_FALSE(MayQuit(fake.desk));
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0],
            (ShownBox{"You have made changes without Saving or Downloading.  Do you really want to quit?",
                      "Quit", Buttons::OKCancel, Icon::None}));
  fake.boxes.setNextAnswer(Answer::OK);
  EXPECT_TRUE(MayQuit(fake.desk));
}

TEST(Quit, AMachineThatMayBeMovingIsAskedAboutLast) {
  FakeDesk fake;
  fake.source.Changed = true;
  fake.source.link.HubRuns = true;
  fake.boxes.setNextAnswer(Answer::OK);
  fake.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_FALSE(MayQuit(fake.desk));
  ASSERT_EQ(fake.boxes.shown.size(), 2U);
  EXPECT_EQ(
      fake.boxes.shown[1],
      (ShownBox{
          "A program may still be running on the hub.  Without Tavlo Composer the machine's own stop is "
          "the only one left.  Do you really want to quit?",
          "Quit", Buttons::OKCancel, Icon::Exclamation}));
  fake.source.Changed = false;
  EXPECT_TRUE(MayQuit(fake.desk));
  EXPECT_EQ(fake.boxes.shown.size(), 3U);
}

TEST(Boxes, ABoxWhoseTitleIsNotToldBearsTheApplicationsAndOKAlone) {
  FakeDesk fake;
  fake.desk.boxes.MsgBox({.text = "text"});
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0], (ShownBox{"text", "Tavlo Composer", Buttons::OK, Icon::None}));
}

}  // namespace
}  // namespace tavlo
