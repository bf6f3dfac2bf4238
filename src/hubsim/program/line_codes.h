// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <span>

namespace tavlo::hubsim {

/// Kinds of program lines as the low six bits of a line's first byte name them.
enum class LineCode : std::uint8_t {
  Feed = 0,
  FeedReturn = 1,
  FeedSensor = 2,
  FeedSensorReturn = 3,
  WaitTime = 4,
  WaitInput = 5,
  GoTo = 6,
  Repeat = 7,
  EndRepeat = 8,
  SetOutput = 9,
  IfInput = 10,
  Empty = 11,
  SeekHome = 12,
  Comment = 13,
  Prompt = 14,
  FeedPosition = 15,
  MotorPower = 16,
  SetPosition = 17,
  FollowKnob = 18,
  MotorCurrent = 19,
  IfInputs = 20,
  FeedOutput = 21,
  FeedChange = 22,
  WaitInputs = 23,
  FeedSafety = 24,
  ResetLoop = 25,
  Menu = 26,
  LearnPosition = 27,
  Call = 28,
  Return = 29,
  IfMoving = 30,
  StartStop = 31,
};

inline constexpr std::uint8_t kCodeMask = 0x3F;
inline constexpr std::uint8_t kProceedBit = 0x40;
inline constexpr std::uint8_t kWaitThisBit = 0x80;
inline constexpr std::uint8_t kTextEnd = 0xFF;
inline constexpr int kLineCodes = 32;

/// A comment has at most this many characters; one that has them all needs no end mark.
inline constexpr int kCommentText = 27;
/// At most this many bytes of a knob line's text are in the line itself, the end mark included.
inline constexpr int kKnobText = 11;

/// Up to this firmware (1.08) a line that looks at several inputs does not carry the drive's own ones.
inline constexpr std::uint8_t kLastShortMultiInput = 8;

/// Whether `line`, the bytes received since the last line's end, is a whole line. `firmware` is the hub's
/// revision byte (38 is 1.38). Codes of 32 and above mean nothing, and such a line is one byte long.
[[nodiscard]] bool LineComplete(std::span<const std::uint8_t> line, std::uint8_t firmware);

}  // namespace tavlo::hubsim
