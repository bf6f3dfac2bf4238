// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <csignal>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tavlo::cli {

/// While one lives, no signal that can be caught ends or halts the process: those that ask it to end can be
/// seen and waited for, so that a running machine gets its stop. Ctrl-Z is one of them, for a halted process
/// serves no line. A crash sends the last word and takes its course. At most one at a time.
class Interrupts {
 public:
  /// Throws std::runtime_error if the system has no pipe left.
  Interrupts();
  ~Interrupts();
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  /// One of the signals has come. Also false while no Interrupts lives.
  [[nodiscard]] static bool Pending();
  /// A descriptor that becomes and stays readable with the first signal; -1 while no Interrupts lives.
  [[nodiscard]] static int Descriptor();

  /// Interrupts in so many seconds, and not before for none. Only while one lives.
  static void LimitTo(std::optional<double> seconds);
  /// What is pending, or was when the last one went, is that limit.
  [[nodiscard]] static bool TimeOver();

  /// What a crash of the process writes to this descriptor; at most 8 bytes, and none for no bytes.
  static void SetLastWord(int descriptor, std::string_view bytes);

 private:
  void Handle(int signal, void (*handler)(int, siginfo_t*, void*));
  void Ignore(int signal);

  std::vector<std::pair<int, struct sigaction>> before_;
};

}  // namespace tavlo::cli
