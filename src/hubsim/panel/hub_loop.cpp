// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/hub_loop.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace tavlo::hubsim {
namespace {

/// What is due already is due in a nanosecond: 0 would turn the timer off.
itimerspec At(double seconds) {
  itimerspec when{};
  const double bounded = std::max(seconds, 1e-9);
  when.it_value.tv_sec = static_cast<time_t>(bounded);
  when.it_value.tv_nsec = static_cast<long>((bounded - std::floor(bounded)) * 1e9);
  if (when.it_value.tv_sec == 0 && when.it_value.tv_nsec == 0) when.it_value.tv_nsec = 1;
  return when;
}

}  // namespace

StopSignals::StopSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : kStopSignals) sigaddset(&set, signal);
  ::sigprocmask(SIG_BLOCK, &set, nullptr);
  fd_.Reset(::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
  if (fd_.Get() < 0) throw std::runtime_error("cannot listen to signals");
}

HubLoop::HubLoop(Server& server, const StopSignals& stop_signals)
    : server_(server), timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
  if (timer_.Get() < 0) throw std::runtime_error("cannot make a timer");
  on_time_ = ServeOn(timer_.Get());
  on_stop_ = std::make_unique<QSocketNotifier>(stop_signals.Fd(), QSocketNotifier::Read);
  connect(on_stop_.get(), &QSocketNotifier::activated, this, [this] {
    on_stop_->setEnabled(false);
    emit Ended();
  });
  on_console_ = ServeOn(STDIN_FILENO);
  Rearm();
}

HubLoop::~HubLoop() = default;

std::unique_ptr<QSocketNotifier> HubLoop::ServeOn(int fd) {
  auto notifier = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
  connect(notifier.get(), &QSocketNotifier::activated, this, &HubLoop::Serve);
  return notifier;
}

void HubLoop::Serve() {
  server_.Serve();
  Rearm();
  if (server_.Quitting()) emit Ended();
}

void HubLoop::Rearm() {
  on_console_->setEnabled(server_.ReadsConsole());
  const int pty = server_.PtyFd();
  if (on_pty_ && pty != on_pty_->socket()) {
    on_pty_->setEnabled(false);
    // It may be the one that called.
    on_pty_.release()->deleteLater();
  }
  if (!on_pty_ && pty >= 0) on_pty_ = ServeOn(pty);
  const auto next = server_.NextEvent();
  // Setting the timer also takes back that it rang.
  const itimerspec when = next ? At(*next) : itimerspec{};
  ::timerfd_settime(timer_.Get(), TFD_TIMER_ABSTIME, &when, nullptr);
}

}  // namespace tavlo::hubsim
