// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <span>

namespace tavlo::hubsim {

/// Kinds of program lines as the low six bits of a line's first byte name them.
enum class LineCode : std::uint8_t {
  kFeed = 0,
  kFeedReturn = 1,
  kFeedSensor = 2,
  kFeedSensorReturn = 3,
  kWaitTime = 4,
  kWaitInput = 5,
  kGoTo = 6,
  kRepeat = 7,
  kEndRepeat = 8,
  kSetOutput = 9,
  kIfInput = 10,
  kEmpty = 11,
  kSeekHome = 12,
  kComment = 13,
  kPrompt = 14,
  kFeedPosition = 15,
  kMotorPower = 16,
  kSetPosition = 17,
  kFollowKnob = 18,
  kMotorCurrent = 19,
  kIfInputs = 20,
  kFeedOutput = 21,
  kFeedChange = 22,
  kWaitInputs = 23,
  kFeedSafety = 24,
  kResetLoop = 25,
  kMenu = 26,
  kLearnPosition = 27,
  kCall = 28,
  kReturn = 29,
  kIfMoving = 30,
  kStartStop = 31,
};

inline constexpr std::uint8_t kCodeMask = 0x3F;
inline constexpr std::uint8_t kProceedBit = 0x40;
inline constexpr std::uint8_t kWaitThisBit = 0x80;
inline constexpr std::uint8_t kTextEnd = 0xFF;
inline constexpr int kLineCodes = 32;

/// A comment has at most this many characters; one that has them all needs no end mark.
inline constexpr int kCommentText = 27;
/// At most so many bytes of a knob line's text stand in the line itself, the end mark included.
inline constexpr int kKnobText = 11;

/// Up to this firmware (1.08) a line that looks at several inputs does not carry the drive's own ones.
inline constexpr std::uint8_t kLastShortMultiInput = 8;

/// Whether `line`, the bytes received since the last line's end, is a whole line. `firmware` is the hub's
/// revision byte (38 is 1.38). Codes of 32 and above mean nothing, and such a line is one byte long.
[[nodiscard]] bool LineComplete(std::span<const std::uint8_t> line, std::uint8_t firmware);

}  // namespace tavlo::hubsim
