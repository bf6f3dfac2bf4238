// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace tavlo::testing {

/// Another program, named "rival", that does one thing and then waits to be ended.
class HoldingProcess {
 public:
  /// `act` runs in the other process, which has no open files of this one. It may print a word for Said().
  template <typename Act>
  explicit HoldingProcess(Act act) {
    int ends[2];
    if (pipe(ends) != 0) return;
    pid_ = fork();
    if (pid_ == 0) {
      dup2(ends[1], STDOUT_FILENO);
      close_range(STDERR_FILENO + 1, ~0U, 0);
      prctl(PR_SET_NAME, "rival");
      const std::string said = act() + "\n";
      static_cast<void>(!write(STDOUT_FILENO, said.data(), said.size()));
      for (;;) pause();
    }
    close(ends[1]);
    for (char c = 0; read(ends[0], &c, 1) == 1 && c != '\n';) said_ += c;
    close(ends[0]);
  }
  ~HoldingProcess() { End(); }
  HoldingProcess(const HoldingProcess&) = delete;
  HoldingProcess& operator=(const HoldingProcess&) = delete;

  [[nodiscard]] pid_t Pid() const { return pid_; }
  [[nodiscard]] const std::string& Said() const { return said_; }
  /// As the operator reads of it.
  [[nodiscard]] std::string Name() const { return "rival (process " + std::to_string(pid_) + ")"; }
  void End() {
    if (pid_ <= 0) return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    pid_ = -1;
  }

 private:
  pid_t pid_ = -1;
  std::string said_;
};

}  // namespace tavlo::testing
