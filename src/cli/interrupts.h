// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <csignal>

namespace tavlo::cli {

/// While one lives, SIGINT, SIGTERM and SIGHUP do not end the process: they can be seen and waited for, so
/// that a running machine gets its stop. SIGPIPE is left to whoever writes. At most one at a time.
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

 private:
  struct sigaction old_int_ {};
  struct sigaction old_term_ {};
  struct sigaction old_hup_ {};
  struct sigaction old_pipe_ {};
};

}  // namespace tavlo::cli
