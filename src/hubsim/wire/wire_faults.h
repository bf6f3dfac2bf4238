// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>

#include "hubsim/wire/failure.h"

namespace tavlo::hubsim {

/// What goes wrong with the bytes from the PC before the hub sees them.
class WireFaults {
 public:
  /// Plays `plan`, whose bytes count from here on.
  void Start(const FailurePlan& plan) {
    plan_ = plan;
    count_ = 0;
  }

  /// Returns what arrives of a byte; empty if it is lost.
  [[nodiscard]] std::optional<std::uint8_t> Pass(std::uint8_t byte) {
    const bool here = ++count_ == plan_.at;
    if (here && plan_.mode == Failure::DropByte) return std::nullopt;
    if (here && plan_.mode == Failure::FlipByte) return static_cast<std::uint8_t>(byte ^ 1);
    return byte;
  }
  /// The cable comes off after the byte that passed last.
  [[nodiscard]] bool CableComesOff() const { return plan_.mode == Failure::Unplug && count_ >= plan_.at; }

 private:
  FailurePlan plan_;
  std::int64_t count_ = 0;
};

}  // namespace tavlo::hubsim
