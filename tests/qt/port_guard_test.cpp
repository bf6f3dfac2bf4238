// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/port_guard.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <vector>

#include "qt/device_holder.h"
#include "qt/holding_process.h"
#include "qt/open_failure.h"
#include "qt/pty.h"

namespace tavlo::testing {
namespace {

namespace fs = std::filesystem;

std::string ContentOf(const std::string& path) {
  std::ifstream file(path);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

std::string AsText(int pid) {
  return std::string(10 - std::to_string(pid).size(), ' ') + std::to_string(pid) + "\n";
}
std::string AsBytes(int pid) {
  return {reinterpret_cast<const char*>(&pid), sizeof pid};
}

/// A line, a link to it, and lock files of the test's own.
class PortGuardTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directory(locks);
    fs::create_symlink(line.Device(), link);
  }
  Outcome Take() { return guard.Take(link, line.Device()); }
  [[nodiscard]] std::string LockFile(const std::string& name) const { return locks + "/LCK.." + name; }
  /// The names under which the line's locks stand.
  [[nodiscard]] std::vector<std::string> LockFiles() const {
    const std::string number = line.Device().substr(std::string("/dev/pts/").size());
    return {LockFile(number), LockFile("pts_" + number)};
  }
  [[nodiscard]] std::string InUseBy(const std::string& who) const {
    return link + " is in use by " + who + "; close it there first";
  }

  QTemporaryDir folder;
  const std::string locks = folder.filePath("lock").toStdString();
  const std::string link = folder.filePath("hub").toStdString();
  Pty line;
  PortGuard guard{locks};
};

TEST_F(PortGuardTest, APortThatAnotherProgramHoldsInAnyWayIsInUseByItsName) {
  struct Row {
    const char* way;
    std::function<void(int line)> hold;
  };
  const std::vector<Row> rows = {
      {"by having it open", [](int) {}},
      {"by exclusive mode", [](int fd) { ioctl(fd, TIOCEXCL); }},
      {"by flock", [](int fd) { flock(fd, LOCK_EX); }},
      {"by a shared flock", [](int fd) { flock(fd, LOCK_SH); }},
      {"by both", [](int fd) { ioctl(fd, TIOCEXCL), flock(fd, LOCK_EX); }},
  };
  for (const Row& row : rows) {
    for (const std::string& name : {line.Device(), link}) {
      HoldingProcess rival([&] {
        const int fd = open(name.c_str(), O_RDWR | O_NOCTTY);
        row.hold(fd);
        return std::string(fd >= 0 ? "holds" : "failed");
      });
      ASSERT_EQ(rival.Said(), "holds");
      EXPECT_EQ(Take().Why(), InUseBy(rival.Name())) << row.way << " as " << name;
      rival.End();
      line.EndExclusiveMode();
      EXPECT_EQ(Take().Why(), "") << "after the end of who held it " << row.way;
      guard.Release();
    }
  }
}

TEST_F(PortGuardTest, ALockOfALivingProcessIsObeyedAndStaysUnderEachNameAndInEachForm) {
  HoldingProcess rival([] { return std::string("lives"); });
  std::vector<std::string> files = LockFiles();
  files.push_back(LockFile("hub"));
  for (const std::string& file : files) {
    for (const std::string& content : {AsText(rival.Pid()), AsBytes(rival.Pid()), std::to_string(rival.Pid()),
                                       std::to_string(rival.Pid()) + " rival somebody\n",
                                       std::to_string(rival.Pid()) + "\nrival\nhost\n"}) {
      std::ofstream(file) << content;
      EXPECT_EQ(Take().Why(), InUseBy(rival.Name())) << file << ": " << content;
      EXPECT_EQ(ContentOf(file), content);
      fs::remove(file);
    }
  }
}

TEST_F(PortGuardTest, ATextOfFourCharactersIsNotTakenForTheBytesOfANumber) {
  std::ofstream(LockFiles()[0]) << "  1\n";
  EXPECT_EQ(Take().Why(), InUseBy(HolderNamed(1).name + " (process 1)"));
  EXPECT_TRUE(fs::exists(LockFiles()[0]));
}

TEST_F(PortGuardTest, ALockOfAProcessThatHasEndedIsTakenOver) {
  HoldingProcess gone([] { return std::string("lives"); });
  const pid_t pid = gone.Pid();
  gone.End();
  for (const std::string& file : LockFiles()) {
    for (const std::string& content : {AsText(pid), AsBytes(pid)}) {
      std::ofstream(file) << content;
      EXPECT_EQ(Take().Why(), "") << file << ": " << content;
      EXPECT_FALSE(fs::exists(file));
      guard.Release();
    }
  }
}

TEST_F(PortGuardTest, ALockOfOurOwnNumberThatNobodyHoldsIsALeftover) {
  std::ofstream(LockFiles()[0]) << AsText(getpid());
  EXPECT_EQ(Take().Why(), "");
}

TEST_F(PortGuardTest, ALockThatNamesNoProcessIsObeyedAndNamed) {
  for (const std::string& content :
       {std::string(), std::string("me"), std::string("12x\n"), std::string("-5\n"), std::string("0\n"),
        AsBytes(0), AsBytes(-7), std::string("99999999999999\n")}) {
    std::ofstream(LockFiles()[1]) << content;
    EXPECT_EQ(Take().Why(), link + " is in use according to " + LockFiles()[1] +
                                "; remove that file if no program uses the port")
        << content;
    EXPECT_EQ(ContentOf(LockFiles()[1]), content);
  }
}

TEST_F(PortGuardTest, ItsOwnLocksNameItAndGoAtTheRelease) {
  ASSERT_EQ(Take().Why(), "");
  ASSERT_EQ(guard.Mark().Why(), "");
  for (const std::string& file : LockFiles()) {
    EXPECT_EQ(ContentOf(file), AsText(getpid())) << file;
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0644U) << "others have to read it";
  }
  guard.Release();
  EXPECT_TRUE(fs::is_empty(locks));
}

TEST_F(PortGuardTest, ItsOwnLocksGoWithTheEndOfTheProcess) {
  HoldingProcess ending([&] {
    if (fork() == 0) {
      // Never destroyed: exit() leaves what main() has made as it is.
      static PortGuard* const own = new PortGuard(locks);
      exit(own->Take(link, line.Device()) && own->Mark() && !fs::is_empty(locks) ? 0 : 1);
    }
    int status = 0;
    wait(&status);
    return std::to_string(status);
  });
  EXPECT_EQ(ending.Said(), "0");
  EXPECT_TRUE(fs::is_empty(locks));
}

TEST_F(PortGuardTest, AFolderThatTakesNoLockIsDoneWithout) {
  fs::remove_all(locks);
  EXPECT_EQ(Take().Why(), "");
  EXPECT_EQ(guard.Mark().Why(), "");
  EXPECT_FALSE(fs::exists(locks));
}

TEST_F(PortGuardTest, ALockSetMeanwhileByAnotherProgramIsObeyed) {
  HoldingProcess rival([] { return std::string("lives"); });
  ASSERT_EQ(Take().Why(), "");
  std::ofstream(LockFiles()[1]) << AsText(rival.Pid());
  EXPECT_EQ(guard.Mark().Why(), InUseBy(rival.Name()));
  EXPECT_FALSE(fs::exists(LockFiles()[0])) << "nothing of ours stays";
  EXPECT_EQ(ContentOf(LockFiles()[1]), AsText(rival.Pid()));
}

TEST_F(PortGuardTest, WhatItHasAnotherProgramCannotLock) {
  ASSERT_EQ(Take().Why(), "");
  HoldingProcess rival([&] {
    const int fd = open(line.Device().c_str(), O_RDWR | O_NOCTTY);
    return std::string(fd >= 0 && flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK ? "kept out"
                                                                                            : "got in");
  });
  EXPECT_EQ(rival.Said(), "kept out");
}

TEST_F(PortGuardTest, TheProcessAtTheFarEndIsNoRival) {
  HoldingProcess hub([] {
    static Pty both_ends;
    return both_ends.Device();
  });
  EXPECT_EQ(guard.Take(hub.Said(), hub.Said()).Why(), "");
}

TEST_F(PortGuardTest, ASecondGuardInTheSameProgramIsKeptOut) {
  ASSERT_EQ(Take().Why(), "");
  ASSERT_EQ(guard.Mark().Why(), "");
  PortGuard second(locks);
  EXPECT_EQ(second.Take(link, line.Device()).Why(), InUseBy("another program"));
  EXPECT_EQ(ContentOf(LockFiles()[0]), AsText(getpid()));
}

TEST_F(PortGuardTest, WhatIsNoSerialPortIsRefusedInWordsOfOurs) {
  const std::string file = folder.filePath("file").toStdString();
  std::ofstream(file) << "text";
  for (const std::string& other : {file, locks, std::string("/dev/null"), std::string("/dev/zero")}) {
    EXPECT_EQ(guard.Take(other, other).Why(), other + " is no serial port; choose another port");
  }
  EXPECT_EQ(ContentOf(file), "text");
  const std::string missing = folder.filePath("missing").toStdString();
  EXPECT_EQ(guard.Take(missing, missing).Why(),
            "there is no device " + missing + "; connect the hub or choose another port");
  EXPECT_EQ(guard.Take(file + "/below", file + "/below").Why(),
            "there is no device " + file + "/below; connect the hub or choose another port");
}

TEST_F(PortGuardTest, KnowsItsDeviceFromAnotherOfTheSameName) {
  EXPECT_FALSE(guard.Has(line.Device()));
  ASSERT_EQ(Take().Why(), "");
  EXPECT_TRUE(guard.Has(line.Device()));
  const Pty other;
  EXPECT_FALSE(guard.Has(other.Device()));
  EXPECT_FALSE(guard.Has(""));
}

TEST(OpenFailure, EveryRefusalOfTheSystemHasASentenceOfOursThatSaysWhatToDo) {
  for (int error = 1; error < 134; ++error) {
    const std::string sentence = OpenFailure("/dev/nowhere", error);
    EXPECT_EQ(sentence.find(strerror(error)), std::string::npos) << sentence;
    EXPECT_NE(sentence.find("/dev/nowhere"), std::string::npos) << sentence;
    EXPECT_NE(sentence.find("; "), std::string::npos) << sentence;
    EXPECT_NE(sentence.back(), '.') << sentence;
  }
}

TEST(OpenFailure, MissingRightsNameAGroupThatWouldHelpAndNoOther) {
  struct Row {
    gid_t group;
    mode_t mode;
    const char* advice;
  };
  const std::vector<Row> rows = {
      {20, 0660, "have yourself added to the group dialout and sign in again"},
      {20, 0600, "ask the administrator of this computer for it"},
      {20, 0640, "ask the administrator of this computer for it"},
      {0, 0660, "ask the administrator of this computer for it"},
      {54321, 0660, "ask the administrator of this computer for it"},
  };
  const QTemporaryDir folder;
  const std::string device = folder.filePath("tty").toStdString();
  for (const Row& row : rows) {
    std::ofstream(device) << "";
    if (chown(device.c_str(), getuid(), row.group) != 0) GTEST_SKIP() << "only root gives files to groups";
    ASSERT_EQ(chmod(device.c_str(), row.mode), 0);
    EXPECT_EQ(OpenFailure(device, EACCES), "you have no right to use " + device + "; " + row.advice);
  }
}

}  // namespace
}  // namespace tavlo::testing
