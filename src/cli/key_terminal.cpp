// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/key_terminal.h"

#include <unistd.h>

namespace tavlo::cli {

void KeyTerminal::On() {
  if (on_ || descriptor_ < 0 || !InForeground() || tcgetattr(descriptor_, &before_) != 0) return;
  struct termios keys = before_;
  keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  keys.c_cc[VMIN] = 1;
  keys.c_cc[VTIME] = 0;
  on_ = tcsetattr(descriptor_, TCSAFLUSH, &keys) == 0;
}

void KeyTerminal::Off() {
  if (!on_) return;
  on_ = false;
  // A shell that has put this process into the background has taken the terminal back already.
  if (InForeground()) tcsetattr(descriptor_, TCSADRAIN, &before_);
}

bool KeyTerminal::InForeground() const {
  const pid_t group = tcgetpgrp(descriptor_);
  return group < 0 || group == getpgrp();
}

}  // namespace tavlo::cli
