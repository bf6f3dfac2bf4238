// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "commands/lines.h"
#include "session/grid.h"
#include "support/fake_desk.h"
#include "support/fake_editors.h"
#include "support/rows_true.h"

namespace tavlo::testing {
namespace {

struct PickDesk : FakeDesk {
  PickDesk() {
    desk.editors = &editors;
    editors.confirms = true;
    for (int line = 0; line < 20; ++line) Line(line) = {.Type = FL, .Dist = line + 1};
    ShowProgram(desk);
    source.Changed = false;
  }
  void Pick(int line, std::vector<Picked> presses) {
    editors.presses = std::move(presses);
    DropIcon(desk, line, line, false);
  }
  [[nodiscard]] const Row& RowOf(int line) { return source.shown.rows[line]; }

  FakeEditors editors;
};

Picked Kind(int type) {
  return {.what = Picked::What::Kind, .type = type};
}
const Picked kInsert = {.what = Picked::What::Insert};
const Picked kDelete = {.what = Picked::What::Delete};

TEST(PickProg, AKindIsStoredAndEdited) {
  PickDesk d;
  d.Pick(5, {Kind(WT)});
  EXPECT_EQ(d.editors.log, (std::vector<std::string>{"pick for 5", "edit 5 of kind 4"}));
  EXPECT_EQ(d.Line(5).Type, WT);
  EXPECT_EQ(d.Line(5).Dist, FakeEditors::kWrittenDist);
  EXPECT_TRUE(d.source.Changed);
  ExpectRowsTrue(d.desk);
}

TEST(PickProg, CancelInTheDialogTakesTheKindBack) {
  PickDesk d;
  d.editors.confirms = false;
  const Instruction before = d.Line(5);
  d.Pick(5, {Kind(WT)});
  EXPECT_EQ(d.Line(5), before);
  EXPECT_FALSE(d.source.Changed);
  ExpectRowsTrue(d.desk);
}

TEST(PickProg, KindsWithNothingToEditAreWrittenAtOnce) {
  for (const int type : {int{ER}, int{NO}, int{RT}}) {
    PickDesk d;
    d.Pick(5, {Kind(type)});
    EXPECT_EQ(d.editors.log, (std::vector<std::string>{"pick for 5"}));
    EXPECT_EQ(d.Line(5).Type, type);
    EXPECT_EQ(d.Line(5).Dist, 6) << "only the kind";
    EXPECT_TRUE(d.source.Changed);
    ExpectRowsTrue(d.desk);
  }
}

TEST(PickProg, CancelRestoresTheRow) {
  PickDesk d;
  d.editors.meanwhile = [&d] { EXPECT_EQ(d.RowOf(5).state, RowState::Picked); };
  d.Pick(5, {});
  EXPECT_EQ(d.editors.log.size(), 1U);
  EXPECT_FALSE(d.source.Changed);
  ExpectRowsTrue(d.desk);
}

TEST(PickProg, InsertsAnEmptyLineWithoutAQuestionWhileLine200IsEmpty) {
  PickDesk d;
  d.Pick(5, {kInsert});
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.Line(5).Type, NO);
  EXPECT_EQ(d.Line(6).Dist, 6);
  EXPECT_TRUE(d.source.Changed);
  ExpectRowsTrue(d.desk);
}

TEST(PickProg, AsksBeforeLine200IsLost) {
  for (const Answer answer : {Answer::OK, Answer::Cancel}) {
    PickDesk d;
    d.Line(199).Type = CM;
    d.boxes.setNextAnswer(answer);
    d.Pick(5, {kInsert});
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(
        d.boxes.shown[0],
        (ShownBox{
            "Insert a new line at Line 6?  All steps below will be pushed down and Line 200 will be lost!",
            "Insert", Buttons::OKCancel, Icon::None}));
    EXPECT_EQ(d.Line(5).Type, answer == Answer::OK ? NO : FL);
    EXPECT_EQ(d.editors.stayed, answer == Answer::OK ? 0 : 1) << "the picker stays after Cancel";
    EXPECT_EQ(d.source.Changed, answer == Answer::OK);
  }
}

TEST(PickProg, InsertingAtLine200AsksWhileItIsInUse) {
  PickDesk d;
  d.Line(199).Type = CM;
  d.Pick(199, {kInsert});
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text,
            "Insert a new line at Line 200?  All steps below will be pushed down and Line 200 will be lost!");
  EXPECT_EQ(d.Line(199).Type, NO);
}

TEST(PickProg, AsksBeforeALineInUseIsDeleted) {
  for (const Answer answer : {Answer::OK, Answer::Cancel}) {
    PickDesk d;
    d.boxes.setNextAnswer(answer);
    d.Pick(5, {kDelete});
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.boxes.shown[0],
              (ShownBox{"Delete program line 6?", "Delete", Buttons::OKCancel, Icon::None}));
    EXPECT_EQ(d.Line(5).Dist, answer == Answer::OK ? 7 : 6);
    EXPECT_EQ(d.editors.stayed, answer == Answer::OK ? 0 : 1);
    ExpectRowsTrue(d.desk);
  }
}

TEST(PickProg, AnEmptyLineGoesWithoutAQuestion) {
  PickDesk d;
  d.Line(5).Type = NO;
  d.Pick(5, {kDelete});
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.Line(5).Dist, 7);
}

TEST(PickProg, AfterACancelledQuestionTheNextPressCounts) {
  PickDesk d;
  d.boxes.setNextAnswer(Answer::Cancel);
  d.Pick(5, {kDelete, Kind(WT)});
  EXPECT_EQ(d.Line(5).Type, WT);
}

TEST(PickProg, TheBranchOfALimitAndItsRowMoveWithTheLines) {
  PickDesk d;
  d.source.program.LimitList = BranchToLine;
  d.source.program.LimitBranch = 10;
  d.source.shown.LimitLine = 10;
  ShowProgram(d.desk);
  d.Pick(5, {kInsert});
  EXPECT_EQ(d.source.program.LimitBranch, 11);
  EXPECT_EQ(d.source.shown.LimitLine, 11);
  EXPECT_EQ(d.RowOf(10).state, RowState::LimitTarget);
  EXPECT_EQ(d.RowOf(9).state, RowState::Normal);
  ExpectRowsTrue(d.desk);
}

TEST(ShowInstDialog, ShiftGoesStraightToTheDialogOfTheLine) {
  PickDesk d;
  DropIcon(d.desk, 5, 5, true);
  EXPECT_EQ(d.editors.log, (std::vector<std::string>{"edit 5 of kind 0"}));
  EXPECT_TRUE(d.source.Changed);
  ExpectRowsTrue(d.desk);
}

TEST(ShowInstDialog, CancelLeavesTheProgramUnchanged) {
  PickDesk d;
  d.editors.confirms = false;
  DropIcon(d.desk, 5, 5, true);
  EXPECT_FALSE(d.source.Changed);
  ExpectRowsTrue(d.desk);
}

TEST(ShowInstDialog, NothingHappensWhileTheHubIsBusy) {
  PickDesk d;
  d.source.link.Busy = true;
  ShowInstDialog(d.desk);
  EXPECT_TRUE(d.editors.log.empty());
}

TEST(WhileADialogIsUp, NoOtherLineCanBeReached) {
  PickDesk d;
  d.editors.meanwhile = [&d] {
    d.editors.meanwhile = nullptr;
    DropIcon(d.desk, 9, 9, false);
    DropIcon(d.desk, 9, 9, true);
    DropIcon(d.desk, 9, 12, false);
    EXPECT_EQ(d.source.CurLine, 5);
  };
  d.Pick(5, {Kind(WT)});
  EXPECT_EQ(d.editors.log, (std::vector<std::string>{"pick for 5", "edit 5 of kind 4"}));
  EXPECT_EQ(d.Line(12).Dist, 13);
  EXPECT_TRUE(d.boxes.shown.empty());
  DropIcon(d.desk, 9, 9, true);
  EXPECT_EQ(d.source.CurLine, 9) << "and it can afterwards";
}

}  // namespace
}  // namespace tavlo::testing
