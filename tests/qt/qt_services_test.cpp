// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_services.h"

#include <gtest/gtest.h>
#include <time.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTime>
#include <QTimer>
#include <cmath>

#include "model/file_items.h"
#include "model/program_file.h"

namespace tavlo::testing {
namespace {

std::string PathIn(const QTemporaryDir& folder, const char* name) {
  return folder.filePath(name).toStdString();
}

TEST(QtFileStore, ReadingGivesNoMoreThanAskedForAndNothingForWhatCannotBeOpened) {
  const QTemporaryDir folder;
  QtFileStore files;
  const std::string path = PathIn(folder, "b");
  ASSERT_EQ(files.Replace(path, std::string("a\0b\xFFrest", 8)).Why(), "");
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

TEST(QtClock, IsTheTimeOfDayOfTheZone) {
  const QByteArray zone = qgetenv("TZ");
  for (const char* there : {"UTC0", "WEST+9:30", "EAST-14", "NIGHT+12"}) {
    qputenv("TZ", there);
    tzset();
    QtClock clock;
    for (int look = 0; look < 2; ++look) {
      const double off = clock.Timer() - QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
      EXPECT_NEAR(std::remainder(off, 86400), 0, 1) << there;
    }
  }
  if (zone.isNull()) {
    qunsetenv("TZ");
  } else {
    qputenv("TZ", zone);
  }
  tzset();
}

TEST(QtEventLoop, WaitSecsYieldsUntilTheTimeHasPassed) {
  QtEventLoop loop;
  bool had_a_turn = false;
  QTimer::singleShot(0, [&had_a_turn] { had_a_turn = true; });
  QElapsedTimer taken;
  taken.start();
  loop.WaitSecs(0.05);
  EXPECT_GE(taken.elapsed(), 49);
  EXPECT_TRUE(had_a_turn);
}

}  // namespace
}  // namespace tavlo::testing

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
