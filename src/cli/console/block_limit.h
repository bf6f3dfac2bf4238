// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <ctime>

namespace tavlo::cli {

/// While one lives, a read or a write that blocks is broken off after some hundredths of a second, with what
/// it has done by then or with EINTR. It is for calls that found bytes or room before and so should not block
/// at all: a terminal can still be held in the middle of one, or another reader be quicker.
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
