// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/memory_line.h"

#include <algorithm>
#include <utility>

namespace tavlo::cli {

std::string MemoryLine::Input() {
  return std::exchange(received_, {});
}

void MemoryLine::Output(std::string_view bytes) {
  hub_.Receive(bytes, now_);
  received_ += hub_.TakeOutput();
}

void MemoryLine::WaitForInput(double seconds) {
  const double limit = now_ + seconds;
  const std::size_t before = received_.size();
  while (received_.size() == before && now_ < limit) {
    PassUntil(std::clamp(hub_.NextEvent().value_or(limit), now_, limit));
  }
}

void MemoryLine::PassUntil(double when) {
  now_ = std::max(now_, when);
  hub_.Advance(now_);
  received_ += hub_.TakeOutput();
}

}  // namespace tavlo::cli
