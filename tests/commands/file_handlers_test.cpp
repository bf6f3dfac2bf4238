// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "commands/hub_choices.h"
#include "commands/program_files.h"
#include "model/program_file.h"
#include "session/edit_step.h"
#include "session/grid.h"
#include "session/source.h"
#include "support/fake_desk.h"

namespace tavlo {
namespace {

using testing::FakeDesk;
using testing::ShownBox;

constexpr std::string_view kOpenQuestion =
    "You have made changes without Saving or Downloading.  Do you really want to open a file and replace "
    "your "
    "program?";

std::string FileOf(Program program) {
  return WriteHubProg(program, 0);
}

/// A program that differs from a new one in each thing that a load must show.
Program SampleProgram() {
  FakeDesk fake;
  Program program = fake.source.program;
  program.HubIndex = HubQuad;
  program.Prog[0].Type = RP;
  program.Prog[1].Type = FL;
  program.Prog[1].Proceed = true;
  program.Prog[2].Type = WT;
  program.Prog[3].Type = ER;
  program.Prog[4].Type = GT;
  program.Axis.AxisName[0] = "Feeder";
  program.LimitList = BranchToLine;
  program.LimitBranch = 3;
  return program;
}

TEST(Caption, IsTitleVersionAndFileName) {
  FakeDesk fake;
  EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - untitled");
  fake.source.file_name = "/home/a/feed.tvh";
  EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - /home/a/feed.tvh");
}

TEST(Save, AsksForANameWithItsFilterAndExtension) {
  FakeDesk fake;
  fake.dialogs.next_file_name = "/p/feed.tvh";
  Save(fake.desk);
  ASSERT_EQ(fake.dialogs.shown.size(), 1U);
  ASSERT_EQ(fake.dialogs.shown[0].filters.size(), 1U);
  EXPECT_EQ(fake.dialogs.shown[0].filters[0].name, "Tavlo Files");
  EXPECT_EQ(fake.dialogs.shown[0].filters[0].pattern, "*.TVH");
  EXPECT_EQ(fake.dialogs.shown[0].default_extension, "tvh");
}

TEST(Save, WritesTheFileClearsChangedAndSetsTheCaption) {
  FakeDesk fake;
  fake.Line(3).Type = WT;
  fake.source.Changed = true;
  fake.source.link.OptCom = 4;
  fake.dialogs.next_file_name = "/p/feed.tvh";
  const int captions = fake.view.caption;
  Save(fake.desk);
  EXPECT_EQ(fake.files.files["/p/feed.tvh"], WriteHubProg(fake.source.program, 4));
  EXPECT_FALSE(fake.source.Changed);
  EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - /p/feed.tvh");
  EXPECT_GT(fake.view.caption, captions);
  EXPECT_TRUE(fake.boxes.shown.empty());
}

TEST(Save, NamesTheLinesThatTestInputsWhichTheFileDoesNotHold) {
  const struct {
    std::vector<int> lines;
    const char* told;
  } rows[] = {
      {{11}, "Line 12 tests"}, {{0, 11}, "Lines 1 and 12 test"}, {{0, 11, 199}, "Lines 1, 12 and 200 test"}};
  for (const std::int16_t type : {std::int16_t{III}, std::int16_t{WII}}) {
    for (const auto& row : rows) {
      FakeDesk fake;
      for (const int line : row.lines) fake.Line(line) = {.Type = type, .DrvMask = 4};
      fake.dialogs.next_file_name = "/p/feed.tvh";
      Save(fake.desk);
      EXPECT_EQ(
          fake.boxes.shown,
          std::vector<ShownBox>({{std::string(row.told) +
                                      " inputs of the drive itself (X), which a program file does not hold.  "
                                      "After the file is loaded they must be entered again.",
                                  "Save", Buttons::OK, Icon::Exclamation}}));
    }
  }
}

TEST(Save, SaysNothingOfInputsThatNoLineTests) {
  FakeDesk fake;
  fake.Line(1) = {.Type = III, .InMask = 4};
  fake.Line(2) = {.Type = II, .DrvMask = 4};
  fake.dialogs.next_file_name = "/p/feed.tvh";
  Save(fake.desk);
  fake.Line(1).DrvMask = 4;
  fake.files.room = 100;
  Save(fake.desk);
  ASSERT_EQ(fake.boxes.shown.size(), 1U) << "of a file that was not written only that";
  EXPECT_EQ(fake.boxes.shown[0].text, "Error saving file: No space left on device");
}

TEST(Save, WithNoOptComOnLeavesOutThePortRecord) {
  FakeDesk fake;
  fake.source.link.OptCom.reset();
  fake.dialogs.next_file_name = "/p/feed.tvh";
  Save(fake.desk);
  EXPECT_EQ(fake.files.files["/p/feed.tvh"], WriteHubProg(fake.source.program, std::nullopt));
}

TEST(Save, WithNoOptComOnTellsThatTheFileWillNotLoadAndKeepsItsMark) {
  FakeDesk fake;
  fake.source.link.OptCom.reset();
  fake.source.Changed = true;
  fake.dialogs.next_file_name = "/p/feed.tvh";
  Save(fake.desk);
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(
      fake.boxes.shown[0],
      (ShownBox{
          "No comm port is open, so the file holds none and will be reported as damaged when it is "
          "loaded.  Choose a comm port and save again.  Without one, the command tavlo convert makes the "
          "file whole.",
          "Save", Buttons::OK, Icon::Exclamation}));
  EXPECT_FALSE(fake.source.Changed);
  ChooseModel(fake.desk, HubQuad);
  Save(fake.desk);
  EXPECT_TRUE(Unsaved(fake.source)) << "a file that does not load is none";
  EXPECT_EQ(fake.boxes.shown.size(), 2U);
  fake.source.link.OptCom = 2;
  Save(fake.desk);
  EXPECT_EQ(fake.boxes.shown.size(), 2U);
  EXPECT_FALSE(Unsaved(fake.source));
}

TEST(Save, CancelInTheSaveDialogDoesNothing) {
  for (const auto& name : {std::optional<std::string>{}, std::optional<std::string>{""}}) {
    FakeDesk fake;
    fake.source.Changed = true;
    fake.dialogs.next_file_name = name;
    Save(fake.desk);
    EXPECT_TRUE(fake.boxes.shown.empty());
    EXPECT_TRUE(fake.source.Changed);
    EXPECT_TRUE(fake.files.files.empty());
    EXPECT_EQ(fake.source.file_name, "untitled");
  }
}

TEST(Save, AnErrorWhileWritingIsToldWithAnEmptyTitleAfterChangedAndCaptionAreSet) {
  FakeDesk fake;
  fake.source.Changed = true;
  fake.files.files["/p/feed.tvh"] = "old";
  fake.files.room = 100;
  fake.dialogs.next_file_name = "/p/feed.tvh";
  bool changed_at_box = true;
  fake.boxes.on_box = [&](const ShownBox&) { changed_at_box = fake.source.Changed; };
  Save(fake.desk);
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0],
            (ShownBox{"Error saving file: No space left on device", "", Buttons::OK, Icon::None}));
  EXPECT_FALSE(changed_at_box);
  EXPECT_FALSE(fake.source.Changed);
  EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - /p/feed.tvh");
  EXPECT_EQ(fake.files.files["/p/feed.tvh"], "old");
}

TEST(Load, UnsavedChangesAreAskedAboutAndOnlyOKGoesOn) {
  FakeDesk fake;
  fake.source.Changed = true;
  fake.files.files["/p/a.tvh"] = FileOf(SampleProgram());
  fake.dialogs.next_file_name = "/p/a.tvh";
  fake.boxes.setNextAnswer(Answer::Cancel);
  Load(fake.desk);
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0],
            (ShownBox{std::string(kOpenQuestion), "Open", Buttons::OKCancel, Icon::Question}));
  EXPECT_TRUE(fake.dialogs.shown.empty());
  EXPECT_TRUE(fake.source.Changed);
  fake.boxes.setNextAnswer(Answer::OK);
  Load(fake.desk);
  EXPECT_EQ(fake.source.program.Prog[1].Type, FL);
  EXPECT_FALSE(fake.source.Changed);
}

TEST(Load, AsksForANameWithTwoFiltersAndNoNameEndsTheHandler) {
  for (const auto& name : {std::optional<std::string>{}, std::optional<std::string>{""}}) {
    FakeDesk fake;
    fake.dialogs.next_file_name = name;
    Load(fake.desk);
    ASSERT_EQ(fake.dialogs.shown.size(), 1U);
    ASSERT_EQ(fake.dialogs.shown[0].filters.size(), 2U);
    EXPECT_EQ(fake.dialogs.shown[0].filters[0].name, "Tavlo Hub Files");
    EXPECT_EQ(fake.dialogs.shown[0].filters[0].pattern, "*.TVH");
    EXPECT_EQ(fake.dialogs.shown[0].filters[1].name, "Oskel Composer Files");
    EXPECT_EQ(fake.dialogs.shown[0].filters[1].pattern, "*.OSK");
    EXPECT_EQ(fake.dialogs.shown[0].default_extension, "tvh");
    EXPECT_TRUE(fake.boxes.shown.empty());
    EXPECT_TRUE(fake.loading.log.empty());
  }
}

TEST(Load, AGoodFileIsShownWhole) {
  for (const std::string name : {"/p/a.TVH", "/p/a.tvh", "/p/a.Tvh"}) {
    FakeDesk fake;
    fake.files.files[name] = FileOf(SampleProgram());
    fake.dialogs.next_file_name = name;
    fake.source.link.OptCom = 6;
    const int drives = fake.view.drives;
    Load(fake.desk);
    EXPECT_TRUE(fake.boxes.shown.empty());
    EXPECT_EQ(fake.loading.log, (std::vector<std::string>{"show", "hide"}));
    const Program& program = fake.source.program;
    EXPECT_EQ(program.HubIndex, HubQuad);
    EXPECT_EQ(program.Prog[3].LineNum, 0) << "ScanLoops has run";
    EXPECT_EQ(fake.source.shown.rows[1].desc, "Feeder:CW 1.0 rev, 3.0 rps");
    EXPECT_EQ(fake.source.shown.rows[2].desc, "Wait 0.01 seconds");
    EXPECT_EQ(fake.source.shown.rows[2].frame, kChainFrame);
    EXPECT_EQ(fake.source.shown.rows[2].state, RowState::LimitTarget);
    EXPECT_EQ(IconName(fake.source.shown.rows[2].icon), "cWTicon");
    EXPECT_EQ(IconName(fake.source.shown.rows[1].icon), "MoveIcon");
    EXPECT_EQ(fake.source.shown.arrows, ArrowsOf(program));
    EXPECT_EQ(fake.source.shown.arrows.size(), 2U);
    EXPECT_EQ(LimitBranchText(program), "3");
    EXPECT_EQ(fake.source.link.OptCom, 6) << "a file never moves the port";
    EXPECT_GT(fake.view.drives, drives);
    EXPECT_EQ(fake.view.scrolls, std::vector{0}) << "wherever the last program was left";
    EXPECT_FALSE(fake.source.Changed);
    EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - " + name);
  }
}

TEST(Load, AFileThatCannotBeOpenedLeavesTheProgramUnchanged) {
  FakeDesk fake;
  fake.Line(5).Type = WT;
  fake.dialogs.next_file_name = "/p/none.tvh";
  std::vector<std::string> at_box;
  fake.boxes.on_box = [&](const ShownBox&) { at_box = fake.loading.log; };
  Load(fake.desk);
  ASSERT_EQ(fake.boxes.shown.size(), 1U);
  EXPECT_EQ(fake.boxes.shown[0], (ShownBox{"Error: could not open file.", "", Buttons::OK, Icon::None}));
  EXPECT_EQ(at_box, (std::vector<std::string>{"show"}));
  EXPECT_EQ(fake.loading.log, (std::vector<std::string>{"show", "hide"}));
  EXPECT_EQ(fake.Line(5).Type, WT);
  EXPECT_EQ(fake.source.file_name, "untitled");
}

TEST(Load, ADamagedFileGivesHardwareDefaultsAnEmptyProgramAndTheCaptionUntitled) {
  FakeDesk fake;
  Program sample = SampleProgram();
  sample.Prog[7].Dist = 4711;
  const std::string file = FileOf(sample);
  fake.files.files["/p/a.tvh"] = file.substr(0, file.size() - 400);
  fake.dialogs.next_file_name = "/p/a.tvh";
  fake.source.file_name = "/p/before.tvh";
  fake.source.Changed = true;
  fake.Line(9).Type = SO;
  std::vector<std::string> at_box;
  fake.boxes.on_box = [&](const ShownBox& box) {
    if (box.title.empty()) at_box = fake.loading.log;
  };
  Load(fake.desk);
  ASSERT_EQ(fake.boxes.shown.size(), 2U);
  EXPECT_EQ(fake.boxes.shown[1],
            (ShownBox{"Can't read file /p/a.tvh.  File may be damaged.", "", Buttons::OK, Icon::None}));
  EXPECT_EQ(at_box, (std::vector<std::string>{"show", "hide"}));
  AxisConfig defaults;
  InitHardware(defaults);
  EXPECT_EQ(fake.source.program.Axis, defaults);
  for (int line = 0; line < kLines; ++line) {
    EXPECT_EQ(fake.Line(line).Type, NO);
    EXPECT_EQ(fake.source.shown.rows[static_cast<std::size_t>(line)].desc, "");
    EXPECT_EQ(fake.source.shown.rows[static_cast<std::size_t>(line)].frame, kPlainFrame);
  }
  EXPECT_EQ(fake.Line(7).Dist, 4711) << "the other fields keep what the partial read left in them";
  EXPECT_TRUE(fake.source.shown.arrows.empty());
  EXPECT_FALSE(fake.source.Changed);
  EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - untitled");
}

TEST(Load, LoadFileShowsAFileWithoutADialogOrAQuestion) {
  FakeDesk fake;
  fake.source.Changed = true;
  fake.files.files["/p/a.tvh"] = FileOf(SampleProgram());
  EXPECT_TRUE(LoadFile(fake.desk, "/p/a.tvh"));
  EXPECT_TRUE(fake.boxes.shown.empty());
  EXPECT_TRUE(fake.dialogs.shown.empty());
  fake.files.files["/p/b.tvh"] = "rubbish";
  EXPECT_FALSE(LoadFile(fake.desk, "/p/b.tvh"));
  EXPECT_FALSE(LoadFile(fake.desk, "/p/missing.tvh"));
}

TEST(Load, WhatIsSavedLoadsAgain) {
  FakeDesk fake;
  fake.source.program = SampleProgram();
  ASSERT_EQ(SaveFile(fake.desk, "/p/a.tvh").Why(), "");
  FakeDesk other;
  other.files.files = fake.files.files;
  ASSERT_TRUE(LoadFile(other.desk, "/p/a.tvh"));
  ASSERT_EQ(SaveFile(other.desk, "/p/b.tvh").Why(), "");
  EXPECT_EQ(other.files.files["/p/b.tvh"], other.files.files["/p/a.tvh"]);
}

TEST(Load, ABusyLinkDoesNotKeepAFileOut) {
  FakeDesk fake;
  fake.source.link.Busy = true;
  fake.files.files["/p/a.tvh"] = FileOf(SampleProgram());
  EXPECT_TRUE(LoadFile(fake.desk, "/p/a.tvh"));
}

/// A whole file of the earlier programmer: 29 comments and the settings of its axis.
std::string OldProgram() {
  std::string text = "1.1\r\n";
  for (int line = 0; line < 29; ++line) text += std::to_string(line) + ",13\r\n\"from before\"\r\n";
  return text + "255,100,200,2.5,80\r\n";
}

TEST(LoadHandler, AnyOtherExtensionIsTakenForAFileOfTheEarlierProgrammer) {
  FakeDesk fake;
  fake.files.files["old.osk"] = OldProgram();
  fake.dialogs.next_file_name = "old.osk";
  Load(fake.desk);
  EXPECT_TRUE(fake.boxes.shown.empty());
  EXPECT_EQ(fake.source.shown.rows[28].desc, "from before");
  EXPECT_EQ(fake.source.shown.rows[29].desc, "");
  EXPECT_EQ(Caption(fake.source), "Tavlo Composer  V1.29.1 - old.osk");
}

TEST(LoadHandler, ADamagedOldFileIsToldAndTheHardwareKeepsWhatWasRead) {
  FakeDesk fake;
  fake.source.program.Axis.StepsPerUnit[3] = 77;
  fake.files.files["old.OSK"] = OldProgram().substr(0, 300);
  fake.dialogs.next_file_name = "old.OSK";
  Load(fake.desk);
  const ShownBox damaged{"Can't read file old.OSK.  File may be damaged.", "", Buttons::OK, Icon::None};
  EXPECT_EQ(fake.boxes.shown, std::vector<ShownBox>{damaged});
  EXPECT_EQ(fake.source.program.Axis.StepsPerUnit[3], 77);
  EXPECT_EQ(fake.source.file_name, "untitled");
}

}  // namespace
}  // namespace tavlo
