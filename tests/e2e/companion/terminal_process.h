// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

namespace tavlo::testing {

/// A process with a terminal of its own, at which the test sits.
class TerminalProcess {
 public:
  explicit TerminalProcess(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
    if (pid_ != 0) return;
    execv(arguments[0], arguments.data());
    _exit(127);
  }
  ~TerminalProcess() {
    if (pid_ > 0 && !ended_) {
      ::kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    close(terminal_);
  }
  TerminalProcess(const TerminalProcess&) = delete;
  TerminalProcess& operator=(const TerminalProcess&) = delete;

  void Type(const std::string& keys) {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }
  /// Waits until the terminal has shown this; false after ten seconds or at the end.
  [[nodiscard]] bool Shows(const std::string& text) {
    while (shown_.find(text) == std::string::npos) {
      if (!ReadSome()) return false;
    }
    return true;
  }
  /// The exit code; -1 if a signal ended it.
  [[nodiscard]] int Wait() {
    while (ReadSome()) {
    }
    int status = 0;
    struct rusage usage {};
    EXPECT_EQ(wait4(pid_, &status, 0, &usage), pid_);
    ended_ = true;
    processor_seconds_ = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  /// After Wait().
  [[nodiscard]] double ProcessorSeconds() const { return processor_seconds_; }
  [[nodiscard]] const std::string& Shown() const { return shown_; }

 private:
  static double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  }
  bool ReadSome() {
    pollfd wait = {terminal_, POLLIN, 0};
    if (poll(&wait, 1, 10000) <= 0) return false;
    char bytes[4096];
    const ssize_t count = read(terminal_, bytes, sizeof bytes);
    if (count <= 0) return false;
    shown_.append(bytes, static_cast<std::size_t>(count));
    return true;
  }

  int terminal_ = -1;
  pid_t pid_ = -1;
  bool ended_ = false;
  std::string shown_;
  double processor_seconds_ = 0;
};

}  // namespace tavlo::testing
