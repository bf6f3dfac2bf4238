// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/undo.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "commands/hardware.h"
#include "commands/hub_choices.h"
#include "commands/lines.h"
#include "commands/program_files.h"
#include "model/program_file.h"
#include "session/edit_step.h"
#include "session/grid.h"
#include "support/fake_desk.h"
#include "support/fake_editors.h"
#include "support/rows_true.h"

namespace tavlo::testing {
namespace {

constexpr const char* kLoaded = "/home/op/cut.TVH";

bool Same(const Program& a, const Program& b) {
  return a.Prog == b.Prog && a.Axis == b.Axis && a.HubIndex == b.HubIndex && a.LimitList == b.LimitList &&
         a.LimitBranch == b.LimitBranch && a.HubVersion == b.HubVersion;
}

/// A session whose program has been loaded from a file, with a loop, a jump and lines that run while an axis
/// moves.
struct EditDesk : FakeDesk {
  EditDesk() {
    desk.editors = &editors;
    editors.confirms = true;
    for (int line = 0; line < 20; ++line) Line(line) = {.Type = FL, .Dist = line + 1, .Proceed = line == 8};
    Line(2).Type = RP;
    Line(6).Type = ER;
    Line(9).Type = SO;
    Line(10).Type = GT;
    Line(10).LineNum = 15;
    files.files[kLoaded] = WriteHubProg(source.program, 0);
    LoadFile(desk, kLoaded);
  }
  void Pick(int line, const Picked& pressed) {
    editors.presses = {pressed};
    DropIcon(desk, line, line, false);
  }

  FakeEditors editors;
};

struct EditRow {
  /// What stands behind "Undo " in the menu.
  const char* name;
  std::function<void(EditDesk&)> edit;
  /// The line to which taking it back goes; nothing where no line changes.
  std::optional<int> line = {};
  /// The edit itself leaves the program unchanged, as what it put there comes from a file or is empty.
  bool unchanged = false;
};

const std::vector<EditRow>& EveryEdit() {
  static const std::vector<EditRow> edits = {
      {"edit line 5", [](EditDesk& d) { DropIcon(d.desk, 4, 4, true); }, 4},
      {"edit line 31", [](EditDesk& d) { d.Pick(30, {.what = Picked::What::Kind, .type = WT}); }, 30},
      {"insert line 3", [](EditDesk& d) { d.Pick(2, {.what = Picked::What::Insert}); }, 2},
      {"delete line 3", [](EditDesk& d) { d.Pick(2, {.what = Picked::What::Delete}); }, 2},
      {"copy line 11 to line 101", [](EditDesk& d) { DropIcon(d.desk, 10, 100, false); }, 100},
      {"copy line 1 to line 3", [](EditDesk& d) { DropIcon(d.desk, 0, 2, false); }, 2},
      {"limit action", [](EditDesk& d) { SelectLimitAction(d.desk, BranchToLine); }},
      {"limit branch", [](EditDesk& d) { LeaveLimitBranch(d.desk, "7"); }},
      {"hub model", [](EditDesk& d) { ChooseModel(d.desk, HubQuad); }},
      {"hardware settings", [](EditDesk& d) { ChangeRes(d.desk, [] { return DriveScan(); }); }},
      {"clear", [](EditDesk& d) { Clear(d.desk); }, 0, true},
      {"load other.TVH",
       [](EditDesk& d) {
         FakeDesk other;
         other.Line(7).Type = RT;
         d.files.files["/home/op/other.TVH"] = WriteHubProg(other.source.program, 0);
         LoadFile(d.desk, "/home/op/other.TVH");
       },
       0, true},
      {"load damaged.TVH",
       [](EditDesk& d) {
         d.files.files["damaged.TVH"] = "1.29.1\nnot a number\n";
         LoadFile(d.desk, "damaged.TVH");
       },
       0, true},
  };
  return edits;
}

TEST(Undo, TakesEveryKindOfEditBackAndRedoDoesItAgain) {
  for (const EditRow& row : EveryEdit()) {
    SCOPED_TRACE(row.name);
    EditDesk d;
    const Program before = d.source.program;
    row.edit(d);
    const Program after = d.source.program;
    const std::string file = d.source.file_name;
    EXPECT_FALSE(Same(before, after));
    EXPECT_EQ(d.source.Changed, !row.unchanged);
    EXPECT_EQ(d.source.history.UndoName(), row.name);
    d.view.gone_to.clear();

    Undo(d.desk);
    EXPECT_TRUE(Same(d.source.program, before));
    EXPECT_FALSE(d.source.Changed) << "it is as it was loaded";
    EXPECT_EQ(d.source.file_name, kLoaded);
    ExpectRowsTrue(d.desk);
    EXPECT_EQ(d.view.gone_to, row.line ? std::vector<int>{*row.line} : std::vector<int>());
    EXPECT_EQ(d.source.history.RedoName(), row.name);
    EXPECT_EQ(d.view.notes.back(), std::string("Undone: ") + row.name + ".");

    Redo(d.desk);
    EXPECT_TRUE(Same(d.source.program, after));
    EXPECT_EQ(d.source.Changed, !row.unchanged);
    EXPECT_EQ(d.source.file_name, file);
    ExpectRowsTrue(d.desk);
    EXPECT_EQ(d.source.history.RedoName(), "");
    EXPECT_EQ(d.view.notes.back(), std::string("Redone: ") + row.name + ".");
  }
}

TEST(Undo, AnEditThatIsCancelledIsNoStep) {
  EditDesk d;
  const std::string last(d.source.history.UndoName());
  d.editors.confirms = false;
  DropIcon(d.desk, 4, 4, true);
  d.Pick(30, {.what = Picked::What::Kind, .type = WT});
  ChangeRes(d.desk, [] { return DriveScan(); });
  d.boxes.setNextAnswer(Answer::Cancel);
  Clear(d.desk);
  d.boxes.setNextAnswer(Answer::Cancel);
  DropIcon(d.desk, 0, 2, false);
  LeaveLimitBranch(d.desk, "1");
  EXPECT_EQ(d.source.history.UndoName(), last);
  EXPECT_FALSE(d.source.Changed);
}

TEST(Undo, AnEditThatIsConfirmedButChangesNothingCountsAsAChangeAndIsNoStep) {
  EditDesk d;
  DropIcon(d.desk, 4, 4, true);
  Undo(d.desk);
  d.Line(4).Dist = FakeEditors::kWrittenDist;
  const std::string last(d.source.history.UndoName());
  DropIcon(d.desk, 4, 4, true);
  EXPECT_TRUE(d.source.Changed);
  EXPECT_EQ(d.source.history.UndoName(), last);
}

TEST(Undo, NothingToTakeBackDoesNothing) {
  FakeDesk d;
  Undo(d.desk);
  Redo(d.desk);
  EXPECT_FALSE(d.source.Changed);
  EXPECT_EQ(d.view.all_rows, 0);
}

TEST(Undo, TheProgramStaysUnderATransferARunAndADialog) {
  EditDesk d;
  DropIcon(d.desk, 4, 4, true);
  const Program before = d.source.program;
  d.source.link.Busy = true;
  Undo(d.desk);
  d.source.link.Busy = false;
  d.run.active = RunWindow::ExecStatus;
  Undo(d.desk);
  d.run.active = RunWindow::None;
  d.source.Editing = true;
  Undo(d.desk);
  EXPECT_TRUE(Same(d.source.program, before));
  d.source.Editing = false;
  Undo(d.desk);
  EXPECT_FALSE(Same(d.source.program, before));
}

TEST(Undo, ANewEditForgetsWhatWasTakenBack) {
  EditDesk d;
  DropIcon(d.desk, 4, 4, true);
  Undo(d.desk);
  d.Pick(2, {.what = Picked::What::Delete});
  EXPECT_EQ(d.source.history.RedoName(), "");
  const Program after = d.source.program;
  Redo(d.desk);
  EXPECT_TRUE(Same(d.source.program, after));
}

TEST(Undo, TwoHundredEditsCanBeTakenBackAndNoMore) {
  EditDesk d;
  std::vector<Program> programs = {d.source.program};
  constexpr int kEdits = 230;
  for (int i = 0; i < kEdits; ++i) {
    LeaveLimitBranch(d.desk, std::to_string(2 + i % 2 * 3 + i % 7));
    if (Same(programs.back(), d.source.program)) LeaveLimitBranch(d.desk, "199");
    programs.push_back(d.source.program);
  }
  int undone = 0;
  for (; !d.source.history.UndoName().empty(); ++undone) {
    EXPECT_TRUE(Same(d.source.program, programs[kEdits - undone]));
    Undo(d.desk);
  }
  EXPECT_EQ(undone, 200);
  EXPECT_TRUE(d.source.Changed) << "what was loaded lies further back";
}

TEST(Undo, AHubThatReportedItselfSinceKeepsItsModelAndFirmware) {
  EditDesk d;
  DropIcon(d.desk, 4, 4, true);
  SelectModel(d.desk, HubQuad);
  d.source.program.HubVersion = 1.38F;
  Undo(d.desk);
  EXPECT_EQ(d.source.program.HubIndex, HubQuad);
  EXPECT_EQ(d.source.program.HubVersion, 1.38F);
  // The operator chose it, and then the hub itself reported another one.
  ChooseModel(d.desk, HubOcto);
  SelectModel(d.desk, HubQuad);
  Undo(d.desk);
  EXPECT_EQ(d.source.program.HubIndex, HubQuad);
}

TEST(Undo, AHubThatReportsItselfWhileADialogIsUpIsNoPartOfTheEdit) {
  EditDesk d;
  d.editors.meanwhile = [&d] { SelectModel(d.desk, HubQuad); };
  DropIcon(d.desk, 4, 4, true);
  Undo(d.desk);
  EXPECT_EQ(d.source.program.HubIndex, HubQuad);
  EXPECT_NE(d.Line(4).Dist, FakeEditors::kWrittenDist);
}

TEST(Undo, WhatTheFirmwareIsComesBackWithAClearedProgram) {
  EditDesk d;
  d.source.program.HubVersion = 1.38F;
  Clear(d.desk);
  EXPECT_EQ(d.source.program.HubVersion, 0);
  Undo(d.desk);
  EXPECT_EQ(d.source.program.HubVersion, 1.38F);
}

TEST(Undo, TheStateThatWasSavedIsUnchangedWhicheverWayItIsReached) {
  EditDesk d;
  DropIcon(d.desk, 4, 4, true);
  d.dialogs.next_file_name = kLoaded;
  Save(d.desk);
  EXPECT_FALSE(d.source.Changed);
  Undo(d.desk);
  EXPECT_TRUE(d.source.Changed) << "the file holds the later state now";
  Redo(d.desk);
  EXPECT_FALSE(d.source.Changed);
  d.Pick(2, {.what = Picked::What::Delete});
  EXPECT_TRUE(d.source.Changed);
  Undo(d.desk);
  EXPECT_FALSE(d.source.Changed);
  EXPECT_FALSE(Unsaved(d.source));
}

TEST(Undo, ASaveUnderAnotherNameHoldsForTheStepsOnBothSidesOfIt) {
  EditDesk d;
  DropIcon(d.desk, 4, 4, true);
  d.dialogs.next_file_name = "new.TVH";
  Save(d.desk);
  Undo(d.desk);
  EXPECT_EQ(d.source.file_name, "new.TVH");
  LoadFile(d.desk, kLoaded);
  Undo(d.desk);
  EXPECT_EQ(d.source.file_name, "new.TVH");
  EXPECT_TRUE(SaveFile(d.desk, "newer.TVH"));
  Redo(d.desk);
  EXPECT_EQ(d.source.file_name, kLoaded);
  Undo(d.desk);
  EXPECT_EQ(d.source.file_name, "newer.TVH");
}

TEST(Unsaved, IsWhatNoFileHoldsThoughItCountsAsUnchanged) {
  FakeDesk d;
  EXPECT_FALSE(Unsaved(d.source)) << "a new session";
  d.desk.editors = nullptr;
  ChooseModel(d.desk, HubQuad);
  EXPECT_TRUE(Unsaved(d.source));
  MarkUnchanged(d.desk, Unchanged::Transferred);
  EXPECT_FALSE(d.source.Changed);
  EXPECT_TRUE(Unsaved(d.source)) << "a hub holds it, no file does";
  EXPECT_TRUE(SaveFile(d.desk, "a.TVH"));
  EXPECT_FALSE(Unsaved(d.source));
  ChooseModel(d.desk, HubOcto);
  d.files.room = 10;
  EXPECT_FALSE(SaveFile(d.desk, "a.TVH"));
  EXPECT_FALSE(d.source.Changed) << "a failed save counts as a save";
  EXPECT_TRUE(Unsaved(d.source)) << "but the file does not hold it";
}

TEST(Undo, OfRandomEditsGoesBackToTheStartAndForwardToTheEnd) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    EditDesk d;
    const Program start = d.source.program;
    std::vector<Program> programs = {start};
    for (int i = 0; i < 150; ++i) {
      EveryEdit()[random() % EveryEdit().size()].edit(d);
      const auto any = [&random] { return static_cast<int>(random() % kLines); };
      d.editors.presses = {{.what = random() % 2 == 0 ? Picked::What::Insert : Picked::What::Delete}};
      const int line = any();
      DropIcon(d.desk, line, random() % 3 == 0 ? any() : line, false);
      while (random() % 4 == 0 && !d.source.history.UndoName().empty()) Undo(d.desk);
      while (random() % 4 == 0 && !d.source.history.RedoName().empty()) Redo(d.desk);
    }
    const Program end = d.source.program;
    int steps = 0;
    for (; !d.source.history.UndoName().empty(); ++steps) Undo(d.desk);
    ExpectRowsTrue(d.desk);
    for (int i = 0; i < steps; ++i) Redo(d.desk);
    EXPECT_TRUE(Same(d.source.program, end));
    ExpectRowsTrue(d.desk);
  }
}

}  // namespace
}  // namespace tavlo::testing
