// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/interrupts.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <ctime>
#include <stdexcept>

namespace tavlo::cli {
namespace {

struct EndingSignal {
  int signal;
  /// The signal must reach a moving machine even if whoever started this process had it ignored, as a shell
  /// does for its background jobs. Other signals stay ignored: an ignored SIGHUP is what nohup asks for.
  bool even_if_ignored;
};
/// Every signal that would end or stop the process, except the real-time signals, whose numbers are not
/// constants, and those below.
constexpr std::array kEndingSignals = {
    EndingSignal{SIGINT, true},   EndingSignal{SIGQUIT, true},    EndingSignal{SIGTERM, true},
    EndingSignal{SIGHUP, false},  EndingSignal{SIGALRM, false},   EndingSignal{SIGUSR1, false},
    EndingSignal{SIGUSR2, false}, EndingSignal{SIGPIPE, false},   EndingSignal{SIGXCPU, false},
    EndingSignal{SIGXFSZ, false}, EndingSignal{SIGVTALRM, false}, EndingSignal{SIGPROF, false},
    EndingSignal{SIGTSTP, false},
#ifdef __linux__
    EndingSignal{SIGIO, false},   EndingSignal{SIGPWR, false},    EndingSignal{SIGSTKFLT, false},
#endif
};
/// Behind these the process cannot go on.
constexpr std::array kCrashes = {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS};
/// A terminal halts a background process with them. Reads and writes fail or pass instead.
constexpr std::array kTerminalHalts = {SIGTTIN, SIGTTOU};

constexpr std::size_t kLongestWord = 8;

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free &&
                  std::atomic<std::size_t>::is_always_lock_free,
              "a signal handler uses them");
std::atomic<bool> g_pending = false;
std::atomic<bool> g_limited = false;
std::atomic<bool> g_time_over = false;
timer_t g_limit{};
std::atomic<int> g_read_end = -1;
std::atomic<int> g_write_end = -1;
std::atomic<int> g_word_to = -1;
std::atomic<std::size_t> g_word_size = 0;
std::array<char, kLongestWord> g_word{};

/// A failed write reports its failure itself.
bool IsOfOwnWrite(int signal, const siginfo_t& info) {
  return (signal == SIGPIPE || signal == SIGXFSZ) && info.si_pid == getpid();
}

void OnSignal(int signal, siginfo_t* info, void*) {
  if (IsOfOwnWrite(signal, *info)) return;
  const bool limit = signal == SIGALRM && info->si_code == SI_TIMER;
  // The limit was removed at the moment when it ran out.
  if (limit && !g_limited) return;
  const int saved_errno = errno;
  if (!g_pending.exchange(true)) {
    g_time_over = limit;
    const char wake = 1;
    [[maybe_unused]] const auto written = write(g_write_end, &wake, 1);
  }
  errno = saved_errno;
}

void OnCrash(int signal, siginfo_t*, void*) {
  const std::size_t size = g_word_size.exchange(0);
  if (size > 0) [[maybe_unused]]
    const auto written = write(g_word_to, g_word.data(), size);
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigaction(signal, &action, nullptr);
  // Takes effect as soon as this handler returns, even if the signal came from a kill and not from a fault.
  raise(signal);
}

}  // namespace

Interrupts::Interrupts() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) throw std::runtime_error("no pipe for signals");
  g_pending = false;
  g_limited = false;
  g_time_over = false;
  g_read_end = ends[0];
  g_write_end = ends[1];
  for (const EndingSignal& row : kEndingSignals) {
    Handle(row.signal, OnSignal);
    const auto& [signal, before] = before_.back();
    if (before.sa_handler == SIG_IGN && !row.even_if_ignored) sigaction(signal, &before, nullptr);
  }
  for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal) Handle(signal, OnSignal);
  for (const int signal : kCrashes) Handle(signal, OnCrash);
  for (const int signal : kTerminalHalts) Ignore(signal);
}

Interrupts::~Interrupts() {
  LimitTo(std::nullopt);
  SetLastWord(-1, "");
  for (const auto& [signal, before] : before_) sigaction(signal, &before, nullptr);
  close(g_read_end.exchange(-1));
  close(g_write_end.exchange(-1));
}

void Interrupts::Handle(int signal, void (*handler)(int, siginfo_t*, void*)) {
  struct sigaction action {};
  struct sigaction before {};
  action.sa_sigaction = handler;
  action.sa_flags = SA_RESTART | SA_SIGINFO;
  sigemptyset(&action.sa_mask);
  sigaction(signal, &action, &before);
  before_.emplace_back(signal, before);
}

void Interrupts::Ignore(int signal) {
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = SIG_IGN;
  sigaction(signal, &action, &before);
  before_.emplace_back(signal, before);
}

bool Interrupts::Pending() {
  return g_pending;
}

int Interrupts::Descriptor() {
  return g_read_end;
}

void Interrupts::LimitTo(std::optional<double> seconds) {
  if (g_limited.exchange(false)) timer_delete(g_limit);
  if (!seconds) return;
  // A timer of our own: whoever started this process may be using its alarm.
  struct sigevent event {};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGALRM;
  if (timer_create(CLOCK_MONOTONIC, &event, &g_limit) != 0)
    throw std::runtime_error("no timer for --timeout");
  g_limited = true;
  // Far longer than anybody waits. The lower bound is there because a timer of 0 would never run out.
  constexpr double kLongest = 1e8;
  const double limit = std::clamp(*seconds, 1e-6, kLongest);
  struct itimerspec when {};
  when.it_value.tv_sec = static_cast<time_t>(limit);
  when.it_value.tv_nsec = static_cast<long>((limit - std::floor(limit)) * 1e9);
  timer_settime(g_limit, 0, &when, nullptr);
}

bool Interrupts::TimeOver() {
  return g_time_over;
}

void Interrupts::SetLastWord(int descriptor, std::string_view bytes) {
  g_word_size = 0;
  g_word_to = descriptor;
  std::ranges::copy(bytes.substr(0, kLongestWord), g_word.begin());
  g_word_size = std::min(bytes.size(), kLongestWord);
}

}  // namespace tavlo::cli
