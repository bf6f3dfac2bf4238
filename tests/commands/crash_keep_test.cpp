// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/crash_keep.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "commands/hub_choices.h"
#include "commands/lines.h"
#include "commands/program_files.h"
#include "commands/undo.h"
#include "support/fake_desk.h"
#include "support/fake_editors.h"
#include "support/fake_state_folder.h"

namespace tavlo::testing {
namespace {

constexpr const char* kKeptFile = "/home/op/cut.TVH";
/// 2026-11-21 at 17:44 UTC
constexpr std::int64_t kThen = 1795283040;
constexpr const char* kQuestion =
    "Tavlo Composer was not ended in the usual way.  What was changed in cut.TVH until 2026-11-21 at 17:44 "
    "has "
    "been kept.  Do you want to have it back?";

/// A session whose edits are kept on a disk.
struct KeepingDesk : FakeDesk {
  explicit KeepingDesk(FakeStateDisk& disk, const std::string& name = "one")
      : folder(disk), keep(folder, name, [this] { return now; }) {
    setenv("TZ", "UTC", 1);
    desk.keeper = &keep;
    desk.editors = &editors;
    editors.confirms = true;
    files.files[kKeptFile] = "";
  }
  /// An edit of a line: its distance becomes 4711.
  void Edit(int line) {
    Line(line).Type = FL;
    DropIcon(desk, line, line, true);
  }
  void Start() { OfferLeft(desk, keep); }

  FakeStateFolder folder;
  std::int64_t now = kThen;
  CrashKeep keep;
  FakeEditors editors;
};

/// Leaves a session with an edit of line 5 in cut.TVH, killed.
void LeaveKilled(FakeStateDisk& disk, bool running = false, std::int64_t time = kThen) {
  KeepingDesk d(disk, "killed" + std::to_string(time));
  d.now = time;
  ASSERT_TRUE(SaveFile(d.desk, kKeptFile));
  d.source.link.HubRuns = running;
  d.Edit(4);
}

TEST(CrashKeep, WhatWasEditedIsOfferedAtTheNextStartWithItsFileAndTimeAndComesBack) {
  FakeStateDisk disk;
  LeaveKilled(disk);
  KeepingDesk d(disk, "two");
  d.Start();
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text, kQuestion);
  EXPECT_EQ(d.boxes.shown[0].title, "Restore");
  EXPECT_EQ(d.boxes.shown[0].buttons, Buttons::RestoreDiscard);
  EXPECT_EQ(d.Line(4).Dist, FakeEditors::kWrittenDist);
  EXPECT_EQ(d.source.file_name, kKeptFile);
  EXPECT_TRUE(d.source.Changed);
  EXPECT_NE(d.source.shown.rows[4].desc, "");
  EXPECT_EQ(d.source.history.UndoName(), "restore cut.TVH");
  Undo(d.desk);
  EXPECT_EQ(d.Line(4).Type, NO);
  EXPECT_EQ(d.source.file_name, "untitled");
}

TEST(CrashKeep, ItIsOfferedOnce) {
  for (const Answer answer : {Answer::Restore, Answer::Discard}) {
    FakeStateDisk disk;
    LeaveKilled(disk);
    {
      KeepingDesk d(disk, "two");
      d.boxes.setNextAnswer(answer);
      d.Start();
      EXPECT_EQ(d.boxes.shown.size(), 1U);
      EXPECT_EQ(d.source.Changed, answer == Answer::Restore);
      d.keep.End();
    }
    KeepingDesk d(disk, "three");
    d.Start();
    EXPECT_TRUE(d.boxes.shown.empty());
    EXPECT_TRUE(disk.files.empty());
  }
}

TEST(CrashKeep, WhatWasRestoredIsKeptAgainBeforeTheOldOneGoes) {
  FakeStateDisk disk;
  LeaveKilled(disk);
  { KeepingDesk(disk, "two").Start(); }
  KeepingDesk d(disk, "three");
  d.Start();
  EXPECT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.Line(4).Dist, FakeEditors::kWrittenDist);
}

TEST(CrashKeep, WhatWasRestoredStaysIfItCannotBeKeptAgain) {
  FakeStateDisk disk;
  LeaveKilled(disk);
  disk.broken = "No space left on device";
  { KeepingDesk(disk, "two").Start(); }
  disk.broken.clear();
  KeepingDesk d(disk, "three");
  d.Start();
  EXPECT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.Line(4).Dist, FakeEditors::kWrittenDist);
}

TEST(CrashKeep, ACleanEndLeavesNothing) {
  FakeStateDisk disk;
  {
    KeepingDesk d(disk);
    d.Edit(4);
    EXPECT_EQ(disk.files.size(), 1U);
    d.keep.End();
  }
  EXPECT_TRUE(disk.files.empty());
  EXPECT_TRUE(disk.claimed.empty());
}

TEST(CrashKeep, WithoutAnythingThatAFileDoesNotHoldNothingIsKept) {
  FakeStateDisk disk;
  KeepingDesk d(disk);
  EXPECT_TRUE(disk.files.empty());
  d.Edit(4);
  EXPECT_EQ(disk.files.size(), 1U);
  ASSERT_TRUE(SaveFile(d.desk, kKeptFile));
  EXPECT_TRUE(disk.files.empty());
  LoadFile(d.desk, kKeptFile);
  EXPECT_TRUE(disk.files.empty());
  SelectLimitAction(d.desk, ContinueProgram);
  EXPECT_EQ(disk.files.size(), 1U);
  Undo(d.desk);
  EXPECT_TRUE(disk.files.empty());
  Redo(d.desk);
  EXPECT_EQ(disk.files.size(), 1U);
}

TEST(CrashKeep, TwoSessionsAtOnceKeepApart) {
  FakeStateDisk disk;
  KeepingDesk first(disk, "one");
  first.Edit(4);
  KeepingDesk second(disk, "two");
  second.Start();
  EXPECT_TRUE(second.boxes.shown.empty()) << "the first is still up";
  second.Edit(7);
  EXPECT_EQ(disk.files.size(), 2U);
  second.keep.End();
  EXPECT_EQ(disk.files.size(), 1U);
}

TEST(CrashKeep, OfSeveralThatWereKilledTheLastIsOfferedFirstAndTheOthersAfterIt) {
  FakeStateDisk disk;
  LeaveKilled(disk, false, kThen - 3600);
  LeaveKilled(disk);
  KeepingDesk d(disk, "two");
  d.boxes.setNextAnswer(Answer::Discard);
  d.Start();
  ASSERT_EQ(d.boxes.shown.size(), 2U);
  EXPECT_NE(d.boxes.shown[0].text.find("17:44"), std::string::npos);
  EXPECT_NE(d.boxes.shown[1].text.find("16:44"), std::string::npos);
}

TEST(CrashKeep, WhenOneIsRestoredTheOthersWaitForTheNextStart) {
  FakeStateDisk disk;
  LeaveKilled(disk, false, kThen - 3600);
  LeaveKilled(disk);
  {
    KeepingDesk d(disk, "two");
    d.Start();
    EXPECT_EQ(d.boxes.shown.size(), 1U);
    d.keep.End();
  }
  KeepingDesk d(disk, "three");
  d.Start();
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_NE(d.boxes.shown[0].text.find("16:44"), std::string::npos);
}

TEST(CrashKeep, ARunThatWasUnderWayIsToldAndCanBeStopped) {
  FakeStateDisk disk;
  LeaveKilled(disk, true);
  KeepingDesk d(disk, "two");
  d.boxes.on_box = [&d](const ShownBox&) {
    EXPECT_TRUE(d.source.link.HubRuns) << "the stop must work while the question stands";
  };
  d.Start();
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(
      d.boxes.shown[0].text,
      "Tavlo Composer was not ended in the usual way.  A program was running on the hub.  The machine may "
      "still be moving: Stop (Esc) stops it.  What was changed in cut.TVH until 2026-11-21 at 17:44 has "
      "been kept.  Do you want to have it back?");
}

TEST(CrashKeep, ARunOfASavedProgramIsToldWithoutAQuestion) {
  FakeStateDisk disk;
  {
    KeepingDesk d(disk);
    d.source.link.HubRuns = true;
    d.keep.Keep(d.source);
  }
  KeepingDesk d(disk, "two");
  d.Start();
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(
      d.boxes.shown[0].text,
      "Tavlo Composer was not ended in the usual way.  A program was running on the hub.  The machine may "
      "still be moving: Stop (Esc) stops it.");
  EXPECT_EQ(d.boxes.shown[0].buttons, Buttons::OK);
  EXPECT_FALSE(d.source.Changed);
}

TEST(CrashKeep, WhatCannotBeReadIsToldOnceAndPutAside) {
  FakeStateDisk disk;
  disk.files["killed.kept"] = "tavlo-kept-program 9\nof another version";
  KeepingDesk d(disk, "two");
  d.Start();
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(
      d.boxes.shown[0].text,
      "Tavlo Composer was not ended in the usual way, and what was kept of the changes that no file holds "
      "cannot be read.");
  EXPECT_EQ(disk.files,
            (std::map<std::string, std::string>{{"unreadable", "tavlo-kept-program 9\nof another version"}}));
  d.boxes.shown.clear();
  d.Start();
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(CrashKeep, AFileThatWasOnlyBegunIsNothing) {
  FakeStateDisk disk;
  disk.files["killed.kept"] = "";
  KeepingDesk d(disk, "two");
  d.Start();
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_TRUE(disk.files.empty());
}

TEST(CrashKeep, FilesOfOthersInTheFolderStay) {
  FakeStateDisk disk;
  disk.files["notes.txt"] = "mine";
  KeepingDesk d(disk, "two");
  d.Start();
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(disk.files.size(), 1U);
}

TEST(CrashKeep, AFailureIsToldOnceUntilItWorksAgain) {
  FakeStateDisk disk;
  KeepingDesk d(disk);
  std::vector<std::string> told;
  d.keep.OnFailure = [&told](const std::string& why) { told.push_back(why); };
  disk.broken = "No space left on device";
  d.Edit(4);
  d.Edit(5);
  EXPECT_EQ(told, std::vector<std::string>{"No space left on device"});
  disk.broken.clear();
  d.Edit(6);
  disk.broken = "Read-only file system";
  d.Edit(7);
  EXPECT_EQ(told, (std::vector<std::string>{"No space left on device", "Read-only file system"}));
}

TEST(CrashKeep, IsBoundedByOneMebibyte) {
  FakeStateDisk disk;
  KeepingDesk d(disk);
  std::vector<std::string> told;
  d.keep.OnFailure = [&told](const std::string& why) { told.push_back(why); };
  d.Line(3).Text = std::string(600'000, 'x');
  d.Edit(4);
  EXPECT_EQ(told, std::vector<std::string>{"The program is too large"});
  EXPECT_TRUE(disk.files.empty());
}

}  // namespace
}  // namespace tavlo::testing
