// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hubsim/program/memory.h"
#include "hubsim/wire/failure.h"

namespace tavlo::hubsim {

/// One download after its "F": 200 lines, the 256 bytes of the axis blocks, the pool up to its 0x00. A line
/// is stored in the memory when it is whole, any other byte as it comes.
class Download {
 public:
  /// What the hub has to acknowledge: line or block number `index`, from 1.
  struct Acknowledge {
    Reply reply = Reply::Line;
    std::int64_t index = 0;
  };

  Download(Memory& memory, std::uint8_t firmware) : memory_(memory), firmware_(firmware) {}

  [[nodiscard]] std::optional<Acknowledge> Take(std::uint8_t byte);
  /// The pool's 0x00 has come.
  [[nodiscard]] bool Complete() const { return stage_ == Stage::Done; }
  /// Sum of all bytes so far, modulo 65536.
  [[nodiscard]] std::uint16_t Sum() const { return sum_; }

 private:
  enum class Stage : std::uint8_t { Lines, System, Pool, Done };

  [[nodiscard]] std::optional<Acknowledge> TakeLineByte(std::uint8_t byte);
  [[nodiscard]] std::optional<Acknowledge> TakeSystemByte(std::uint8_t byte);
  [[nodiscard]] std::optional<Acknowledge> TakePoolByte(std::uint8_t byte);

  Memory& memory_;
  std::uint8_t firmware_;
  Stage stage_ = Stage::Lines;
  std::vector<std::uint8_t> line_;
  std::int64_t taken_ = 0;  ///< lines or bytes of this stage
  std::uint16_t sum_ = 0;
};

}  // namespace tavlo::hubsim
