// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/descriptor_stream.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <ostream>
#include <string>
#include <thread>

#include "cli/console/interrupts.h"

namespace tavlo::testing {
namespace {

class DescriptorStream : public ::testing::Test {
 protected:
  DescriptorStream() { EXPECT_EQ(pipe(ends_.data()), 0); }
  ~DescriptorStream() override {
    for (const int end : ends_) close(end);
  }
  std::string ReadSome(std::size_t count) {
    std::string bytes(count, '\0');
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(read(ends_[0], bytes.data(), count), 0)));
    return bytes;
  }
  std::array<int, 2> ends_{};
};

TEST_F(DescriptorStream, BytesArriveAtAFlush) {
  cli::DescriptorBuffer buffer(ends_[1]);
  std::ostream out(&buffer);
  out << "hello " << 42 << std::flush;
  EXPECT_EQ(ReadSome(100), "hello 42");
}

TEST_F(DescriptorStream, MoreThanAPipeHoldsArrivesWhole) {
  std::string arrived;
  const std::string sent(300000, 'x');
  std::thread reader([&] {
    while (arrived.size() < sent.size()) arrived += ReadSome(10000);
  });
  {
    cli::DescriptorBuffer buffer(ends_[1]);
    std::ostream out(&buffer);
    out << sent << std::flush;
    EXPECT_TRUE(out.good());
  }
  reader.join();
  EXPECT_EQ(arrived, sent);
}

TEST_F(DescriptorStream, AnInterruptionBreaksOffWhatNobodyTakes) {
  const cli::Interrupts interrupts;
  cli::DescriptorBuffer buffer(ends_[1]);
  std::ostream out(&buffer);
  raise(SIGINT);
  EXPECT_TRUE(cli::Interrupts::Pending());
  out << "there is room" << std::flush;
  EXPECT_TRUE(out.good()) << "what can be written still is";
  out << std::string(300000, 'x') << std::flush;
  EXPECT_FALSE(out.good());
}

TEST_F(DescriptorStream, HeldItWaitsForNobodyAndKeepsWhatItCan) {
  cli::DescriptorBuffer buffer(ends_[1]);
  std::ostream out(&buffer);
  buffer.Hold(true);
  std::string sent;
  for (int row = 0; row < 30000; ++row) {
    const std::string text = std::to_string(row) + '\n';
    sent += text;
    out << text << std::flush;
  }
  EXPECT_TRUE(out.good());
  EXPECT_TRUE(buffer.Waits());
  EXPECT_EQ(buffer.DroppedRows(), 0);
  std::string arrived;
  while (buffer.Waits()) {
    arrived += ReadSome(100000);
    buffer.SendOn();
  }
  arrived += ReadSome(100000);
  EXPECT_EQ(arrived, sent);
}

TEST_F(DescriptorStream, HeldItDropsWholeRowsOnceTooMuchIsKept) {
  cli::DescriptorBuffer buffer(ends_[1]);
  std::ostream out(&buffer);
  buffer.Hold(true);
  const std::string row = std::string(999, 'x') + '\n';
  for (int i = 0; i < 2000; ++i) out << row << std::flush;
  const int dropped = buffer.DroppedRows();
  EXPECT_GT(dropped, 500);
  std::string arrived;
  while (buffer.Waits()) {
    arrived += ReadSome(100000);
    buffer.SendOn();
  }
  arrived += ReadSome(100000);
  EXPECT_EQ(arrived.size(), (2000 - static_cast<std::size_t>(dropped)) * row.size());
}

TEST_F(DescriptorStream, AtTheEndNobodyIsWaitedForLongerThanTold) {
  cli::DescriptorBuffer buffer(ends_[1]);
  std::ostream out(&buffer);
  buffer.Hold(true);
  out << std::string(200000, 'x') << '\n' << std::flush;
  buffer.Finish(0.01);
  EXPECT_FALSE(buffer.Waits());
  EXPECT_EQ(buffer.DroppedRows(), 1);
}

TEST_F(DescriptorStream, AReaderThatIsGoneFailsTheStreamAlsoWhereNothingWaits) {
  const cli::Interrupts interrupts;  // the write itself tells, not its signal
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  cli::DescriptorBuffer buffer(ends[1]);
  std::ostream out(&buffer);
  buffer.Hold(true);
  out << std::string(200000, 'x') << '\n' << std::flush;
  EXPECT_TRUE(out.good());
  close(ends[0]);
  buffer.SendOn();
  out << std::flush;
  EXPECT_FALSE(out.good());
  EXPECT_FALSE(cli::Interrupts::Pending());
  close(ends[1]);
}

TEST_F(DescriptorStream, ADescriptorThatTakesNothingFailsTheStream) {
  const int full = open("/dev/full", O_WRONLY);
  cli::DescriptorBuffer buffer(full);
  std::ostream out(&buffer);
  out << "hello" << std::flush;
  EXPECT_FALSE(out.good());
  close(full);
}

TEST(Interrupts, ALimitOfTimeIsOneAndIsToldFromASignal) {
  const cli::Interrupts interrupts;
  cli::Interrupts::LimitTo(0.001);
  pollfd wait = {cli::Interrupts::Descriptor(), POLLIN, 0};
  while (poll(&wait, 1, 5000) < 0 && errno == EINTR) {
  }
  EXPECT_TRUE(cli::Interrupts::Pending());
  EXPECT_TRUE(cli::Interrupts::TimeOver());
}

TEST(Interrupts, ALimitThatIsTakenBackInterruptsNothing) {
  const cli::Interrupts interrupts;
  cli::Interrupts::LimitTo(3600);
  cli::Interrupts::LimitTo(std::nullopt);
  EXPECT_FALSE(cli::Interrupts::Pending());
  raise(SIGALRM);
  EXPECT_TRUE(cli::Interrupts::Pending());
  EXPECT_FALSE(cli::Interrupts::TimeOver());
}

TEST(Interrupts, AreGoneWithTheirObject) {
  EXPECT_EQ(cli::Interrupts::Descriptor(), -1);
  {
    const cli::Interrupts interrupts;
    EXPECT_GE(cli::Interrupts::Descriptor(), 0);
    EXPECT_FALSE(cli::Interrupts::Pending());
    raise(SIGTERM);
    EXPECT_TRUE(cli::Interrupts::Pending());
  }
  EXPECT_EQ(cli::Interrupts::Descriptor(), -1);
  struct sigaction now {};
  sigaction(SIGINT, nullptr, &now);
  EXPECT_EQ(now.sa_handler, SIG_DFL);
}

}  // namespace
}  // namespace tavlo::testing
