// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_state_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <optional>

#include "qt/holding_process.h"
#include "support/allowed_size.h"
#include "support/failing_disk.h"
#include "support/temp_folder.h"

namespace tavlo::testing {
namespace {

/// Sets a variable of the environment and puts it back.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name); old != nullptr) old_ = old;
    Set(value == nullptr ? std::nullopt : std::optional<std::string>(value));
  }
  ~Variable() { Set(old_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void Set(const std::optional<std::string>& value) const {
    if (value) {
      setenv(name_, value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> old_;
};

TEST(StateFolder, LiesInTheUsersStateFolderWhicheverWayThatIsTold) {
  {
    const Variable home("HOME", "/home/op");
    const Variable told("XDG_STATE_HOME", nullptr);
    EXPECT_EQ(StateFolderOf("runs"), "/home/op/.local/state/tavlo-composer/runs");
  }
  const Variable home("HOME", "/home/op");
  const Variable relative("XDG_STATE_HOME", "not/from/the/root");
  EXPECT_EQ(StateFolderOf("runs"), "/home/op/.local/state/tavlo-composer/runs");
  const Variable told("XDG_STATE_HOME", "/var/op");
  EXPECT_EQ(StateFolderOf("runs"), "/var/op/tavlo-composer/runs");
}

TEST(StateFolder, IsMadeAtTheFirstFileAndForItsOwnerAlone) {
  const TempFolder home;
  const std::string path = home.Path("a") + "/b";
  QtStateFolder folder(path);
  EXPECT_TRUE(folder.Names().empty());
  EXPECT_EQ(folder.Read("one", 100), std::nullopt);
  EXPECT_EQ(PermissionsOf(path), 0U) << "asking makes nothing";
  ASSERT_EQ(folder.Replace("one", "bytes").Why(), "");
  EXPECT_EQ(PermissionsOf(home.Path("a")), 0700U);
  EXPECT_EQ(PermissionsOf(path), 0700U);
  EXPECT_EQ(PermissionsOf(path + "/one"), 0600U);
  ASSERT_EQ(folder.Replace("one", "other").Why(), "");
  EXPECT_EQ(PermissionsOf(path + "/one"), 0600U);
  EXPECT_EQ(folder.Read("one", 100), "other");
  EXPECT_EQ(folder.Read("one", 2), "ot");
}

TEST(StateFolder, AFolderThatOthersCouldReadIsClosedToThem) {
  const TempFolder home;
  ASSERT_EQ(mkdir(home.Path("open").c_str(), 0755), 0);
  QtStateFolder folder(home.Path("open"));
  ASSERT_EQ(folder.Replace("one", "bytes").Why(), "");
  EXPECT_EQ(PermissionsOf(home.Path("open")), 0700U);
}

TEST(StateFolder, NamesAreSortedAndLeaveOutWhatIsOnlyPassing) {
  const TempFolder home;
  QtStateFolder folder(home.Path());
  for (const char* name : {"b", "a", "c"}) ASSERT_TRUE(folder.Replace(name, "x"));
  static_cast<void>(home.Write("a.new-12-1", "half"));
  ASSERT_TRUE(folder.Claim("a"));
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a", "b", "c"}));
  folder.Remove("a");
  folder.Remove("none of that name");
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"b", "c"}));
}

TEST(StateFolder, AClaimedNameIsFreeAgainWhenItsProcessIsKilled) {
  const TempFolder home;
  QtStateFolder folder(home.Path());
  HoldingProcess rival([&home] {
    static QtStateFolder own(home.Path());
    return std::string(own.Claim("one") && own.Replace("one", "of the rival") ? "claimed" : "refused");
  });
  ASSERT_EQ(rival.Said(), "claimed");
  EXPECT_FALSE(folder.Claim("one"));
  EXPECT_TRUE(folder.Claim("two"));
  rival.End();
  EXPECT_TRUE(folder.Claim("one"));
  EXPECT_TRUE(folder.Claim("one")) << "it is our own";
  EXPECT_EQ(folder.Read("one", 100), "of the rival");
  folder.Remove("one");
  folder.Remove("two");
  EXPECT_TRUE(std::filesystem::is_empty(home.Path())) << "no lock stays behind";
}

TEST(StateFolder, AClaimIsOneFoldersAlone) {
  const TempFolder home;
  QtStateFolder first(home.Path());
  QtStateFolder second(home.Path());
  ASSERT_TRUE(first.Claim("one"));
  EXPECT_FALSE(second.Claim("one"));
  first.Remove("one");
  EXPECT_TRUE(second.Claim("one"));
}

TEST(StateFolder, AFullDiskIsToldAndLeavesTheOldFile) {
  const TempFolder home;
  QtStateFolder folder(home.Path());
  ASSERT_TRUE(folder.Replace("one", "old"));
  {
    const FailingDisk full({.room = 2});
    EXPECT_EQ(folder.Replace("one", "longer than that").Why(), "No space left on device");
  }
  EXPECT_EQ(folder.Read("one", 100), "old");
}

TEST(StateFolder, WhatIsAddedStandsBehindWhatIsThere) {
  const TempFolder home;
  QtStateFolder folder(home.Path());
  EXPECT_EQ(folder.Append("one", "lost").Why(), "No such file or directory");
  EXPECT_TRUE(folder.Names().empty()) << "a file that has gone does not begin in the middle";
  ASSERT_TRUE(folder.Replace("one", "first"));
  EXPECT_EQ(folder.Append("one", ", second").Why(), "");
  EXPECT_EQ(folder.Append("one", "").Why(), "");
  EXPECT_EQ(folder.Read("one", 100), "first, second");
  EXPECT_EQ(PermissionsOf(home.Path("one")), 0600U);
  const FailingDisk full({.room = 2});
  EXPECT_EQ(folder.Append("one", " and third").Why(), "No space left on device");
}

TEST(StateFolder, AFileThatMayGrowNoFurtherFailsAndDoesNotEndTheProgram) {
  const TempFolder home;
  QtStateFolder folder(home.Path());
  ASSERT_TRUE(folder.Replace("one", "12345678"));
  const AllowedSize limit(10);
  EXPECT_EQ(folder.Append("one", "abcdef").Why(), "File too large");
}

TEST(StateFolder, AFolderThatCannotBeMadeIsToldWithItsReason) {
  const TempFolder home;
  static_cast<void>(home.Write("file", ""));
  QtStateFolder folder(home.Path("file") + "/below");
  EXPECT_EQ(folder.Replace("one", "bytes").Why(), "Not a directory");
  EXPECT_FALSE(folder.Claim("one"));
}

}  // namespace
}  // namespace tavlo::testing
