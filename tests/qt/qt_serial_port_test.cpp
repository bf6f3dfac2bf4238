// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_serial_port.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>
#include <thread>

#include "qt/holding_process.h"
#include "qt/pty.h"

namespace tavlo::testing {
namespace {

class QtSerialPortTest : public ::testing::Test {
 protected:
  void SetUp() override {
    port.CommPort(1);
    port.Settings("19200,N,8,1");
    const Outcome opened = port.PortOpen(true);
    ASSERT_TRUE(opened) << opened.Why();
    port.OnComm = [this] {
      ++events;
      received += port.Input();
    };
    port.OnLost = [this] { ++losses; };
  }

  Pty line;
  QtSerialPort port{[this](int) { return line.Device(); }};
  std::string received;
  int events = 0;
  int losses = 0;
};

TEST_F(QtSerialPortTest, BytesGoOutAtOnceWithoutTheEventLoop) {
  port.Output("F");
  EXPECT_EQ(line.Read(1), "F");
}

TEST_F(QtSerialPortTest, APolledReadSeesWhatHasArrivedWhileTheEventLoopDoesNotRun) {
  line.Write("abc");
  port.WaitForInput(1);
  EXPECT_EQ(port.InBufferCount(), 3);
  EXPECT_EQ(port.Input(), "abc");
  EXPECT_EQ(port.InBufferCount(), 0);
  EXPECT_EQ(events, 0);
}

TEST_F(QtSerialPortTest, TheReceiveEventComesOnlyFromTheEventLoopNeverFromInsideAPolledRead) {
  port.RThreshold(1);
  line.Write("Y");
  port.WaitForInput(1);
  EXPECT_EQ(port.InBufferCount(), 1);
  EXPECT_EQ(events, 0);
  EXPECT_TRUE(QTest::qWaitFor([this] { return events == 1; }));
  EXPECT_EQ(received, "Y");
}

TEST_F(QtSerialPortTest, WithAThresholdOfZeroNobodyIsCalledAndSettingItAgainDeliversWhatWaits) {
  port.RThreshold(0);
  line.Write("late");
  QTest::qWait(100);
  EXPECT_EQ(events, 0);
  port.RThreshold(1);
  EXPECT_EQ(events, 0) << "not from inside the call";
  EXPECT_TRUE(QTest::qWaitFor([this] { return received == "late"; }));
}

TEST_F(QtSerialPortTest, AThresholdOfThreeDoesNotHoldALastByteBack) {
  port.RThreshold(3);
  line.Write("xyz");
  EXPECT_TRUE(QTest::qWaitFor([this] { return received == "xyz"; }));
  line.Write("!");
  EXPECT_TRUE(QTest::qWaitFor([this] { return received == "xyz!"; }));
}

TEST_F(QtSerialPortTest, AnEventInsideAHandlersOwnEventLoopBringsTheNewerBytes) {
  port.RThreshold(1);
  int depth = 0;
  port.OnComm = [&] {
    received += port.Input();
    if (++depth > 1) return;
    line.Write("second");
    EXPECT_TRUE(QTest::qWaitFor([this] { return received == "firstsecond"; }));
  };
  line.Write("first");
  EXPECT_TRUE(QTest::qWaitFor([&] { return depth >= 2; }));
}

TEST_F(QtSerialPortTest, TheBufferReaches8194ThoughAKernelKeepsFarLess) {
  const std::string image(8194, 'u');
  std::thread hub([&] {
    for (std::size_t sent = 0; sent < image.size();) {
      sent += line.Write(image.substr(sent, 512));
    }
  });
  QElapsedTimer waited;
  waited.start();
  while (port.InBufferCount() < 8194 && waited.elapsed() < 5000) port.WaitForInput(1);
  hub.join();
  EXPECT_EQ(port.InBufferCount(), 8194);
  EXPECT_EQ(port.Input(), image);
}

TEST_F(QtSerialPortTest, AWaitEndsAtItsTimeAndSleepsMeanwhile) {
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  QElapsedTimer waited;
  waited.start();
  port.WaitForInput(0.5);
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  EXPECT_GE(waited.elapsed(), 490);
  const auto spent = after.ru_utime.tv_sec * 1000000 + after.ru_utime.tv_usec -
                     before.ru_utime.tv_sec * 1000000 - before.ru_utime.tv_usec;
  EXPECT_LT(spent, 200000);
}

TEST_F(QtSerialPortTest, ALineEventAtFullRateIsNeverTakenForALostLine) {
  port.RThreshold(1);
  for (int i = 0; i < 2000; ++i) {
    line.Write("ab");
    static_cast<void>(port.InBufferCount());
    QCoreApplication::processEvents();
    if (i % 3 == 0) port.WaitForInput(0.001);
  }
  EXPECT_TRUE(QTest::qWaitFor([this] { return received.size() + port.InBufferCount() == 4000; }));
  EXPECT_EQ(losses, 0);
  EXPECT_TRUE(port.PortOpen());
}

TEST_F(QtSerialPortTest, APortThatVanishesIsToldOnceAndEndsAWaitAtOnce) {
  line.Close();
  QElapsedTimer waited;
  waited.start();
  port.WaitForInput(5);
  EXPECT_LT(waited.elapsed(), 2000);
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(losses, 0) << "from the event loop only";
  EXPECT_TRUE(QTest::qWaitFor([this] { return losses == 1; }));
  QTest::qWait(100);
  EXPECT_EQ(losses, 1);
  port.Output("nobody hears this");
  EXPECT_EQ(port.Input(), "");
}

TEST_F(QtSerialPortTest, APortThatVanishedCanBeClosedAndAnotherChosen) {
  line.Close();
  EXPECT_TRUE(QTest::qWaitFor([this] { return losses == 1; }));
  static_cast<void>(port.PortOpen(false));
  Pty other;
  QtSerialPort next([&other](int) { return other.Device(); });
  EXPECT_TRUE(next.PortOpen(true));
  next.Output("S");
  EXPECT_EQ(other.Read(1), "S");
}

TEST_F(QtSerialPortTest, ASecondOpenOfTheSameLineIsRefusedAndSaysThatItIsInUse) {
  QtSerialPort second([this](int) { return line.Device(); });
  EXPECT_EQ(second.PortOpen(true).Why(),
            line.Device() + " is in use by another program; close it there first");
  EXPECT_FALSE(second.PortOpen());
  EXPECT_TRUE(port.PortOpen());
}

TEST_F(QtSerialPortTest, ASecondProgramOnTheSameLineIsRefusedUnderAnyNameAndTold) {
  const QTemporaryDir folder;
  const std::string link = folder.filePath("comm1").toStdString();
  ASSERT_EQ(symlink(line.Device().c_str(), link.c_str()), 0);
  static_cast<void>(port.PortOpen(false));
  for (const std::string& theirs : {line.Device(), link}) {
    HoldingProcess rival([&theirs] {
      static QtSerialPort other([&theirs](int) { return theirs; });
      const Outcome opened = other.PortOpen(true);
      return opened ? "open" : opened.Why();
    });
    ASSERT_EQ(rival.Said(), "open");
    for (const std::string& ours : {line.Device(), link}) {
      QtSerialPort second([&ours](int) { return ours; });
      EXPECT_EQ(second.PortOpen(true).Why(),
                ours + " is in use by " + rival.Name() + "; close it there first");
    }
    rival.End();
    line.EndExclusiveMode();
    EXPECT_EQ(port.PortOpen(true).Why(), "") << "what a killed program leaves behind is no hindrance";
    static_cast<void>(port.PortOpen(false));
  }
}

TEST_F(QtSerialPortTest, TheLockOfALivingProgramStaysHoweverOldItIs) {
  static_cast<void>(port.PortOpen(false));
  HoldingProcess rival([] { return std::string("lives"); });
  const std::string number = line.Device().substr(std::string("/dev/pts/").size());
  for (const std::string& name : {"LCK.." + number, "LCK..pts_" + number}) {
    const std::string file = std::string(kUucpLockFolder) + "/" + name;
    if (!(std::ofstream(file) << "      " << rival.Pid() << "\n" << std::flush)) GTEST_SKIP() << file;
    const timespec long_ago[2] = {{1000000000, 0}, {1000000000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), long_ago, 0), 0);
    EXPECT_EQ(port.PortOpen(true).Why(),
              line.Device() + " is in use by " + rival.Name() + "; close it there first");
    EXPECT_TRUE(QFile::exists(QString::fromStdString(file)));
    unlink(file.c_str());
  }
}

TEST_F(QtSerialPortTest, ThePortIsLockedInEveryWayWhileItIsOpenAndInNoneAfterwards) {
  struct Seen {
    bool locked;
    bool exclusive;
    bool has_lock_files;
    bool operator==(const Seen&) const = default;
  };
  const auto look = [this] {
    const int fd = open(line.Device().c_str(), O_RDWR | O_NOCTTY);
    int exclusive = fd < 0;
    if (fd >= 0) ioctl(fd, TIOCGEXCL, &exclusive);
    const bool locked = fd < 0 || flock(fd, LOCK_EX | LOCK_NB) != 0;
    close(fd);
    const std::string number = line.Device().substr(std::string("/dev/pts/").size());
    const std::string start = std::string(kUucpLockFolder) + "/LCK..";
    const bool both =
        access((start + number).c_str(), F_OK) == 0 && access((start + "pts_" + number).c_str(), F_OK) == 0;
    return Seen{locked, exclusive != 0, both};
  };
  const bool can_lock = access(kUucpLockFolder, W_OK) == 0;
  EXPECT_EQ(look(), (Seen{true, true, can_lock}));
  static_cast<void>(port.PortOpen(false));
  EXPECT_EQ(look(), (Seen{false, false, false}));
  ASSERT_EQ(port.PortOpen(true).Why(), "");
  line.Close();
  EXPECT_TRUE(QTest::qWaitFor([this] { return losses == 1; }));
  EXPECT_FALSE(look().has_lock_files) << "a port that has gone leaves nothing behind";
}

TEST_F(QtSerialPortTest, NamesItsDeviceAndKnowsWhenItsNumberLeadsElsewhere) {
  const QTemporaryDir folder;
  const std::string link = folder.filePath("comm1").toStdString();
  ASSERT_EQ(symlink(line.Device().c_str(), link.c_str()), 0);
  static_cast<void>(port.PortOpen(false));
  QtSerialPort linked([&link](int) { return link; });
  EXPECT_EQ(linked.Device(), "");
  EXPECT_FALSE(linked.LeadsElsewhere()) << "it is closed";
  ASSERT_EQ(linked.PortOpen(true).Why(), "");
  EXPECT_EQ(linked.Device(), link);
  EXPECT_FALSE(linked.LeadsElsewhere());
  const Pty other;
  unlink(link.c_str());
  EXPECT_TRUE(linked.LeadsElsewhere()) << "it leads nowhere";
  ASSERT_EQ(symlink(other.Device().c_str(), link.c_str()), 0);
  EXPECT_TRUE(linked.LeadsElsewhere());
  static_cast<void>(linked.PortOpen(false));
  ASSERT_EQ(linked.PortOpen(true).Why(), "");
  EXPECT_FALSE(linked.LeadsElsewhere());
}

TEST_F(QtSerialPortTest, WhatWasSentBeforeTheOpenBelongsToNobody) {
  static_cast<void>(port.PortOpen(false));
  line.Write("old");
  ASSERT_TRUE(port.PortOpen(true));
  QTest::qWait(50);
  EXPECT_EQ(port.Input(), "");
}

TEST(QtSerialPort, WithNoOpenPortOutputIsRefusedQuietlyAndNothingIsThere) {
  QtSerialPort port([](int) { return "/nowhere"; });
  port.Output("S");
  EXPECT_EQ(port.InBufferCount(), 0);
  EXPECT_EQ(port.Input(), "");
  port.WaitForInput(0.1);
  EXPECT_FALSE(port.PortOpen());
}

TEST(QtSerialPort, AnOpenThatFailsSaysWhatToDo) {
  QtSerialPort port([](int) { return "/nowhere/comm1"; });
  EXPECT_EQ(port.PortOpen(true).Why(),
            "there is no device /nowhere/comm1; connect the hub or choose another port");
}

}  // namespace
}  // namespace tavlo::testing
