// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/mount/pty.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/epoll.h>
#include <sys/inotify.h>
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

bool Await(int waiting, int fd) {
  epoll_event input{};
  input.events = EPOLLIN;
  return ::epoll_ctl(waiting, EPOLL_CTL_ADD, fd, &input) == 0;
}

}  // namespace

Pty::Pty() : hub_end_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
  if (!hub_end_.Valid()) Fail("posix_openpt");
  if (::grantpt(hub_end_.Get()) != 0) Fail("grantpt");
  if (::unlockpt(hub_end_.Get()) != 0) Fail("unlockpt");
  std::array<char, 128> name{};
  if (::ptsname_r(hub_end_.Get(), name.data(), name.size()) != 0) Fail("ptsname");
  path_ = name.data();
  pc_end_.Reset(::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!pc_end_.Valid()) Fail(path_.c_str());
  MakeRaw(pc_end_.Get());
  waiting_.Reset(::epoll_create1(EPOLL_CLOEXEC));
  if (!waiting_.Valid() || !Await(waiting_.Get(), hub_end_.Get())) Fail("epoll");
  AwaitClosings();
}

void Pty::AwaitClosings() {
  closings_.Reset(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  if (!closings_.Valid()) return;
  if (::inotify_add_watch(closings_.Get(), path_.c_str(), IN_CLOSE) >= 0) {
    static_cast<void>(Await(waiting_.Get(), closings_.Get()));
  }
}

bool Pty::HasBeenClosed() {
  std::array<char, 4096> events{};
  return closings_.Valid() && ::read(closings_.Get(), events.data(), events.size()) > 0;
}

std::string Pty::Read() {
  // A terminal keeps its exclusive mode until everybody has closed it, and this hub never does.
  if (HasBeenClosed()) static_cast<void>(::ioctl(pc_end_.Get(), TIOCNXCL));
  std::array<char, 4096> buffer{};
  const ssize_t count = ::read(hub_end_.Get(), buffer.data(), buffer.size());
  return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

std::size_t Pty::Write(std::string_view bytes) {
  const std::size_t unread = Unread();
  if (unread >= kMostUnread) return 0;
  const ssize_t count = ::write(hub_end_.Get(), bytes.data(), std::min(bytes.size(), kMostUnread - unread));
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::size_t Pty::Unread() const {
  int waiting = 0;
  if (::ioctl(pc_end_.Get(), FIONREAD, &waiting) != 0 || waiting < 0) return 0;
  return static_cast<std::size_t>(waiting);
}

}  // namespace tavlo::hubsim
