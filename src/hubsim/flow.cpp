// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/flow.h"

#include <algorithm>

namespace tavlo::hubsim {

void Flow::Clear() {
  stack_.clear();
  rounds_.fill(0);
}

bool Flow::Call(int return_line) {
  if (Depth() >= kCallDepth) return false;
  stack_.push_back(return_line);
  return true;
}

std::optional<int> Flow::Return() {
  if (stack_.empty()) return std::nullopt;
  const int line = stack_.back();
  stack_.pop_back();
  return line;
}

void Flow::Repeat(int loop, int count) {
  int& rounds = rounds_[static_cast<std::size_t>(loop)];
  if (rounds == 0) rounds = std::max(count, 1);
}

bool Flow::EndRound(int loop) {
  int& rounds = rounds_[static_cast<std::size_t>(loop)];
  if (rounds == 0) return false;
  return --rounds > 0;
}

void Flow::ResetLoop(int loop) {
  rounds_[static_cast<std::size_t>(loop)] = 0;
}

}  // namespace tavlo::hubsim
