// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/recent_files.h"

#include <gtest/gtest.h>

#include "commands/program_files.h"
#include "model/program_file.h"
#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

using Files = std::vector<std::string>;

TEST(RecentFiles, TheLastOneComesFirstAndEachOnce) {
  FakeSettings settings;
  EXPECT_EQ(RecentFiles(settings), Files());
  for (const char* file : {"a", "b", "c", "a"}) RememberFile(settings, file);
  EXPECT_EQ(RecentFiles(settings), (Files{"a", "c", "b"}));
  ForgetFile(settings, "c");
  ForgetFile(settings, "never seen");
  EXPECT_EQ(RecentFiles(settings), (Files{"a", "b"}));
}

TEST(RecentFiles, NoMoreThanEightAreKept) {
  FakeSettings settings;
  for (int i = 1; i <= 12; ++i) RememberFile(settings, std::to_string(i));
  EXPECT_EQ(RecentFiles(settings), (Files{"12", "11", "10", "9", "8", "7", "6", "5"}));
}

struct RecentDesk : FakeDesk {
  RecentDesk() {
    files.files["/home/op/cut.TVH"] = WriteHubProg(source.program, 0);
    files.files["/home/op/bad.TVH"] = "no program";
  }
  [[nodiscard]] Files Recent() { return RecentFiles(settings); }
};

TEST(RecentFiles, AreThoseThatWereLoadedAndSaved) {
  RecentDesk d;
  d.dialogs.next_file_name = "/home/op/cut.TVH";
  Load(d.desk);
  d.dialogs.next_file_name = "/home/op/new.TVH";
  Save(d.desk);
  EXPECT_EQ(d.Recent(), (Files{"/home/op/new.TVH", "/home/op/cut.TVH"}));
  d.files.room = 3;
  d.dialogs.next_file_name = "/home/op/full.TVH";
  Save(d.desk);
  d.dialogs.next_file_name = std::nullopt;
  Load(d.desk);
  EXPECT_EQ(d.Recent().size(), 2U) << "neither what could not be saved nor what was cancelled";
}

TEST(RecentFiles, AFileThatCannotBeReadIsToldAndForgotten) {
  RecentDesk d;
  for (const char* file : {"/home/op/bad.TVH", "/home/op/gone.TVH", "/home/op/cut.TVH"}) {
    RememberFile(d.settings, file);
  }
  OpenFile(d.desk, "/home/op/gone.TVH");
  OpenFile(d.desk, "/home/op/bad.TVH");
  EXPECT_EQ(d.boxes.shown.size(), 2U);
  EXPECT_EQ(d.Recent(), Files{"/home/op/cut.TVH"});
}

TEST(OpenFile, LoadsAsLoadDoesQuestionIncluded) {
  RecentDesk d;
  OpenFile(d.desk, "/home/op/cut.TVH");
  EXPECT_EQ(d.source.file_name, "/home/op/cut.TVH");
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_TRUE(d.dialogs.shown.empty());
  d.source.Changed = true;
  d.source.file_name = "mine.TVH";
  d.boxes.setNextAnswer(Answer::Cancel);
  OpenFile(d.desk, "/home/op/cut.TVH");
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].title, "Open");
  EXPECT_EQ(d.source.file_name, "mine.TVH");
  OpenFile(d.desk, "/home/op/cut.TVH");
  EXPECT_EQ(d.source.file_name, "/home/op/cut.TVH");
}

TEST(OpenFile, DoesNothingUnderATransferARunAndADialog) {
  RecentDesk d;
  d.source.link.Busy = true;
  OpenFile(d.desk, "/home/op/cut.TVH");
  d.source.link.Busy = false;
  d.source.Editing = true;
  OpenFile(d.desk, "/home/op/cut.TVH");
  d.source.Editing = false;
  d.run.active = RunWindow::fakeMMI;
  OpenFile(d.desk, "/home/op/cut.TVH");
  EXPECT_EQ(d.source.file_name, "untitled");
}

}  // namespace
}  // namespace tavlo::testing
