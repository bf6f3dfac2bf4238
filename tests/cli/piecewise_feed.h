// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <deque>
#include <optional>
#include <string>

#include "cli/console/environment.h"

namespace tavlo::testing {

/// Standard input whose pieces come when the test says so.
class PiecewiseFeed : public cli::Feed {
 public:
  [[nodiscard]] bool IsTerminal() const override { return terminal; }
  [[nodiscard]] int Descriptor() const override { return -1; }
  [[nodiscard]] std::optional<std::string> Read() override {
    ++reads;
    if (pieces.empty()) return ended ? std::nullopt : std::optional<std::string>("");
    std::string piece = pieces.front();
    pieces.pop_front();
    return piece;
  }

  std::deque<std::string> pieces;
  bool ended = false;
  bool terminal = false;
  int reads = 0;
};

}  // namespace tavlo::testing
