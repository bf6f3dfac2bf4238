// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace tavlo {

/// Whether something worked: true if it did. Otherwise it holds a plain text that says what went wrong, such
/// as "No space left on device".
class [[nodiscard]] Outcome {
 public:
  /// It worked.
  Outcome() = default;
  static Outcome Failed(std::string why) {
    Outcome outcome;
    outcome.why_ = std::move(why);
    return outcome;
  }

  explicit operator bool() const { return !why_; }
  /// What went wrong; empty if nothing did.
  [[nodiscard]] std::string Why() const { return why_.value_or(""); }

 private:
  std::optional<std::string> why_;
};

}  // namespace tavlo
