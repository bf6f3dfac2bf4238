// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/pty.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace tavlo::hubsim {
namespace {

/// What a terminal's own buffer holds.
constexpr std::size_t kMostUnread = 4095;

[[noreturn]] void Fail(const char* what) {
  throw std::runtime_error("No pseudo terminal: " + std::string(what) + ": " +
                           std::generic_category().message(errno));
}

/// A pty starts cooked and echoing; a program that opens it must never see that.
void MakeRaw(int fd) {
  termios settings{};
  if (::tcgetattr(fd, &settings) != 0) Fail("tcgetattr");
  ::cfmakeraw(&settings);
  if (::tcsetattr(fd, TCSANOW, &settings) != 0) Fail("tcsetattr");
}

}  // namespace

Pty::Pty() : hub_end_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
  if (!hub_end_.Valid()) Fail("posix_openpt");
  if (::grantpt(Fd()) != 0) Fail("grantpt");
  if (::unlockpt(Fd()) != 0) Fail("unlockpt");
  std::array<char, 128> name{};
  if (::ptsname_r(Fd(), name.data(), name.size()) != 0) Fail("ptsname");
  path_ = name.data();
  pc_end_.Reset(::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!pc_end_.Valid()) Fail(path_.c_str());
  MakeRaw(pc_end_.Get());
}

std::string Pty::Read() {
  std::array<char, 4096> buffer{};
  const ssize_t count = ::read(Fd(), buffer.data(), buffer.size());
  return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

std::size_t Pty::Write(std::string_view bytes) {
  const std::size_t unread = Unread();
  if (unread >= kMostUnread) return 0;
  const ssize_t count = ::write(Fd(), bytes.data(), std::min(bytes.size(), kMostUnread - unread));
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::size_t Pty::Unread() const {
  int waiting = 0;
  if (::ioctl(pc_end_.Get(), FIONREAD, &waiting) != 0 || waiting < 0) return 0;
  return static_cast<std::size_t>(waiting);
}

}  // namespace tavlo::hubsim
