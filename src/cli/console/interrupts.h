// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <csignal>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tavlo::cli {

/// While one lives, no signal that can be caught ends or stops the process. Signals that ask it to end,
/// Ctrl-Z among them, can be polled and waited for, so that a running machine is stopped first; a stopped
/// process would not serve the line. A crash sends the last word and takes its course. At most one may live
/// at a time.
class Interrupts {
 public:
  /// Throws std::runtime_error if the system has no pipe left.
  Interrupts();
  ~Interrupts();
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  /// Whether one of the signals has come. Returns false while no Interrupts lives.
  [[nodiscard]] static bool Pending();
  /// Returns a descriptor that becomes readable with the first signal and stays so; -1 while no Interrupts
  /// lives.
  [[nodiscard]] static int Descriptor();

  /// Interrupts after this many seconds; without a value, the limit is removed. Only while an Interrupts
  /// lives.
  static void LimitTo(std::optional<double> seconds);
  /// Whether the pending interruption is that limit. Stays valid after the Interrupts has gone.
  [[nodiscard]] static bool TimeOver();

  /// Sets what a crash of the process writes to this descriptor: at most 8 bytes; empty writes nothing.
  static void SetLastWord(int descriptor, std::string_view bytes);

 private:
  void Handle(int signal, void (*handler)(int, siginfo_t*, void*));
  void Ignore(int signal);

  std::vector<std::pair<int, struct sigaction>> before_;
};

}  // namespace tavlo::cli
