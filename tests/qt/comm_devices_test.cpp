// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/comm_devices.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "hubsim/mount/device_link.h"

namespace tavlo::testing {
namespace {

namespace fs = std::filesystem;

/// A machine whose users' folders and runtime folder are the test's.
class CommDevicesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directory(users);
    Runtime(runtime);
    fs::create_directory(runtime);
  }
  void TearDown() override { qputenv("XDG_RUNTIME_DIR", old_); }

  static void Runtime(const std::string& value) { qputenv("XDG_RUNTIME_DIR", value.c_str()); }
  void MakeFolder(const std::string& path, mode_t mode = 0700) {
    fs::create_directories(path);
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
  }
  void MakeLink(int comm) {
    MakeFolder(runtime + "/tavlo-composer");
    fs::create_symlink("/dev/null", runtime + "/tavlo-composer/comm" + std::to_string(comm));
  }

  QTemporaryDir folder;
  const std::string users = folder.filePath("users").toStdString();
  const std::string of_user = users + "/" + std::to_string(getuid());
  const std::string runtime = folder.filePath("runtime").toStdString();
  const std::string of_none = "/tmp/tavlo-composer-" + std::to_string(getuid());

 private:
  const QByteArray old_ = qgetenv("XDG_RUNTIME_DIR");
};

TEST_F(CommDevicesTest, TheFolderOfTheLinksIsFoundByTheRulesOfTheSystemAndByTheSimulatedHubToo) {
  const std::string file = folder.filePath("file").toStdString();
  std::ofstream(file) << "";
  fs::create_directory("relative-runtime");
  struct Row {
    const char* what;
    std::optional<std::string> runtime;
    bool user_folder;
    std::string found;
  };
  const std::vector<Row> rows = {
      {"told", runtime, false, runtime + "/tavlo-composer"},
      {"told, before the user's", runtime, true, runtime + "/tavlo-composer"},
      {"not told", std::nullopt, true, of_user + "/tavlo-composer"},
      {"told as nothing", "", true, of_user + "/tavlo-composer"},
      {"told, but missing", folder.filePath("missing").toStdString(), true, of_user + "/tavlo-composer"},
      {"told, but a file", file, true, of_user + "/tavlo-composer"},
      {"told, but not from the root", "relative-runtime", true, of_user + "/tavlo-composer"},
      {"told, but of another user", getuid() == 0 ? folder.filePath("foreign").toStdString() : "/", true,
       of_user + "/tavlo-composer"},
      {"nowhere", std::nullopt, false, of_none},
      {"nowhere, told as nothing", "", false, of_none},
  };
  MakeFolder(folder.filePath("foreign").toStdString());
  if (getuid() == 0) {
    ASSERT_EQ(chown(folder.filePath("foreign").toStdString().c_str(), 65534, 65534), 0);
  }
  for (const Row& row : rows) {
    row.runtime ? Runtime(*row.runtime) : static_cast<void>(qunsetenv("XDG_RUNTIME_DIR"));
    fs::remove_all(of_user);
    if (row.user_folder) MakeFolder(of_user);
    EXPECT_EQ(CommFolder(users), row.found) << row.what;
    EXPECT_EQ(hubsim::RuntimeFolder(users), row.found) << row.what;
  }
  fs::remove("relative-runtime");
}

TEST_F(CommDevicesTest, AFolderOfAnotherUserBelowTheUsersFoldersIsNotTaken) {
  if (getuid() != 0) GTEST_SKIP() << "only root gives folders away";
  qunsetenv("XDG_RUNTIME_DIR");
  MakeFolder(of_user);
  ASSERT_EQ(chown(of_user.c_str(), 65534, 65534), 0);
  EXPECT_EQ(CommFolder(users), of_none);
  EXPECT_EQ(hubsim::RuntimeFolder(users), of_none);
}

TEST_F(CommDevicesTest, TheLinkInTheRuntimeFolderComesFirst) {
  MakeLink(3);
  const CommDevice device = LookAtComm(3, users);
  EXPECT_EQ(device.device, runtime + "/tavlo-composer/comm3");
  EXPECT_TRUE(device.there);
  EXPECT_EQ(device.doubt, "");
  EXPECT_EQ(CommDeviceFor(3), device.device);
}

TEST_F(CommDevicesTest, WithoutALinkANumberStandsForAnExistingDeviceOrForTheLinkThatIsMissing) {
  for (int number = 1; number <= 8; ++number) {
    const CommDevice device = LookAtComm(number, users);
    EXPECT_EQ(device.there, fs::exists(device.device)) << device.device;
    const std::string link = runtime + "/tavlo-composer/comm" + std::to_string(number);
    EXPECT_TRUE(device.there || device.device == link) << device.device;
    EXPECT_EQ(device.doubt, "") << "the link was looked for where it would be";
  }
}

TEST_F(CommDevicesTest, ALinkThatLeadsNowhereIsNoDevice) {
  MakeFolder(runtime + "/tavlo-composer");
  fs::create_symlink("/dev/pts/no-such", runtime + "/tavlo-composer/comm8");
  EXPECT_NE(LookAtComm(8, users).there, LookAtComm(8, users).device.ends_with("/comm8"));
}

TEST_F(CommDevicesTest, LinksInAFolderInWhichOthersWriteAreNotFollowedAndThatIsTold) {
  MakeLink(8);
  for (const mode_t mode : {0770, 0707, 0777}) {
    MakeFolder(runtime + "/tavlo-composer", mode);
    const CommDevice device = LookAtComm(8, users);
    EXPECT_FALSE(device.there && device.device.ends_with("/comm8"));
    EXPECT_EQ(device.doubt,
              "others can write in " + runtime + "/tavlo-composer, so its link comm8 was not followed");
  }
}

TEST_F(CommDevicesTest, ACommThatMayBeAnotherDeviceWithARuntimeFolderIsTold) {
  struct Row {
    const char* runtime;
    const char* reason;
  };
  for (const Row& row : {Row{nullptr, "is not set"}, Row{"/nowhere", "names no folder of this user"}}) {
    row.runtime != nullptr ? Runtime(row.runtime) : static_cast<void>(qunsetenv("XDG_RUNTIME_DIR"));
    EXPECT_EQ(LookAtComm(8, users).doubt, std::string("XDG_RUNTIME_DIR ") + row.reason +
                                              ", so the link comm8 was looked for in " + of_none + " alone");
    MakeFolder(of_user);
    EXPECT_EQ(LookAtComm(8, users).doubt, "") << "the system's own folder is as good";
    fs::remove_all(of_user);
  }
}

TEST_F(CommDevicesTest, ADeviceThatComesAndOneThatGoesAreNoticedWithoutBeingAskedFor) {
  QtCommDevices devices;
  int changes = 0;
  bool there = false;
  devices.OnChange = [&] {
    ++changes;
    there = devices.Look(5).device.ends_with("/comm5") && devices.Look(5).there;
  };
  MakeLink(5);
  EXPECT_TRUE(QTest::qWaitFor([&] { return there; })) << "although its folder was not there before";
  fs::remove(runtime + "/tavlo-composer/comm5");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !there; }));
  // Other programs come and go at the same terminals, so a quiet moment may have to be waited for.
  const auto quiet = [&changes] {
    const int before = changes;
    QTest::qWait(300);
    return changes == before;
  };
  EXPECT_TRUE(QTest::qWaitFor(quiet, 20000)) << "nothing is looked at while nothing changes";
}

}  // namespace
}  // namespace tavlo::testing
