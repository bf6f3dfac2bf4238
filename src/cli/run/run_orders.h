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
  /// Of the operator terminal, where `act` is one of its keys.
  MmiKey key = MmiKey::enter;

  bool operator==(const RunOrder&) const = default;
};

/// What keys typed on a terminal order, byte by byte: an arrow is three bytes, which may come in pieces.
class TypedKeys {
 public:
  /// Nothing for a byte that is no key or not the last of one.
  [[nodiscard]] std::optional<RunOrder> Take(char c);

 private:
  enum class Phase { Plain, Escape, Sequence };
  Phase phase_ = Phase::Plain;
};

/// What a line of text orders: one of the words, one key ("key 2"), or an entry and Enter behind it. Nothing
/// for a line with anything else in it.
[[nodiscard]] std::optional<std::vector<RunOrder>> OrdersOfLine(std::string_view line);

}  // namespace tavlo::cli
