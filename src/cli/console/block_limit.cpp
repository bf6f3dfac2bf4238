// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/block_limit.h"

#include <csignal>

namespace tavlo::cli {
namespace {

/// Ignored by default, so that one that comes late harms nobody.
constexpr int kSignal = SIGURG;
constexpr long kNanoseconds = 30'000'000;

void Nothing(int) {}

/// Without SA_RESTART: the call is not to be taken up again.
bool HandleSignal() {
  struct sigaction action {};
  action.sa_handler = Nothing;
  sigemptyset(&action.sa_mask);
  return sigaction(kSignal, &action, nullptr) == 0;
}

}  // namespace

BlockLimit::BlockLimit() {
  static const bool handled = HandleSignal();
  struct sigevent event {};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = kSignal;
  runs_ = handled && timer_create(CLOCK_MONOTONIC, &event, &timer_) == 0;
  if (!runs_) return;
  // Again and again: the first may come before the call has begun.
  const struct itimerspec period = {{0, kNanoseconds}, {0, kNanoseconds}};
  timer_settime(timer_, 0, &period, nullptr);
}

BlockLimit::~BlockLimit() {
  if (runs_) timer_delete(timer_);
}

}  // namespace tavlo::cli
