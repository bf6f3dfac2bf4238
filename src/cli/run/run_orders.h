// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "link/execution.h"

namespace tavlo::cli {

/// What the operator can do while a program runs.
enum class RunAct { Key, Pause, Play, SingleStep, Reset, Stop };
struct RunOrder {
  RunAct act = RunAct::Key;
  /// The key of the operator terminal, if `act` is Key.
  MmiKey key = MmiKey::enter;

  bool operator==(const RunOrder&) const = default;
};

/// Turns the bytes of keys typed on a terminal into orders. An arrow key sends three bytes, which may arrive
/// separately.
class TypedKeys {
 public:
  /// Returns nothing for a byte that is not a key or that does not complete one.
  [[nodiscard]] std::optional<RunOrder> Take(char c);

 private:
  enum class Phase { Plain, Escape, Sequence };
  Phase phase_ = Phase::Plain;
};

/// Returns the orders of a line of text: one of the words, one key ("key 2"), or an entry followed by Enter.
/// Returns nothing for any other line.
[[nodiscard]] std::optional<std::vector<RunOrder>> OrdersOfLine(std::string_view line);

}  // namespace tavlo::cli
