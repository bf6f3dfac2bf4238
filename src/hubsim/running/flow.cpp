// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/running/flow.h"

#include <algorithm>

namespace tavlo::hubsim {

void Flow::Clear() {
  stack_.clear();
  loops_.fill({});
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

void Flow::Repeat(int loop, int count, CountDisplay display) {
  Loop& counter = loops_[static_cast<std::size_t>(loop)];
  counter.display = display;
  if (counter.rounds == 0) counter.rounds = counter.of = std::max(count, 1);
}

bool Flow::EndRound(int loop) {
  int& rounds = loops_[static_cast<std::size_t>(loop)].rounds;
  if (rounds == 0) return false;
  return --rounds > 0;
}

void Flow::ResetLoop(int loop) {
  loops_[static_cast<std::size_t>(loop)].rounds = 0;
}

std::optional<int> Flow::ShownCount(int loop) const {
  const Loop& counter = loops_[static_cast<std::size_t>(loop)];
  if (counter.rounds == 0) return std::nullopt;
  switch (counter.display) {
    case CountDisplay::None: break;
    case CountDisplay::Down: return counter.rounds;
    case CountDisplay::Up: return counter.of - counter.rounds + 1;
  }
  return std::nullopt;
}

}  // namespace tavlo::hubsim
