// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/key_terminal.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace tavlo::cli {
namespace {

// What the handler of SIGCONT puts back.
std::atomic<int> g_descriptor = -1;
struct termios g_keys {};

bool IsForeground(int descriptor) {
  const pid_t group = tcgetpgrp(descriptor);
  return group < 0 || group == getpgrp();
}

void OnContinue(int) {
  const int saved_errno = errno;
  const int descriptor = g_descriptor;
  if (descriptor >= 0 && IsForeground(descriptor)) tcsetattr(descriptor, TCSANOW, &g_keys);
  errno = saved_errno;
}

}  // namespace

void KeyTerminal::On() {
  if (on_ || descriptor_ < 0 || !InForeground() || tcgetattr(descriptor_, &before_) != 0) return;
  struct termios keys = before_;
  keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  keys.c_cc[VMIN] = 1;
  keys.c_cc[VTIME] = 0;
  // Nothing here may wait until the terminal has taken all output: it may be paused while a machine runs.
  on_ = tcsetattr(descriptor_, TCSANOW, &keys) == 0;
  if (!on_) return;
  DropTyped();
  g_keys = keys;
  g_descriptor = descriptor_;
  struct sigaction action {};
  action.sa_handler = OnContinue;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGCONT, &action, &before_continue_);
}

void KeyTerminal::Off() {
  if (!on_) return;
  on_ = false;
  g_descriptor = -1;
  sigaction(SIGCONT, &before_continue_, nullptr);
  // A shell that has put this process into the background has taken the terminal back already.
  if (InForeground()) tcsetattr(descriptor_, TCSANOW, &before_);
}

void KeyTerminal::DropTyped() {
  if (InForeground()) tcflush(descriptor_, TCIFLUSH);
}

bool KeyTerminal::InForeground() const {
  return IsForeground(descriptor_);
}

}  // namespace tavlo::cli
