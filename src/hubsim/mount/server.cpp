// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/mount/server.h"

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <iostream>

namespace tavlo::hubsim {
namespace {

/// A line that nobody reads loses its bytes. So do we, but not before an upload had room and the PC had time:
/// otherwise the next program that opens the line would be fed old news.
constexpr std::size_t kMostUnsent = 64 * 1024;
constexpr double kStale = 2;
constexpr std::size_t kLongestCommand = 4096;
/// How long the console is left alone after more than that came without a line's end: nobody types that, and
/// what feeds it, a device that never ends, would keep a processor busy.
constexpr double kConsoleRest = 0.1;
/// How long a cable that comes off waits for the PC to read what was sent before.
constexpr double kCutGrace = 0.25;
constexpr double kCutPoll = 0.005;
/// The kernel hands what was written over to the PC's end by a worker of its own.
constexpr double kKernelLag = 0.05;
/// How often a PC that lags behind is looked at.
constexpr double kLagPoll = 0.001;

volatile sig_atomic_t stop_requested = 0;

void RequestStop(int /*signal*/) {
  stop_requested = 1;
}

/// A wait that finds something to read at once lets no signal through, so that a PC or a console that never
/// rests would keep it away for good.
bool StopPending() {
  sigset_t pending;
  if (::sigpending(&pending) != 0) return false;
  return std::ranges::any_of(kStopSignals, [&](int signal) { return sigismember(&pending, signal) == 1; });
}

/// Blocks the signals that end the hub, except during the wait itself, so that none can fall between the test
/// and the wait. Returns the mask for the wait.
sigset_t PrepareSignals() {
  struct sigaction action {};
  action.sa_handler = RequestStop;
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  for (const int signal : kStopSignals) {
    ::sigaction(signal, &action, nullptr);
    sigaddset(&blocked, signal);
  }
  ::signal(SIGPIPE, SIG_IGN);
  // Started in the background of a shell, reading the terminal is refused instead of stopping the hub.
  ::signal(SIGTTIN, SIG_IGN);
  ::sigprocmask(SIG_BLOCK, &blocked, &before);
  for (const int signal : kStopSignals) sigdelset(&before, signal);
  return before;
}

timespec ToTimespec(double seconds) {
  const double bounded = std::clamp(seconds, 0.0, 3600.0);
  timespec result{};
  result.tv_sec = static_cast<time_t>(bounded);
  result.tv_nsec = static_cast<long>((bounded - std::floor(bounded)) * 1e9);
  return result;
}

void Consider(std::optional<double>& next, const std::optional<double>& when) {
  if (when && (!next || *when < *next)) next = when;
}

}  // namespace

Server::Server(Hub& hub, const ServerOptions& options)
    : wait_mask_(PrepareSignals()),
      hub_(hub),
      console_(hub),
      link_(options.link),
      pty_(std::make_unique<Pty>()),
      from_pc_(options.pace, 0),
      to_pc_(options.pace, options.latency_s) {
  // The kernel may stretch a wait by 50 us otherwise, a tenth of a byte's time on the wire.
  ::prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
  if (!options.journal.empty()) journal_ = Journal(options.journal, Now());
  link_.PointTo(pty_->Path());
}

std::string Server::Where() const {
  return link_.Path() + " -> " + (pty_ ? pty_->Path() : std::string("unplugged"));
}

double Server::Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void Server::Announce() const {
  std::cout << "Hub ready: " << Where() << std::endl;
}

void Server::Run() {
  while (stop_requested == 0 && !StopPending() && !console_.Quitting()) {
    DoRound();
    Wait();
  }
}

void Server::Serve() {
  pollfd console{ReadsConsole() ? STDIN_FILENO : -1, POLLIN, 0};
  stdin_ready_ = ::poll(&console, 1, 0) > 0;
  DoRound();
}

void Server::DoRound() {
  const double now = Now();
  ServePty(now);
  ServeConsole(now);
  hub_.Advance(now);
  CollectOutput(now);
  ServeCable(now);
  WriteOut();
  journal_.Flush();
}

std::optional<double> Server::NextEvent() const {
  std::optional<double> next = hub_.NextEvent();
  Consider(next, from_pc_.NextArrival());
  Consider(next, to_pc_.NextArrival());
  if (!unsent_.empty()) Consider(next, Now() + kLagPoll);
  if (cut_by_) Consider(next, Now() + kCutPoll);
  Consider(next, console_rests_until_);
  return next;
}

void Server::Wait() {
  if (console_.Quitting()) return;
  std::array<pollfd, 2> fds{};
  fds[0].fd = pty_ ? pty_->Fd() : -1;
  fds[0].events = POLLIN;
  fds[1].fd = ReadsConsole() ? STDIN_FILENO : -1;
  fds[1].events = POLLIN;
  const auto next = NextEvent();
  const timespec timeout = ToTimespec(next ? *next - Now() : 0);
  const int ready = ::ppoll(fds.data(), fds.size(), next ? &timeout : nullptr, &wait_mask_);
  stdin_ready_ = ready > 0 && fds[1].revents != 0;
}

void Server::ServePty(double now) {
  if (pty_ && !cut_by_) from_pc_.Send(pty_->Read(), now);
  while (const auto arrival = from_pc_.Take(now)) {
    journal_.Received(arrival->bytes, arrival->at);
    hub_.Receive(arrival->bytes, arrival->at);
    CollectOutput(arrival->at);
  }
}

void Server::CollectOutput(double at) {
  to_pc_.Send(hub_.TakeOutput(), at);
}

void Server::WriteOut() {
  const double now = Now();
  while (const auto arrival = to_pc_.Take(now)) {
    if (unsent_.size() + arrival->bytes.size() > kMostUnsent) continue;
    journal_.Sent(arrival->bytes, arrival->at);
    if (unsent_.empty()) unsent_since_ = now;
    unsent_ += arrival->bytes;
  }
  const std::size_t written = pty_ && !unsent_.empty() ? pty_->Write(unsent_) : 0;
  unsent_.erase(0, written);
  if (written > 0) last_progress_ = now;
  if (now - std::max(last_progress_, unsent_since_) > kStale) unsent_.clear();
}

/// A terminal that closes takes the bytes with it that the PC has not read; a real cable does not.
void Server::ServeCable(double now) {
  if (!hub_.Unplugged()) {
    if (!pty_) {
      pty_ = std::make_unique<Pty>();
      link_.PointTo(pty_->Path());
    }
    cut_by_.reset();
    return;
  }
  if (!pty_) return;
  if (!cut_by_) cut_by_ = now + kCutGrace;
  const bool delivered =
      to_pc_.Empty() && unsent_.empty() && pty_->Unread() == 0 && now - last_progress_ > kKernelLag;
  if (!delivered && now < *cut_by_) return;
  link_.Remove();
  pty_.reset();
  from_pc_.Clear();
  to_pc_.Clear();
  unsent_.clear();
  cut_by_.reset();
}

void Server::ServeConsole(double now) {
  if (console_rests_until_ && now >= *console_rests_until_) console_rests_until_.reset();
  if (!stdin_ready_) return;
  std::array<char, 4096> buffer{};
  const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count <= 0) {
    stdin_open_ = false;
    return;
  }
  typed_.append(buffer.data(), static_cast<std::size_t>(count));
  std::size_t end = 0;
  while ((end = typed_.find('\n')) != std::string::npos && !console_.Quitting()) {
    std::cout << console_.Execute(std::string_view(typed_).substr(0, end), now) << std::flush;
    typed_.erase(0, end + 1);
  }
  if (typed_.size() <= kLongestCommand) return;
  typed_.clear();
  console_rests_until_ = now + kConsoleRest;
}

}  // namespace tavlo::hubsim
