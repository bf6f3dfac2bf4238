// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/wire/download.h"

#include "hubsim/program/line_codes.h"

namespace tavlo::hubsim {
namespace {

constexpr int kBlock = 32;

}  // namespace

std::optional<Download::Acknowledge> Download::Take(std::uint8_t byte) {
  sum_ = static_cast<std::uint16_t>(sum_ + byte);
  switch (stage_) {
    case Stage::Lines: return TakeLineByte(byte);
    case Stage::System: return TakeSystemByte(byte);
    case Stage::Pool: return TakePoolByte(byte);
    case Stage::Done: break;
  }
  return std::nullopt;
}

std::optional<Download::Acknowledge> Download::TakeLineByte(std::uint8_t byte) {
  line_.push_back(byte);
  if (!LineComplete(line_, firmware_)) return std::nullopt;
  memory_.StoreLine(static_cast<int>(taken_), line_);
  line_.clear();
  const Acknowledge acknowledge{Reply::Line, ++taken_};
  if (taken_ == kLineCount) {
    stage_ = Stage::System;
    taken_ = 0;
  }
  return acknowledge;
}

std::optional<Download::Acknowledge> Download::TakeSystemByte(std::uint8_t byte) {
  memory_.StoreSystemByte(static_cast<int>(taken_++), byte);
  if (taken_ % kBlock != 0) return std::nullopt;
  const Acknowledge acknowledge{Reply::System, taken_ / kBlock};
  if (taken_ == kSystemSize) {
    stage_ = Stage::Pool;
    taken_ = 0;
    memory_.ClearPool();
  }
  return acknowledge;
}

std::optional<Download::Acknowledge> Download::TakePoolByte(std::uint8_t byte) {
  memory_.StorePoolByte(taken_++, byte);
  const bool end = byte == 0;
  if (end) stage_ = Stage::Done;
  if (!end && taken_ % kBlock != 0) return std::nullopt;
  return Acknowledge{Reply::Pool, (taken_ + kBlock - 1) / kBlock};
}

}  // namespace tavlo::hubsim
