// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/mount/pty.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>

#include "hubsim/mount/device_link.h"
#include "hubsim/wire_lines.h"

namespace tavlo::hubsim {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kPatienceMs = 5000;

/// Reads until `count` bytes have come or patience ends.
std::string ReadSome(int fd, std::size_t count) {
  std::string bytes;
  const auto deadline = Clock::now() + std::chrono::milliseconds(kPatienceMs);
  while (bytes.size() < count && Clock::now() < deadline) {
    pollfd wait{fd, POLLIN, 0};
    if (::poll(&wait, 1, 100) <= 0) continue;
    char buffer[4096];
    const ssize_t got = ::read(fd, buffer, std::min(sizeof buffer, count - bytes.size()));
    if (got <= 0) break;
    bytes.append(buffer, static_cast<std::size_t>(got));
  }
  return bytes;
}

/// A folder of its own for each test.
class HubProcess : public ::testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/hubsim-test-XXXXXX";
    ASSERT_NE(::mkdtemp(name), nullptr);
    folder_ = name;
    link_ = folder_ + "/hub";
  }

  void TearDown() override {
    if (line_ >= 0) ::close(line_);
    if (pid_ > 0) End(SIGKILL);
    fs::remove_all(folder_);
  }

  /// Starts the program with `arguments` and gives its first line of output.
  std::string Start(std::vector<std::string> arguments, const std::string& runtime = "") {
    int in[2];
    int out[2];
    if (::pipe(in) != 0 || ::pipe(out) != 0) return "no pipe";
    pid_ = ::fork();
    if (pid_ == 0) {
      ::dup2(in[0], STDIN_FILENO);
      ::dup2(out[1], STDOUT_FILENO);
      ::dup2(out[1], STDERR_FILENO);
      for (const int fd : {in[0], in[1], out[0], out[1]}) ::close(fd);
      if (!runtime.empty()) ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
      arguments.insert(arguments.begin(), TAVLO_HUBSIM);
      std::vector<char*> argv;
      for (auto& argument : arguments) argv.push_back(argument.data());
      argv.push_back(nullptr);
      ::execv(TAVLO_HUBSIM, argv.data());
      ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    stdin_.Reset(in[1]);
    stdout_.Reset(out[0]);
    return ReadLine();
  }

  std::string ReadLine() {
    std::string text;
    while (text.empty() || text.back() != '\n') {
      const std::string byte = ReadSome(stdout_.Get(), 1);
      if (byte.empty()) break;
      text += byte;
    }
    return text;
  }

  std::string Type(const std::string& line) {
    const std::string text = line + "\n";
    if (::write(stdin_.Get(), text.data(), text.size()) < 0) return "gone";
    return ReadLine();
  }

  void Open() {
    line_ = ::open(link_.c_str(), O_RDWR | O_NOCTTY);
    ASSERT_GE(line_, 0);
  }

  std::string Ask(const std::string& bytes, std::size_t count) {
    EXPECT_EQ(::write(line_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    return ReadSome(line_, count);
  }

  /// The exit code, or minus the signal that ended it.
  int End(int signal) {
    if (signal != 0) ::kill(pid_, signal);
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

  /// SIGTERM ends it in order and within patience; whatever happens, it is gone afterwards.
  bool EndsSoon() {
    ::kill(pid_, SIGTERM);
    const auto deadline = Clock::now() + std::chrono::milliseconds(kPatienceMs);
    int status = -1;
    while (::waitpid(pid_, &status, WNOHANG) == 0) {
      if (Clock::now() > deadline) return End(SIGKILL) == 0;
      ::usleep(10000);
    }
    pid_ = -1;
    return status == 0;
  }

  /// Hundredths of a second that it has used so far.
  long ProcessorTime() const {
    std::ifstream stat("/proc/" + std::to_string(pid_) + "/stat");
    std::string field;
    for (int i = 0; i < 14; ++i) stat >> field;
    const long user = std::stol(field);
    stat >> field;
    return user + std::stol(field);
  }

  std::string folder_;
  std::string link_;
  pid_t pid_ = -1;
  UniqueFd stdin_;
  UniqueFd stdout_;
  int line_ = -1;
};

TEST_F(HubProcess, TheLinkLeadsToAHubThatAnswers) {
  const std::string ready = Start({"--link", link_});
  EXPECT_EQ(ready, "Hub ready: " + link_ + " -> " + fs::read_symlink(link_).string() + "\n");
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
  EXPECT_EQ(Ask("U", 8194).size(), 8194U);
}

TEST_F(HubProcess, TheLineIsRawForWhoeverOpensIt) {
  Start({"--link", link_});
  Open();
  termios settings{};
  ASSERT_EQ(::tcgetattr(line_, &settings), 0);
  EXPECT_EQ(settings.c_lflag & (ICANON | ECHO | ISIG), 0U);
  EXPECT_EQ(settings.c_oflag & OPOST, 0U);
  ::close(line_);
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8})) << "the line outlives a PC that closes it";
}

TEST_F(HubProcess, AProgramThatIsKilledLeavesTheLineOpenToOthers) {
  Start({"--link", link_});
  const pid_t client = ::fork();
  if (client == 0) {
    const int fd = ::open(link_.c_str(), O_RDWR | O_NOCTTY);
    if (::ioctl(fd, TIOCEXCL) == 0) ::raise(SIGKILL);
    ::_exit(1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(client, &status, 0), client);
  ASSERT_TRUE(WIFSIGNALED(status));
  const auto deadline = Clock::now() + std::chrono::milliseconds(kPatienceMs);
  int exclusive = 1;
  while (exclusive != 0 && Clock::now() < deadline) {
    // Root gets in all the same, so the mode itself is asked for.
    UniqueFd line(::open(link_.c_str(), O_RDWR | O_NOCTTY));
    if (line.Valid()) {
      ASSERT_EQ(::ioctl(line.Get(), TIOCGEXCL, &exclusive), 0);
    }
    ::usleep(1000);
  }
  EXPECT_EQ(exclusive, 0);
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
}

TEST_F(HubProcess, EveryEndRemovesTheLink) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    Start({"--link", link_});
    ASSERT_TRUE(fs::is_symlink(link_));
    EXPECT_EQ(End(signal), 0);
    EXPECT_TRUE(fs::is_empty(folder_)) << signal;
  }
  Start({"--link", link_});
  EXPECT_EQ(Type("quit"), "ok\n");
  EXPECT_EQ(End(0), 0);
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(HubProcess, TheEndOfStandardInputDoesNotEndTheHub) {
  Start({"--link", link_});
  stdin_.Reset();
  Open();
  ::usleep(50000);
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
}

TEST_F(HubProcess, ALivingHubKeepsItsLink) {
  Start({"--link", link_});
  const pid_t first = pid_;
  const std::string refused = Start({"--link", link_});
  EXPECT_EQ(refused, "tavlo-hubsim: " + link_ + " belongs to a running hub (process " +
                         std::to_string(first) + ").\n");
  EXPECT_EQ(End(0), 1);
  pid_ = first;
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
}

TEST_F(HubProcess, TheLinkOfAKilledHubIsReplaced) {
  Start({"--link", link_});
  const std::string before = fs::read_symlink(link_);
  EXPECT_EQ(End(SIGKILL), -SIGKILL);
  ASSERT_TRUE(fs::is_symlink(link_));
  EXPECT_EQ(Start({"--link", link_}).rfind("Hub ready: ", 0), 0U);
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
}

TEST_F(HubProcess, WhatIsNoLinkOfAHubIsLeftAlone) {
  std::ofstream(link_) << "precious";
  EXPECT_EQ(Start({"--link", link_}), "tavlo-hubsim: " + link_ + " is there already and is no link.\n");
  EXPECT_EQ(End(0), 1);
  EXPECT_EQ(fs::file_size(link_), 8U);
  fs::remove(link_);
  fs::create_symlink("/dev/null", link_);
  EXPECT_EQ(Start({"--link", link_}),
            "tavlo-hubsim: " + link_ + " is a link to /dev/null, which is no simulated hub's.\n");
  EXPECT_EQ(End(0), 1);
}

TEST_F(HubProcess, CommNStandsInTheRuntimeFolderOfThisUserAlone) {
  const std::string expected = folder_ + "/tavlo-composer/comm3";
  EXPECT_EQ(Start({"--comm", "3"}, folder_).rfind("Hub ready: " + expected + " -> /dev/pts/", 0), 0U);
  struct stat status {};
  ASSERT_EQ(::stat((folder_ + "/tavlo-composer").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(HubProcess, ARuntimeFolderOpenToOthersIsRefused) {
  fs::create_directory(folder_ + "/tavlo-composer");
  fs::permissions(folder_ + "/tavlo-composer", fs::perms(0755));
  EXPECT_NE(Start({}, folder_).find("is not a folder of this user alone"), std::string::npos);
  EXPECT_EQ(End(0), 1);
}

TEST_F(HubProcess, WrongOptionsAreAUsageError) {
  for (const std::vector<std::string>& wrong : {std::vector<std::string>{"--firmware", "9.99"},
                                                {"--drives", "1,99"},
                                                {"--fail", "everything"},
                                                {"--model", "hex"},
                                                {"--comm", "9"},
                                                {"--nonsense"}}) {
    EXPECT_NE(Start(wrong), "") << wrong[0];
    EXPECT_EQ(End(0), 2) << wrong[0];
  }
}

TEST_F(HubProcess, APulledCableEndsTheLineAfterWhatWasSent) {
  Start({"--link", link_, "--fail", "unplug-tx:100"});
  Open();
  EXPECT_EQ(Ask("U", 8194).size(), 100U);
  EXPECT_FALSE(fs::exists(fs::symlink_status(link_)));
  EXPECT_EQ(Type("replug"), "ok\n");
  ::close(line_);
  for (int i = 0; i < 100 && !fs::exists(link_); ++i) ::usleep(10000);
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
}

TEST_F(HubProcess, ThePaceIsThatOfTheWire) {
  Start({"--link", link_, "--pace"});
  Open();
  const auto start = Clock::now();
  EXPECT_EQ(Ask("CCCCCCCCCC", 20).size(), 20U);
  const std::chrono::duration<double> taken = Clock::now() - start;
  // The first answer starts when the first C has come, and the answers take longer than the questions.
  EXPECT_GE(taken.count(), 21 / 1920.0 - 0.0002);
  EXPECT_LT(taken.count(), 0.2) << "a machine under load may be late, but not by this much";
}

TEST_F(HubProcess, AnIdleHubUsesNoProcessorTime) {
  Start({"--link", link_});
  ::usleep(500000);
  EXPECT_LE(ProcessorTime(), 5) << "hundredths of a second in half a second";
}

TEST_F(HubProcess, AConsoleThatNeverEndsALineNeitherHoldsTheProcessorNorTheHub) {
  ::signal(SIGPIPE, SIG_IGN);
  Start({"--link", link_});
  std::thread flood([this] {
    const std::string zeros(4096, '\0');
    while (::write(stdin_.Get(), zeros.data(), zeros.size()) > 0) {
    }
  });
  ::usleep(500000);
  EXPECT_LE(ProcessorTime(), 10) << "hundredths of a second in half a second";
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
  EXPECT_TRUE(EndsSoon());
  flood.join();
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(HubProcess, ALineThatNeverRestsDoesNotKeepTheSignalsAway) {
  Start({"--link", link_});
  Open();
  std::atomic<bool> over = false;
  std::thread flood([&] {
    const std::string events(1024, 'I');
    while (!over) (void)!::write(line_, events.data(), events.size());
  });
  ::usleep(100000);
  EXPECT_TRUE(EndsSoon());
  over = true;
  flood.join();
}

TEST_F(HubProcess, TheJournalHoldsEveryByteBothWays) {
  const std::string journal = folder_ + "/journal";
  Start({"--link", link_, "--journal", journal});
  Open();
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
  EXPECT_EQ(Ask("D", 16).size(), 16U);
  EXPECT_EQ(End(SIGTERM), 0);
  std::ifstream file(journal);
  std::string received;
  std::string sent;
  double last = 0;
  for (std::string line; std::getline(file, line);) {
    const auto entry = nlohmann::json::parse(line);
    EXPECT_EQ(entry.size(), 3U);
    EXPECT_GE(entry["t"].get<double>(), last);
    last = entry["t"];
    (entry["dir"] == "rx" ? received : sent) += entry["bytes"].get<std::string>();
  }
  EXPECT_EQ(received, "4344");
  EXPECT_EQ(sent, "2608" + std::string(32, '0'));
}

TEST_F(HubProcess, ALineThatNobodyReadsLosesWhatWasSentLongAgo) {
  Start({"--link", link_});
  Open();
  EXPECT_EQ(::write(line_, "UUUU", 4), 4);
  ::sleep(3);
  std::string old;
  for (pollfd wait{line_, POLLIN, 0}; ::poll(&wait, 1, 100) > 0;) old += ReadSome(line_, 1);
  EXPECT_LT(old.size(), 2 * 8194U);
  EXPECT_EQ(Ask("C", 2), Bytes({38, 8}));
}

}  // namespace
}  // namespace tavlo::hubsim
