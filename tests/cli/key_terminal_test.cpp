// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/key_terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <csignal>
#include <sstream>

#include "cli/console/console.h"

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
  void Type(std::string_view keys) const {
    EXPECT_EQ(write(master_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }
  /// The line that has been typed; nothing if none comes within two seconds.
  [[nodiscard]] std::optional<std::string> ReadLine() const {
    std::string line;
    pollfd wait = {terminal_, POLLIN, 0};
    for (char c = 0; poll(&wait, 1, 2000) == 1 && read(terminal_, &c, 1) == 1; line += c) {
      if (c == '\n') return line;
    }
    return std::nullopt;
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

/// An operator who answers a question the moment it is seen.
class QuickOperator : public std::stringbuf {
 public:
  explicit QuickOperator(const PtyFeed& feed) : feed_(feed) {}

 protected:
  int sync() override {
    if (str().ends_with("[y/N] ")) feed_.Type("y\n");
    return 0;
  }

 private:
  const PtyFeed& feed_;
};

TEST(KeyTerminal, AnAnswerCountsThatIsTypedTheMomentTheQuestionIsSeen) {
  const PtyFeed feed;
  cli::KeyTerminal keys(&feed);
  keys.On();
  feed.Type("y");
  QuickOperator quick(feed);
  std::ostream err(&quick);
  std::ostringstream out;
  cli::Environment environment{out, err, true, [&feed] { return feed.ReadLine(); }, nullptr};
  cli::Console console(environment);
  console.ReadLinesOn(keys);
  EXPECT_EQ(console.Ask("Reset the drive?", Buttons::YesNo, cli::AnswerBy::Operator), Answer::Yes);
  EXPECT_EQ(quick.str(), "Reset the drive? [y/N] ") << "what was typed before is no answer";
  EXPECT_TRUE(keys.IsOn());
}

}  // namespace
}  // namespace tavlo::testing
