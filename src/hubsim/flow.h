// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tavlo::hubsim {

inline constexpr int kCallDepth = 16;

/// Where the program comes back to, and how often its loops still run.
class Flow {
 public:
  void Clear();

  /// False if the stack is full.
  [[nodiscard]] bool Call(int return_line);
  /// Empty if nothing was called.
  [[nodiscard]] std::optional<int> Return();
  [[nodiscard]] int Depth() const { return static_cast<int>(stack_.size()); }

  /// `loop` is the ordinal of the wire, 0..255. A loop that is already counting goes on counting: a program
  /// that jumped out of it and comes back finds its count as it was. A count below 1 is one round.
  void Repeat(int loop, int count);
  /// One round is over. True if another one follows. A loop that was never entered has none.
  [[nodiscard]] bool EndRound(int loop);
  /// The next Repeat counts anew.
  void ResetLoop(int loop);
  /// Rounds that are left, the present one included; 0 of a loop that is not counting.
  [[nodiscard]] int Rounds(int loop) const { return rounds_[static_cast<std::size_t>(loop)]; }

 private:
  std::vector<int> stack_;
  std::array<int, 256> rounds_{};
};

}  // namespace tavlo::hubsim
