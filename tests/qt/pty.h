// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <string>

namespace tavlo::testing {

/// The other end of a line that is a pseudo-terminal.
class Pty {
 public:
  Pty() {
    master_ = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(master_);
    unlockpt(master_);
    device_ = ptsname(master_);
    slave_ = open(device_.c_str(), O_RDWR | O_NOCTTY);
    termios raw{};
    tcgetattr(slave_, &raw);
    cfmakeraw(&raw);
    tcsetattr(slave_, TCSANOW, &raw);
  }
  ~Pty() { Close(); }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  [[nodiscard]] const std::string& Device() const { return device_; }
  /// Writes as much as the line takes; gives how much that was.
  std::size_t Write(const std::string& bytes) {
    const ssize_t written = write(master_, bytes.data(), bytes.size());
    return written < 0 ? 0 : static_cast<std::size_t>(written);
  }
  /// What has come within so many milliseconds, up to `count` bytes.
  std::string Read(std::size_t count, int ms = 1000) {
    std::string bytes;
    pollfd waiting{master_, POLLIN, 0};
    while (bytes.size() < count && poll(&waiting, 1, ms) == 1 && (waiting.revents & POLLIN) != 0) {
      char buffer[256];
      const ssize_t got = read(master_, buffer, sizeof buffer);
      if (got <= 0) break;
      bytes.append(buffer, static_cast<std::size_t>(got));
    }
    return bytes;
  }
  /// Lets others open the line that a killed program had for itself alone.
  void EndExclusiveMode() const { ioctl(slave_, TIOCNXCL); }
  /// Pulls the cable.
  void Close() {
    if (slave_ >= 0) close(slave_);
    if (master_ >= 0) close(master_);
    slave_ = master_ = -1;
  }

 private:
  int master_ = -1;
  int slave_ = -1;
  std::string device_;
};

}  // namespace tavlo::testing
