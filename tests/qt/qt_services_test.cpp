// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_services.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include "model/file_items.h"
#include "model/program_file.h"

namespace tavlo::testing {
namespace {

std::string PathIn(const QTemporaryDir& folder, const char* name) {
  return folder.filePath(name).toStdString();
}

TEST(QtFileStore, AFileIsReplacedWhole) {
  const QTemporaryDir folder;
  QtFileStore files;
  const std::string path = PathIn(folder, "a.TVH");
  EXPECT_EQ(files.Replace(path, "old and long"), std::nullopt);
  EXPECT_EQ(files.Replace(path, "new"), std::nullopt);
  EXPECT_EQ(files.Read(path, 100), "new");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(QtFileStore, ASaveThatCannotBeMadeLeavesTheOldFileAndSaysWhy) {
  const QTemporaryDir folder;
  QtFileStore files;
  const auto error = files.Replace(PathIn(folder, "no-such-folder/a.TVH"), "text");
  ASSERT_TRUE(error.has_value());
  EXPECT_FALSE(error->empty());
  ASSERT_TRUE(QDir(folder.path()).mkdir("a-folder"));
  EXPECT_TRUE(files.Replace(PathIn(folder, "a-folder"), "text").has_value());
  EXPECT_TRUE(QDir(folder.filePath("a-folder")).exists());
}

TEST(QtFileStore, ADiskThatFillsUpLeavesTheOldFileWhole) {
  const QTemporaryDir folder;
  QtFileStore files;
  const std::string path = PathIn(folder, "a.TVH");
  ASSERT_EQ(files.Replace(path, "the old program"), std::nullopt);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, SIG_IGN);
  const rlimit small{1000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const auto error = files.Replace(path, std::string(70000, 'x'));
  setrlimit(RLIMIT_FSIZE, &before);
  ASSERT_TRUE(error.has_value());
  EXPECT_FALSE(error->empty());
  EXPECT_EQ(files.Read(path, 100), "the old program");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(QtFileStore, ADeviceIsNotTakenForAFile) {
  const QTemporaryDir folder;
  const std::string path = PathIn(folder, "pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  QtFileStore files;
  EXPECT_EQ(files.Replace(path, "text"), path + " is not a file");
}

TEST(QtFileStore, ReadingGivesNoMoreThanAskedForAndNothingForWhatCannotBeOpened) {
  const QTemporaryDir folder;
  QtFileStore files;
  const std::string path = PathIn(folder, "b");
  ASSERT_EQ(files.Replace(path, std::string("a\0b\xFFrest", 8)), std::nullopt);
  EXPECT_EQ(files.Read(path, 4), std::string("a\0b\xFF", 4));
  EXPECT_EQ(files.Read(PathIn(folder, "missing"), 4), std::nullopt);
  EXPECT_EQ(files.Read(folder.path().toStdString(), 4), std::nullopt);
}

TEST(QtFileStore, AGigabyteOfRubbishEndsQuickly) {
  const QTemporaryDir folder;
  QFile file(folder.filePath("rubbish.TVH"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_TRUE(file.resize(1 << 30));
  file.close();
  QtFileStore files;
  QElapsedTimer taken;
  taken.start();
  const auto text = files.Read(folder.filePath("rubbish.TVH").toStdString(), kLargestProgramFile);
  ASSERT_TRUE(text.has_value());
  ItemReader items(*text);
  Program program;
  EXPECT_FALSE(LoadHubProg(items, 1.29F, program));
  EXPECT_LT(taken.elapsed(), 5000);
}

TEST(QtSettingsStore, KeepsATextUnderApplicationSectionAndKey) {
  QtSettingsStore settings;
  EXPECT_EQ(settings.Get("Tavlo Test", "Startup", "ComPort", "1"), "1");
  settings.Save("Tavlo Test", "Startup", "ComPort", "7");
  EXPECT_EQ(settings.Get("Tavlo Test", "Startup", "ComPort", "1"), "7");
  QSettings("Tavlo", "Tavlo Test").clear();
}

TEST(QtClock, CountsTheSecondsSinceMidnight) {
  QtClock clock;
  const double now = clock.Timer();
  EXPECT_GE(now, 0);
  EXPECT_LT(now, 86400);
}

TEST(QtEventLoop, YieldingForATimeLetsItPass) {
  QtEventLoop loop;
  QElapsedTimer taken;
  taken.start();
  loop.YieldFor(0.05);
  EXPECT_GE(taken.elapsed(), 49);
}

}  // namespace
}  // namespace tavlo::testing

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
