// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_serial_port.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QElapsedTimer>
#include <QTest>
#include <thread>

#include "qt/pty.h"

namespace tavlo::testing {
namespace {

class QtSerialPortTest : public ::testing::Test {
 protected:
  void SetUp() override {
    port.CommPort(1);
    port.Settings("19200,N,8,1");
    const auto error = port.PortOpen(true);
    ASSERT_FALSE(error.has_value()) << *error;
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
  EXPECT_FALSE(next.PortOpen(true).has_value());
  next.Output("S");
  EXPECT_EQ(other.Read(1), "S");
}

TEST_F(QtSerialPortTest, ASecondOpenOfTheSameLineIsRefusedAndSaysThatItIsInUse) {
  QtSerialPort second([this](int) { return line.Device(); });
  const auto error = second.PortOpen(true);
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(*error, line.Device() + " is in use by another program; close it there first");
}

TEST_F(QtSerialPortTest, WhatWasSentBeforeTheOpenBelongsToNobody) {
  static_cast<void>(port.PortOpen(false));
  line.Write("old");
  ASSERT_FALSE(port.PortOpen(true).has_value());
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
  EXPECT_EQ(port.PortOpen(true), "there is no device /nowhere/comm1; connect the hub or choose another port");
}

}  // namespace
}  // namespace tavlo::testing
