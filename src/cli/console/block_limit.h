// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <ctime>

namespace tavlo::cli {

/// While one lives, a read or write that blocks is broken off after some hundredths of a second. It then
/// returns what it has done so far, or EINTR. Used for calls that have just found bytes or room and so should
/// not block at all: a terminal can still be paused in the middle of one, and another reader can be quicker.
class BlockLimit {
 public:
  BlockLimit();
  ~BlockLimit();
  BlockLimit(const BlockLimit&) = delete;
  BlockLimit& operator=(const BlockLimit&) = delete;

 private:
  timer_t timer_{};
  bool runs_ = false;
};

}  // namespace tavlo::cli
