// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/interrupts.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <stdexcept>

namespace tavlo::cli {
namespace {

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "a signal handler uses them");
std::atomic<bool> g_pending = false;
std::atomic<int> g_read_end = -1;
std::atomic<int> g_write_end = -1;

void OnSignal(int) {
  const int saved_errno = errno;
  if (!g_pending.exchange(true)) {
    const char wake = 1;
    [[maybe_unused]] const auto written = write(g_write_end, &wake, 1);
  }
  errno = saved_errno;
}

void Handle(int signal, void (*handler)(int), struct sigaction& old) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(signal, &action, &old);
}

}  // namespace

Interrupts::Interrupts() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) throw std::runtime_error("no pipe for signals");
  g_pending = false;
  g_read_end = ends[0];
  g_write_end = ends[1];
  // An ignored SIGINT, which a shell gives its background jobs, is taken all the same: a machine that
  // moves has to obey it. An ignored SIGHUP is what nohup asks for.
  Handle(SIGINT, OnSignal, old_int_);
  Handle(SIGTERM, OnSignal, old_term_);
  Handle(SIGHUP, OnSignal, old_hup_);
  if (old_hup_.sa_handler == SIG_IGN) sigaction(SIGHUP, &old_hup_, nullptr);
  Handle(SIGPIPE, SIG_IGN, old_pipe_);
}

Interrupts::~Interrupts() {
  sigaction(SIGINT, &old_int_, nullptr);
  sigaction(SIGTERM, &old_term_, nullptr);
  sigaction(SIGHUP, &old_hup_, nullptr);
  sigaction(SIGPIPE, &old_pipe_, nullptr);
  close(g_read_end.exchange(-1));
  close(g_write_end.exchange(-1));
}

bool Interrupts::Pending() {
  return g_pending;
}

int Interrupts::Descriptor() {
  return g_read_end;
}

}  // namespace tavlo::cli
