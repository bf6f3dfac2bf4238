// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tavlo::hubsim {

inline constexpr int kCallDepth = 16;

/// Whether a loop's count is to be seen on the operator terminal, and which.
enum class CountDisplay : std::uint8_t {
  None,
  Down,  ///< the rounds that are left, the present one included
  Up,    ///< the number of the present round, from 1
};

/// The lines to which the calls return, and the rounds that the loops have left.
class Flow {
 public:
  void Clear();
  bool operator==(const Flow&) const = default;

  /// False if the stack is full.
  [[nodiscard]] bool Call(int return_line);
  /// Empty if nothing was called.
  [[nodiscard]] std::optional<int> Return();
  [[nodiscard]] int Depth() const { return static_cast<int>(stack_.size()); }

  /// Enters a loop. `loop` is its number on the wire, 0..255. A loop that is already counting keeps its
  /// count, so a program that jumped out of it and comes back goes on where it was. A count below 1 is one
  /// round.
  void Repeat(int loop, int count, CountDisplay display);
  /// Ends a round. Returns true if another one follows; always false for a loop that was not entered.
  [[nodiscard]] bool EndRound(int loop);
  /// The next Repeat counts anew.
  void ResetLoop(int loop);
  /// Rounds that are left, the present one included; 0 of a loop that is not counting.
  [[nodiscard]] int Rounds(int loop) const { return loops_[static_cast<std::size_t>(loop)].rounds; }
  /// The number to be seen; empty for a loop that shows none or is not counting.
  [[nodiscard]] std::optional<int> ShownCount(int loop) const;
  /// Whether a loop shows its count, counting or not.
  [[nodiscard]] bool ShowsCount(int loop) const {
    return loops_[static_cast<std::size_t>(loop)].display != CountDisplay::None;
  }

 private:
  struct Loop {
    int rounds = 0;
    int of = 0;
    CountDisplay display = CountDisplay::None;
    bool operator==(const Loop&) const = default;
  };

  std::vector<int> stack_;
  std::array<Loop, 256> loops_{};
};

}  // namespace tavlo::hubsim
