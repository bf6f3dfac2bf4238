// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <functional>

#include "commands/program_files.h"
#include "commands/undo.h"
#include "model/program_file.h"
#include "session/edit_step.h"
#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

constexpr const char* kPresent = "/home/op/cut.TVH";
constexpr const char* kOther = "/home/op/other.TVH";

struct SaveDesk : FakeDesk {
  SaveDesk() {
    files.files[kPresent] = WriteHubProg(source.program, 0);
    files.files["/home/op/old.OSK"] = "not read here";
    dialogs.next_file_name = kOther;
  }
  void EditLine(int line) {
    const EditStep step(desk, "edit");
    Line(line).Type = RT;
    source.Changed = true;
  }
  void Upload() {
    {
      const EditStep step(desk, "upload");
      Line(50).Type = WT;
    }
    MarkUnchanged(desk, Unchanged::Uploaded);
  }
};

struct Case {
  const char* what;
  std::function<void(SaveDesk&)> before;
  /// What the dialog proposes; nothing if none comes up.
  std::optional<std::string> proposed;
};

TEST(SaveToFile, WritesWithoutADialogOnlyWhereTheFileIsTheProgramsOwn) {
  const auto load = [](SaveDesk& d) { LoadFile(d.desk, kPresent); };
  const std::vector<Case> cases = {
      {"untitled", [](SaveDesk&) {}, ""},
      {"loaded", load, std::nullopt},
      {"loaded and edited",
       [&](SaveDesk& d) {
         load(d);
         d.EditLine(4);
       },
       std::nullopt},
      {"saved",
       [](SaveDesk& d) {
         d.dialogs.next_file_name = kPresent;
         Save(d.desk);
         d.dialogs.next_file_name = kOther;
         d.dialogs.shown.clear();
       },
       std::nullopt},
      {"cleared",
       [&](SaveDesk& d) {
         load(d);
         Clear(d.desk);
       },
       ""},
      {"cleared, and that taken back",
       [&](SaveDesk& d) {
         load(d);
         d.EditLine(4);
         Clear(d.desk);
         Undo(d.desk);
       },
       std::nullopt},
      {"uploaded since",
       [&](SaveDesk& d) {
         load(d);
         d.Upload();
       },
       kPresent},
      {"uploaded and edited since",
       [&](SaveDesk& d) {
         load(d);
         d.Upload();
         d.EditLine(4);
       },
       kPresent},
      {"uploaded since, and that taken back",
       [&](SaveDesk& d) {
         load(d);
         d.EditLine(4);
         d.Upload();
         Undo(d.desk);
       },
       std::nullopt},
      {"uploaded and saved since",
       [&](SaveDesk& d) {
         load(d);
         d.Upload();
         d.dialogs.next_file_name = kPresent;
         Save(d.desk);
         d.dialogs.next_file_name = kOther;
         d.dialogs.shown.clear();
         d.EditLine(4);
       },
       std::nullopt},
      {"sent to a hub",
       [&](SaveDesk& d) {
         load(d);
         MarkUnchanged(d.desk, Unchanged::Transferred);
       },
       std::nullopt},
      {"a file of the earlier programmer", [](SaveDesk& d) { d.source.file_name = "/home/op.d/old.OSK"; },
       "/home/op.d/old.TVH"},
      {"a name without an ending", [](SaveDesk& d) { d.source.file_name = "/home/op.d/old"; },
       "/home/op.d/old.TVH"},
      {"never read nor written here", [](SaveDesk& d) { d.source.file_name = kPresent; }, kPresent},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    SaveDesk d;
    c.before(d);
    SaveToFile(d.desk);
    ASSERT_EQ(d.dialogs.shown.size(), c.proposed ? 1U : 0U);
    if (c.proposed) {
      EXPECT_EQ(d.dialogs.shown[0].present, *c.proposed);
    }
    EXPECT_EQ(d.source.file_name, c.proposed ? kOther : kPresent);
    EXPECT_EQ(d.files.files[d.source.file_name], WriteHubProg(d.source.program, 0));
    EXPECT_FALSE(d.source.Changed);
    EXPECT_TRUE(d.boxes.shown.empty() || d.boxes.shown[0].title == "Erase Program");
  }
}

TEST(SaveToFile, AsksBeforeItReplacesWhatAnotherProgramHasWritten) {
  for (const Answer answer : {Answer::Cancel, Answer::OK}) {
    SaveDesk d;
    LoadFile(d.desk, kPresent);
    d.EditLine(4);
    d.files.files[kPresent] += "1";
    const std::string theirs = d.files.files[kPresent];
    d.boxes.setNextAnswer(answer);
    SaveToFile(d.desk);
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.boxes.shown[0],
              (ShownBox{"/home/op/cut.TVH was changed by another program.  Do you want to replace it?",
                        "Save", Buttons::OKCancel, Icon::Question}));
    EXPECT_EQ(d.files.files[kPresent] == theirs, answer == Answer::Cancel);
    EXPECT_EQ(d.source.Changed, answer == Answer::Cancel);
    // What was written here is known from then on.
    SaveToFile(d.desk);
    EXPECT_EQ(d.boxes.shown.size(), answer == Answer::OK ? 1U : 2U);
  }
}

TEST(SaveToFile, AFileThatHasGoneIsWrittenAnewWithoutAQuestion) {
  SaveDesk d;
  LoadFile(d.desk, kPresent);
  d.files.files.clear();
  SaveToFile(d.desk);
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_TRUE(d.files.files.contains(kPresent));
}

TEST(SaveToFile, AFullDiskIsToldInTheWordsOfSaveAndTheFileStaysKnown) {
  SaveDesk d;
  LoadFile(d.desk, kPresent);
  d.EditLine(4);
  d.files.room = 10;
  SaveToFile(d.desk);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text, "Error saving file: No space left on device");
  d.files.room = 1U << 20;
  SaveToFile(d.desk);
  EXPECT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.files.files[kPresent], WriteHubProg(d.source.program, 0));
}

}  // namespace
}  // namespace tavlo::testing
