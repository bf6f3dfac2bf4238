// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <string>

#include "commands/lines.h"
#include "session/grid.h"
#include "support/fake_desk.h"
#include "support/fake_editors.h"

namespace tavlo {
namespace {

using testing::FakeDesk;
using testing::FakeEditors;
using testing::ShownBox;

TEST(Click, PicksTheLineAndShowsThePickerAndThenTheNormalIcon) {
  FakeDesk fake;
  FakeEditors editors;
  fake.desk.editors = &editors;
  fake.Line(8).Type = WT;
  std::string icon;
  RowState state = RowState::Normal;
  editors.meanwhile = [&] {
    icon = IconOf(fake, 8);
    state = fake.source.shown.rows[8].state;
  };
  DropIcon(fake.desk, 8, 8, false);
  EXPECT_EQ(fake.source.CurLine, 8);
  EXPECT_EQ(editors.log, (std::vector<std::string>{"pick for 8"}));
  EXPECT_EQ(icon, "iWTicon");
  EXPECT_EQ(state, RowState::Picked);
  EXPECT_EQ(IconOf(fake, 8), "WaitTimeIcon");
  EXPECT_TRUE(fake.boxes.shown.empty());
}

TEST(Click, WithShiftGoesStraightToTheDialogAndRefreshesTheLine) {
  FakeDesk fake;
  FakeEditors editors;
  fake.desk.editors = &editors;
  fake.Line(8).Type = FL;
  fake.Line(9).Type = WT;
  editors.meanwhile = [&] { fake.Line(8).Proceed = true; };
  DropIcon(fake.desk, 8, 8, true);
  EXPECT_EQ(editors.log, (std::vector<std::string>{"edit 8 of kind 0"}));
  EXPECT_EQ(fake.source.CurLine, 8);
  EXPECT_EQ(IconOf(fake, 8), "MoveIcon");
  EXPECT_EQ(fake.source.shown.rows[9].frame, kChainFrame) << "MarkChains has run";
  EXPECT_EQ(fake.source.shown.rows[8].desc, "Axis 1:CW 1.0 rev, 3.0 rps");
}

TEST(Click, WithNoEditorsTheRowComesBackToRest) {
  FakeDesk fake;
  for (const bool shift : {false, true}) {
    DropIcon(fake.desk, 3, 3, shift);
    EXPECT_EQ(IconOf(fake, 3), "NoneIcon");
    EXPECT_EQ(fake.source.shown.rows[3].state, RowState::Normal);
  }
}

TEST(Drag, OntoAnEmptyLineCopiesWithNoQuestion) {
  FakeDesk fake;
  fake.Line(0).Type = FL;
  fake.Line(0).Proceed = true;
  fake.Line(0).Dist = 4711;
  fake.Line(0).LineNum = 66;
  DropIcon(fake.desk, 0, 5, false);
  EXPECT_TRUE(fake.boxes.shown.empty());
  EXPECT_EQ(fake.Line(5), fake.Line(0)) << "a whole record, jump targets unchanged";
  EXPECT_TRUE(fake.source.Changed);
  EXPECT_EQ(IconOf(fake, 5), "MoveIcon");
  EXPECT_EQ(fake.source.shown.rows[5].desc, "Axis 1:CW .24 rev, 3.0 rps");
  EXPECT_EQ(fake.source.shown.rows[6].frame, kChainFrame) << "MarkChains has run";
}

TEST(Drag, OntoALineInUseAsksAndOKCopies) {
  FakeDesk fake;
  fake.Line(0).Type = WT;
  fake.Line(5).Type = SO;
  fake.boxes.setNextAnswer(Answer::Cancel);
  DropIcon(fake.desk, 0, 5, false);
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0], (ShownBox{"Do you want to copy program line 1 to line 6?",
                                           "Copy Program Line", Buttons::OKCancel, Icon::None}));
  EXPECT_EQ(fake.Line(5).Type, SO);
  EXPECT_FALSE(fake.source.Changed);
  fake.boxes.setNextAnswer(Answer::OK);
  DropIcon(fake.desk, 0, 5, false);
  EXPECT_EQ(fake.Line(5).Type, WT);
  EXPECT_TRUE(fake.source.Changed);
}

TEST(Drag, CopyInstNumbersTheLoopsAndDrawsTheArrows) {
  FakeDesk fake;
  fake.Line(0).Type = RP;
  fake.Line(1).Type = ER;
  CopyInst(fake.desk, 0, 2);
  CopyInst(fake.desk, 1, 3);
  EXPECT_EQ(fake.Line(2).LoopIndex, 1);
  EXPECT_EQ(fake.Line(3).LineNum, 2);
  EXPECT_EQ(fake.source.shown.arrows.size(), 2U);
}

TEST(Drag, APromptThatWouldOverflowThePoolIsToldAndNotCopied) {
  FakeDesk fake;
  fake.Line(0).Type = MMI;
  fake.Line(0).Text = std::string(767, 'x');
  CopyInst(fake.desk, 0, 1);
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0],
            (ShownBox{"Strings too long", "Tavlo Composer", Buttons::OK, Icon::Exclamation}));
  EXPECT_EQ(fake.Line(1).Type, NO);
  EXPECT_FALSE(fake.source.Changed);
  fake.Line(0).Text.pop_back();
  CopyInst(fake.desk, 0, 1);
  EXPECT_EQ(fake.Line(1).Type, MMI) << "766 + 1 twice, and a byte";
}

TEST(Drag, AnotherKindOfLineIsCopiedHoweverLongItsText) {
  FakeDesk fake;
  fake.Line(0).Type = CM;
  fake.Line(0).Text = std::string(3000, 'x');
  CopyInst(fake.desk, 0, 1);
  EXPECT_TRUE(fake.boxes.shown.empty());
  EXPECT_EQ(fake.Line(1).Text.size(), 3000U);
}

TEST(Drag, ALineOutsideTheProgramIsDropped) {
  FakeDesk fake;
  const auto before = fake.source.program.Prog;
  for (const int line : {-1, 200, 201, 100000}) {
    DropIcon(fake.desk, line, 5, false);
    DropIcon(fake.desk, 5, line, false);
    DropIcon(fake.desk, line, line, true);
  }
  EXPECT_EQ(fake.source.program.Prog, before);
  EXPECT_FALSE(fake.source.Changed);
}

}  // namespace
}  // namespace tavlo
