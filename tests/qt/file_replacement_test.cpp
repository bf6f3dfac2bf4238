// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/file_replacement.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "qt/qt_services.h"
#include "qt/system_reason.h"
#include "support/allowed_size.h"
#include "support/failing_disk.h"
#include "support/temp_folder.h"

namespace tavlo::testing {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kImage = 8 * kKilobyte;

std::ptrdiff_t CountIn(const TempFolder& folder) {
  return std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator());
}

TEST(ReplaceFile, AFileIsMadeAndReplacedWholeAndNothingElseStays) {
  const TempFolder folder;
  const std::string path = folder.Path("a.TVH");
  EXPECT_EQ(ReplaceFile(path, "old and long").Why(), "");
  EXPECT_EQ(ReplaceFile(path, std::string("new\0\r\n\xFF", 7)).Why(), "");
  EXPECT_EQ(folder.Read("a.TVH"), std::string("new\0\r\n\xFF", 7));
  EXPECT_EQ(ReplaceFile(path, "").Why(), "");
  EXPECT_EQ(folder.Read("a.TVH"), "");
  EXPECT_EQ(CountIn(folder), 1);
}

TEST(ReplaceFile, ADiskThatIsFullAtAnyPlaceLeavesTheOldFileWhole) {
  for (const std::size_t size : {std::size_t{1}, kKilobyte, kImage, 70 * kKilobyte + 1}) {
    const std::string bytes(size, 'x');
    for (std::size_t room = 0; room < size + kKilobyte; room += kKilobyte / 2) {
      SCOPED_TRACE(std::to_string(size) + " bytes, room for " + std::to_string(room));
      const TempFolder folder;
      folder.Write("a", "what is there");
      Outcome replaced;
      {
        const FailingDisk full({.room = room});
        replaced = QtFileStore().Replace(folder.Path("a"), bytes);
      }
      EXPECT_EQ(replaced.Why(), room < size ? "No space left on device" : "");
      EXPECT_TRUE(folder.Read("a") == (room < size ? "what is there" : bytes));
      EXPECT_EQ(CountIn(folder), 1);
    }
  }
}

TEST(ReplaceFile, TheSizeThatTheSystemAllowsEndsTheWriteAndNotTheProgram) {
  const std::string bytes(kImage, 'x');
  for (std::size_t allowed = 0; allowed <= kImage; allowed += kKilobyte) {
    SCOPED_TRACE(allowed);
    const TempFolder folder;
    folder.Write("a", "what is there");
    Outcome replaced;
    {
      const AllowedSize limit(allowed);
      replaced = QtFileStore().Replace(folder.Path("a"), bytes);
    }
    EXPECT_EQ(replaced.Why(), allowed < kImage ? "File too large" : "");
    EXPECT_TRUE(folder.Read("a") == (allowed < kImage ? "what is there" : bytes));
    EXPECT_EQ(CountIn(folder), 1);
  }
  struct sigaction now {};
  sigaction(SIGXFSZ, nullptr, &now);
  EXPECT_EQ(now.sa_handler, SIG_DFL) << "the signal is as it was";
}

TEST(ReplaceFile, EachStepThatFailsLeavesTheOldFileAndSaysWhy) {
  for (const DiskFaultRow& row : DiskFaultRows()) {
    SCOPED_TRACE(row.name);
    for (const bool is_there : {true, false}) {
      const TempFolder folder;
      if (is_there) folder.Write("a", "what is there");
      Outcome replaced;
      {
        const FailingDisk failing(row.faults);
        replaced = QtFileStore().Replace(folder.Path("a"), std::string(kImage, 'x'));
        EXPECT_GT(FailingDisk::Failures(), 0);
      }
      EXPECT_EQ(replaced.Why(), row.reason);
      EXPECT_EQ(folder.Read("a"), is_there ? "what is there" : "");
      EXPECT_EQ(CountIn(folder), is_there ? 1 : 0);
    }
  }
}

TEST(ReplaceFile, AFileSystemWithoutASyncIsWrittenAllTheSame) {
  for (const int error : {EINVAL, ENOSYS}) {
    const TempFolder folder;
    const FailingDisk without({.sync = error});
    EXPECT_EQ(ReplaceFile(folder.Path("a"), "new").Why(), "");
    EXPECT_EQ(folder.Read("a"), "new");
  }
}

TEST(ReplaceFile, AFileKeepsItsPermissionsAndANewOneHasTheUsualOnes) {
  const TempFolder folder;
  const std::string path = folder.Write("a", "old");
  for (const mode_t mode : {0600U, 0640U, 0664U, 0755U}) {
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    EXPECT_EQ(ReplaceFile(path, "new").Why(), "");
    EXPECT_EQ(PermissionsOf(path), mode);
  }
  const mode_t before = umask(0027);
  EXPECT_EQ(ReplaceFile(folder.Path("b"), "new").Why(), "");
  umask(before);
  EXPECT_EQ(PermissionsOf(folder.Path("b")), 0640U);
}

TEST(ReplaceFile, ALinkIsFollowedAndStaysALink) {
  const TempFolder folder;
  folder.Write("a", "old");
  fs::create_directory(folder.Path("sub"));
  fs::create_symlink("../a", folder.Path("sub/link"));
  fs::create_symlink(folder.Path("sub/link"), folder.Path("second"));
  EXPECT_EQ(ReplaceFile(folder.Path("second"), "new").Why(), "");
  EXPECT_EQ(folder.Read("a"), "new");
  EXPECT_TRUE(fs::is_symlink(folder.Path("sub/link")) && fs::is_symlink(folder.Path("second")));
  fs::create_symlink("not-yet", folder.Path("early"));
  EXPECT_EQ(ReplaceFile(folder.Path("early"), "made").Why(), "");
  EXPECT_EQ(folder.Read("not-yet"), "made");
  EXPECT_TRUE(fs::is_symlink(folder.Path("early")));
}

TEST(ReplaceFile, WhatCannotBeReplacedStaysAndTheReasonIsPlain) {
  const TempFolder folder;
  folder.Write("file", "old");
  fs::create_directory(folder.Path("a-folder"));
  fs::create_symlink("circle", folder.Path("circle"));
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  const std::vector<std::pair<std::string, std::string>> rows = {
      {folder.Path("none/a"), "No such file or directory"},
      {folder.Path("file/a"), "Not a directory"},
      {folder.Path("a-folder"), folder.Path("a-folder") + " is not a file"},
      {folder.Path("pipe"), folder.Path("pipe") + " is not a file"},
      {folder.Path("circle"), "Its links lead in a circle"},
      {folder.Path(std::string(300, 'x')), "File name too long"},
      {"", "No such file or directory"},
      {"/dev/full", "/dev/full is not a file"}};
  for (const auto& [path, reason] : rows) EXPECT_EQ(ReplaceFile(path, "new").Why(), reason) << path;
  EXPECT_EQ(folder.Read("file"), "old");
  EXPECT_EQ(CountIn(folder), 4);
}

/// Nothing is closed to root: while one lives, it is somebody else.
class NotRoot {
 public:
  NotRoot() : was_root_(getuid() == 0) {
    constexpr uid_t kNobody = 65534;
    if (was_root_ && setresuid(kNobody, kNobody, 0) != 0) ADD_FAILURE() << "still root";
  }
  ~NotRoot() {
    if (was_root_ && setresuid(0, 0, 0) != 0) ADD_FAILURE() << "not root again";
  }
  NotRoot(const NotRoot&) = delete;
  NotRoot& operator=(const NotRoot&) = delete;

 private:
  bool was_root_;
};

TEST(ReplaceFile, WhatMayNotBeWrittenStays) {
  const TempFolder folder;
  const std::string path = folder.Write("a", "old");
  fs::create_directory(folder.Path("closed"));
  folder.Write("closed/a", "old");
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  ASSERT_EQ(chmod(folder.Path("closed/a").c_str(), 0666), 0);
  ASSERT_EQ(chmod(folder.Path("closed").c_str(), 0555), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  {
    const NotRoot somebody;
    EXPECT_EQ(ReplaceFile(path, "new").Why(), "Permission denied") << "the file is closed";
    EXPECT_EQ(ReplaceFile(folder.Path("closed/a"), "new").Why(), "Permission denied") << "its folder is";
  }
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_EQ(folder.Read("closed/a"), "old");
  ASSERT_EQ(chmod(folder.Path("closed").c_str(), 0755), 0);
}

TEST(ReplaceFile, WhatAnEndedProcessLeftBehindIsNotInTheWay) {
  const TempFolder folder;
  const std::string left = "a.new-" + std::to_string(getpid()) + "-1";
  folder.Write(left, "half");
  EXPECT_EQ(ReplaceFile(folder.Path("a"), "new").Why(), "");
  EXPECT_EQ(folder.Read("a"), "new");
  EXPECT_EQ(folder.Read(left), "half");
}

TEST(SystemReason, IsTheSameInEveryLocaleAndNeverOfATerminal) {
  EXPECT_EQ(SystemReason(ENOSPC), "No space left on device");
  EXPECT_EQ(SystemReason(EDQUOT), "Disk quota exceeded");
  EXPECT_EQ(SystemReason(ENOTTY), "System error 25");
  EXPECT_EQ(SystemReason(0), "System error 0");
}

}  // namespace
}  // namespace tavlo::testing
