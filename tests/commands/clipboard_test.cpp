// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/clipboard.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "commands/lines.h"
#include "commands/undo.h"
#include "session/grid.h"
#include "support/fake_clipboard.h"
#include "support/fake_desk.h"
#include "support/rows_true.h"

namespace tavlo::testing {
namespace {

/// Twenty lines in use, a jump and a loop among them.
struct BlockDesk : FakeDesk {
  BlockDesk() {
    desk.clipboard = &clipboard;
    for (int line = 0; line < 20; ++line) Line(line) = {.Type = FL, .Dist = line + 1};
    Line(2).Type = RP;
    Line(6).Type = ER;
    Line(10) = {.Type = GT, .LineNum = 15};
    ShowProgram(desk);
    source.Changed = false;
  }

  FakeClipboard clipboard;
};

struct EditCase {
  /// What stands behind "Undo ".
  const char* name;
  std::function<void(BlockDesk&)> edit;
};

const std::vector<EditCase>& BlockEdits() {
  static const std::vector<EditCase> edits = {
      {"cut line 12",
       [](BlockDesk& d) {
         CutRows(d.desk, {11, 1});
       }},
      {"cut lines 12 to 16",
       [](BlockDesk& d) {
         CutRows(d.desk, {11, 5});
       }},
      {"delete line 12",
       [](BlockDesk& d) {
         DeleteRows(d.desk, {11, 1});
       }},
      {"delete lines 3 to 7",
       [](BlockDesk& d) {
         DeleteRows(d.desk, {2, 5});
       }},
      {"insert line 12", [](BlockDesk& d) { InsertRow(d.desk, 11); }},
      {"paste line 31",
       [](BlockDesk& d) {
         CopyRows(d.desk, {11, 1});
         PasteRows(d.desk, 30);
       }},
      {"paste lines 2 to 6",
       [](BlockDesk& d) {
         CopyRows(d.desk, {9, 5});
         PasteRows(d.desk, 1);
       }},
  };
  return edits;
}

TEST(Clipboard, EveryEditOfLinesIsOneStepThatIsTakenBackWhole) {
  for (const EditCase& c : BlockEdits()) {
    SCOPED_TRACE(c.name);
    BlockDesk d;
    const Program before = d.source.program;
    c.edit(d);
    EXPECT_FALSE(before.Prog == d.source.program.Prog);
    EXPECT_TRUE(d.source.Changed);
    EXPECT_EQ(d.source.history.UndoName(), c.name);
    ExpectRowsTrue(d.desk);
    Undo(d.desk);
    EXPECT_TRUE(before.Prog == d.source.program.Prog);
    EXPECT_EQ(d.source.history.UndoName(), "");
    ExpectRowsTrue(d.desk);
  }
}

TEST(Clipboard, CopiedLinesStandThereForThisProgramAndAsTextForAnyOther) {
  BlockDesk d;
  d.Line(11) = {.Type = CM,
                .Text =
                    "Cut & pr\xFC"
                    "fen\n"};
  d.Line(12).Type = NO;
  const Program before = d.source.program;
  CopyRows(d.desk, {10, 3});
  EXPECT_TRUE(d.source.program.Prog == before.Prog);
  EXPECT_FALSE(d.source.Changed);
  const auto block = ReadKeptLines(d.clipboard.kept.value_or(""));
  ASSERT_TRUE(block);
  EXPECT_EQ(block->first, 10);
  EXPECT_EQ(block->lines.size(), 3U);
  EXPECT_TRUE(block->lines[0] == before.Prog[10]);
  EXPECT_EQ(d.clipboard.plain.substr(0, d.clipboard.plain.find('\n')), "11  Go to line 16");
  EXPECT_NE(d.clipboard.plain.find("Cut & pr\xC3\xBC"
                                   "fen"),
            std::string::npos);
  EXPECT_TRUE(d.clipboard.plain.ends_with("\n13\n")) << d.clipboard.plain;
}

TEST(Clipboard, WhatIsNoneOfItsLinesIsNotPastedAndAWordSaysSo) {
  const std::vector<std::optional<std::string>> foreign = {std::nullopt, "", "Dear Sir",
                                                           std::string(100000, '\xFF'),
                                                           std::string("tavlo-kept-lines 1\nfirst 0\n")};
  for (const auto& text : foreign) {
    BlockDesk d;
    d.clipboard.kept = text;
    const Program before = d.source.program;
    PasteRows(d.desk, 5);
    EXPECT_TRUE(d.source.program.Prog == before.Prog);
    EXPECT_FALSE(d.source.Changed);
    EXPECT_TRUE(d.boxes.shown.empty());
    EXPECT_EQ(d.view.notes, std::vector<std::string>{"There are no program lines to paste."});
  }
}

struct LossCase {
  const char* what;
  /// The last lines in use, as the operator counts.
  std::vector<int> in_use;
  int count;
  int at;
  const char* question;
};

TEST(Clipboard, APasteAsksBeforeLinesInUseAreLostAtTheEnd) {
  const std::vector<LossCase> cases = {
      {"five of five",
       {196, 197, 198, 199, 200},
       5,
       12,
       "Insert 5 new lines at Line 12?  All steps below will be pushed down and Lines 196 to 200 will be "
       "lost!"},
      {"some of five",
       {195, 197, 199},
       5,
       12,
       "Insert 5 new lines at Line 12?  All steps below will be pushed down and Lines 197 to 199 will be "
       "lost!"},
      {"one of five",
       {198},
       5,
       12,
       "Insert 5 new lines at Line 12?  All steps below will be pushed down and Line 198 will be lost!"},
      {"one line, as an insertion asks",
       {200},
       1,
       12,
       "Insert a new line at Line 12?  All steps below will be pushed down and Line 200 will be lost!"},
      {"none", {195}, 5, 12, ""},
  };
  for (const LossCase& c : cases) {
    for (const Answer answer : {Answer::Cancel, Answer::OK}) {
      SCOPED_TRACE(c.what);
      BlockDesk d;
      for (const int line : c.in_use) d.Line(line - 1) = {.Type = RT};
      CopyRows(d.desk, {11, c.count});
      const Program before = d.source.program;
      if (*c.question != '\0') d.boxes.setNextAnswer(answer);
      PasteRows(d.desk, c.at - 1);
      ASSERT_EQ(d.boxes.shown.size(), *c.question == '\0' ? 0U : 1U);
      if (*c.question != '\0') {
        EXPECT_EQ(d.boxes.shown[0], (ShownBox{c.question, "Insert", Buttons::OKCancel, Icon::None}));
      }
      const bool pasted = *c.question == '\0' || answer == Answer::OK;
      EXPECT_EQ(d.source.program.Prog == before.Prog, !pasted);
      EXPECT_EQ(d.source.history.UndoName().empty(), !pasted);
    }
  }
}

TEST(Clipboard, ABlockThatHasNoRoomIsNotPastedAndAWordSaysSo) {
  BlockDesk d;
  CopyRows(d.desk, {11, 5});
  d.view.notes.clear();
  PasteRows(d.desk, 197);
  EXPECT_EQ(d.view.notes, std::vector<std::string>{"There is no room for 5 lines from line 198 on."});
  EXPECT_FALSE(d.source.Changed);
}

TEST(Clipboard, PromptsThatWouldOverflowThePoolOfTheHubAreNotPasted) {
  BlockDesk d;
  d.Line(11) = {.Type = MMI, .Text = std::string(700, 'x')};
  CopyRows(d.desk, {11, 1});
  PasteRows(d.desk, 30);
  EXPECT_TRUE(d.boxes.shown.empty());
  const Program before = d.source.program;
  PasteRows(d.desk, 40);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0],
            (ShownBox{"Strings too long", std::string(kApplicationTitle), Buttons::OK, Icon::Exclamation}));
  EXPECT_TRUE(d.source.program.Prog == before.Prog);
  // Other lines may be pasted all the same, and a prompt may be moved.
  CopyRows(d.desk, {12, 1});
  PasteRows(d.desk, 40);
  CutRows(d.desk, {11, 1});
  PasteRows(d.desk, 50);
  EXPECT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.Line(50).Type, MMI);
}

TEST(Clipboard, LinesThatLeadOutOfTheBlockAreNamedOnceAndTheFirstComesIntoView) {
  struct Case {
    std::vector<int> jumps;
    const char* told;
    std::optional<int> line;
  };
  const std::vector<Case> cases = {
      {{}, "", std::nullopt},
      {{11}, "Line 31 goes to a line outside of what was pasted.  It still goes there; please check it.", 30},
      {{11, 13},
       "Lines 31 and 33 go to lines outside of what was pasted.  They still go there; please check them.",
       30},
  };
  for (const Case& c : cases) {
    BlockDesk d;
    for (const int line : c.jumps) d.Line(line) = {.Type = GT, .LineNum = 19};
    d.Line(12) = {.Type = GT, .LineNum = 14};
    CopyRows(d.desk, {11, 4});
    PasteRows(d.desk, 30);
    ASSERT_EQ(d.boxes.shown.size(), c.line ? 1U : 0U);
    EXPECT_EQ(d.Line(30).LineNum, c.jumps.empty() ? 0 : 19);
    EXPECT_EQ(d.Line(31).LineNum, 33) << "within the block it moves along";
    if (!c.line) continue;
    EXPECT_EQ(d.boxes.shown[0].text, c.told);
    EXPECT_EQ(d.view.gone_to, std::vector<int>{*c.line});
  }
}

TEST(Clipboard, DeletingAsksIfALineIsInUseAndCuttingDoesNot) {
  BlockDesk d;
  d.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_FALSE(DeleteRows(d.desk, {11, 5}));
  EXPECT_EQ(d.boxes.shown.back(),
            (ShownBox{"Delete program lines 12 to 16?", "Delete", Buttons::OKCancel, Icon::None}));
  d.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_FALSE(DeleteRows(d.desk, {11, 1}));
  EXPECT_EQ(d.boxes.shown.back().text, "Delete program line 12?");
  EXPECT_TRUE(d.source.history.UndoName().empty());
  EXPECT_TRUE(DeleteRows(d.desk, {30, 5})) << "empty lines go without a question";
  EXPECT_TRUE(DeleteRows(d.desk, {17, 5}));
  EXPECT_EQ(d.boxes.shown.back().text, "Delete program lines 18 to 22?") << "some of them are in use";
  const std::size_t boxes = d.boxes.shown.size();
  CutRows(d.desk, {2, 5});
  EXPECT_EQ(d.boxes.shown.size(), boxes);
}

TEST(Clipboard, NothingIsDoneUnderATransferARunOrADialog) {
  const std::vector<std::function<void(BlockDesk&, bool)>> holds = {
      [](BlockDesk& d, bool on) { d.source.link.Busy = on; },
      [](BlockDesk& d, bool on) { d.run.active = on ? RunWindow::ExecStatus : RunWindow::None; },
      [](BlockDesk& d, bool on) { d.source.Editing = on; },
  };
  for (const auto& hold : holds) {
    BlockDesk d;
    CopyRows(d.desk, {11, 2});
    const Program before = d.source.program;
    const auto kept = d.clipboard.kept;
    hold(d, true);
    CutRows(d.desk, {3, 2});
    CopyRows(d.desk, {3, 2});
    PasteRows(d.desk, 3);
    EXPECT_TRUE(d.source.program.Prog == before.Prog);
    EXPECT_EQ(d.clipboard.kept, kept);
    hold(d, false);
    PasteRows(d.desk, 3);
    EXPECT_FALSE(d.source.program.Prog == before.Prog);
  }
}

TEST(Clipboard, ALoopIsPairedAnewWhereItIsPasted) {
  BlockDesk d;
  CopyRows(d.desk, {2, 5});
  PasteRows(d.desk, 30);
  EXPECT_EQ(d.Line(34).Type, ER);
  EXPECT_EQ(d.Line(34).LineNum, 30);
  EXPECT_NE(d.Line(30).LoopIndex, d.Line(2).LoopIndex);
}

TEST(Clipboard, WhatAHubReportsWhileTheQuestionIsUpStays) {
  BlockDesk d;
  d.Line(199) = {.Type = RT};
  CopyRows(d.desk, {11, 1});
  d.boxes.setNextAnswer(Answer::OK);
  d.boxes.on_box = [&d](const ShownBox&) { SelectModel(d.desk, HubQuad); };
  PasteRows(d.desk, 3);
  EXPECT_EQ(d.source.program.HubIndex, HubQuad);
}

TEST(Clipboard, RandomMovesThereAndBackLeaveTheProgramAsItWasAndSoDoesTakingThemBack) {
  std::mt19937 random(20261122);
  for (int turn = 0; turn < 60; ++turn) {
    SCOPED_TRACE(turn);
    BlockDesk d;
    for (int line = 0; line < 20; ++line) {
      if (random() % 3 == 0) d.Line(line) = {.Type = IM, .LineNum = static_cast<std::int16_t>(random() % 20)};
    }
    d.source.program.LimitBranch = 1 + static_cast<int>(random() % 20);
    ScanLoops(d.source.program);
    const Program start = d.source.program;
    const int first = static_cast<int>(random() % 20);
    const int count = 1 + static_cast<int>(random() % 10);
    const int to = static_cast<int>(random() % 30);
    CutRows(d.desk, {first, count});
    PasteRows(d.desk, to);
    const Program moved = d.source.program;
    CutRows(d.desk, {to, count});
    PasteRows(d.desk, first);
    EXPECT_TRUE(d.source.program.Prog == start.Prog);
    EXPECT_EQ(d.source.program.LimitBranch, start.LimitBranch);
    Undo(d.desk);
    Undo(d.desk);
    EXPECT_TRUE(d.source.program.Prog == moved.Prog);
    Undo(d.desk);
    Undo(d.desk);
    EXPECT_TRUE(d.source.program.Prog == start.Prog);
    EXPECT_EQ(d.source.program.LimitBranch, start.LimitBranch);
  }
}

}  // namespace
}  // namespace tavlo::testing
