// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/key_terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <csignal>

namespace tavlo::testing {
namespace {

constexpr tcflag_t kLinesAndEcho = ICANON | ECHO;

/// A terminal of the test's own.
class PtyFeed : public cli::Feed {
 public:
  PtyFeed() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
    if (grantpt(master_) == 0 && unlockpt(master_) == 0)
      terminal_ = open(ptsname(master_), O_RDWR | O_NOCTTY);
  }
  ~PtyFeed() override {
    close(terminal_);
    close(master_);
  }
  [[nodiscard]] bool IsTerminal() const override { return true; }
  [[nodiscard]] int Descriptor() const override { return terminal_; }
  [[nodiscard]] std::optional<std::string> Read() override { return std::nullopt; }

  [[nodiscard]] termios Settings() const {
    termios settings{};
    EXPECT_EQ(tcgetattr(terminal_, &settings), 0);
    return settings;
  }
  void Set(const termios& settings) const { EXPECT_EQ(tcsetattr(terminal_, TCSANOW, &settings), 0); }

 private:
  int master_;
  int terminal_ = -1;
};

TEST(KeyTerminal, TakesKeysWhileItIsOnAndPutsTheTerminalBack) {
  const PtyFeed feed;
  const tcflag_t before = feed.Settings().c_lflag;
  {
    cli::KeyTerminal keys(&feed);
    EXPECT_EQ(feed.Settings().c_lflag, before);
    keys.On();
    EXPECT_EQ(feed.Settings().c_lflag & kLinesAndEcho, 0U);
  }
  EXPECT_EQ(feed.Settings().c_lflag, before);
}

TEST(KeyTerminal, TakesKeysAgainBehindAHaltInWhichTheShellHadItsLines) {
  const PtyFeed feed;
  const termios shell = feed.Settings();
  cli::KeyTerminal keys(&feed);
  keys.On();
  feed.Set(shell);
  raise(SIGCONT);
  EXPECT_EQ(feed.Settings().c_lflag & kLinesAndEcho, 0U);
  keys.Off();
  EXPECT_EQ(feed.Settings().c_lflag, shell.c_lflag);
  raise(SIGCONT);
  EXPECT_EQ(feed.Settings().c_lflag, shell.c_lflag) << "a question has its lines";
}

}  // namespace
}  // namespace tavlo::testing
