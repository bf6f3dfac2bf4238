// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "commands/program_files.h"
#include "model/program_file.h"
#include "qt/qt_services.h"
#include "support/allowed_size.h"
#include "support/failing_disk.h"
#include "support/fake_desk.h"
#include "support/temp_folder.h"

// Save on files of the real disk.
namespace tavlo::testing {
namespace {

struct SaveOnDisk : ::testing::Test {
  /// What stands in the file after a save onto the old one.
  std::string Save() {
    fake.source.file_name = "before";
    fake.source.Changed = true;
    fake.boxes.shown.clear();
    fake.dialogs.next_file_name = folder.Path("a.TVH");
    tavlo::Save(desk);
    return folder.Read("a.TVH");
  }
  void PutOld() const { folder.Write("a.TVH", "what is there"); }
  void ExpectTold(const std::string& reason) {
    const ShownBox told{"Error saving file: " + reason, "", Buttons::OK, Icon::None};
    EXPECT_EQ(fake.boxes.shown, std::vector<ShownBox>{told});
  }

  TempFolder folder;
  FakeDesk fake;
  QtFileStore files;
  Desk desk = fake.DeskOn(fake.port, files);
};

TEST_F(SaveOnDisk, ADiskThatIsFullAtAnyKilobyteLeavesTheOldProgramAndIsTold) {
  fake.Line(0).Type = FL;
  const std::string program = WriteHubProg(fake.source.program, fake.source.link.OptCom);
  ASSERT_GT(program.size(), 40 * kKilobyte);
  for (std::size_t room = 0; room < program.size(); room += kKilobyte) {
    SCOPED_TRACE(room);
    PutOld();
    {
      const AllowedSize allowed(room);
      EXPECT_EQ(Save(), "what is there");
    }
    ExpectTold("File too large");
    {
      const FailingDisk full({.room = room});
      EXPECT_EQ(Save(), "what is there");
    }
    ExpectTold("No space left on device");
  }
  const FailingDisk roomy({.room = program.size()});
  EXPECT_TRUE(Save() == program);
  EXPECT_TRUE(fake.boxes.shown.empty());
}

TEST_F(SaveOnDisk, EachStepThatFailsIsTold) {
  for (const DiskFaultRow& row : DiskFaultRows()) {
    SCOPED_TRACE(row.name);
    PutOld();
    {
      const FailingDisk failing(row.faults);
      EXPECT_EQ(Save(), "what is there");
      EXPECT_GT(FailingDisk::Failures(), 0);
    }
    ExpectTold(row.reason);
    EXPECT_FALSE(fake.source.Changed) << "the message is all that tells";
  }
}

}  // namespace
}  // namespace tavlo::testing
