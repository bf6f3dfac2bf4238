// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/program/line_codes.h"

#include <array>
#include <cstddef>

namespace tavlo::hubsim {
namespace {

/// What a line's end depends on.
enum class Ends : std::uint8_t { kAtLength, kWithText, kWithKnobText, kBySubType, kByFirmware };

/// `length` is the whole line's; 0 where the code alone does not tell it.
struct LengthRow {
  LineCode code;
  std::size_t length;
  Ends ends = Ends::kAtLength;
};

constexpr std::array<LengthRow, kLineCodes> kLengths{{
    {LineCode::kFeed, 12},
    {LineCode::kFeedReturn, 16},
    {LineCode::kFeedSensor, 14},
    {LineCode::kFeedSensorReturn, 18},
    {LineCode::kWaitTime, 3},
    {LineCode::kWaitInput, 9},
    {LineCode::kGoTo, 2},
    {LineCode::kRepeat, 5},
    {LineCode::kEndRepeat, 3},
    {LineCode::kSetOutput, 6},
    {LineCode::kIfInput, 5},
    {LineCode::kEmpty, 1},
    {LineCode::kSeekHome, 11},
    {LineCode::kComment, 0, Ends::kWithText},
    {LineCode::kPrompt, 0, Ends::kBySubType},
    {LineCode::kFeedPosition, 12},
    {LineCode::kMotorPower, 5},
    {LineCode::kSetPosition, 6},
    {LineCode::kFollowKnob, 0, Ends::kWithKnobText},
    {LineCode::kMotorCurrent, 4},
    {LineCode::kIfInputs, 8, Ends::kByFirmware},
    {LineCode::kFeedOutput, 18},
    {LineCode::kFeedChange, 17},
    {LineCode::kWaitInputs, 7, Ends::kByFirmware},
    {LineCode::kFeedSafety, 18},
    {LineCode::kResetLoop, 3},
    {LineCode::kMenu, 13},
    {LineCode::kLearnPosition, 3},
    {LineCode::kCall, 2},
    {LineCode::kReturn, 1},
    {LineCode::kIfMoving, 3},
    {LineCode::kStartStop, 7},
}};

constexpr bool InCodeOrder() {
  for (std::size_t i = 0; i < kLengths.size(); ++i) {
    if (static_cast<std::size_t>(kLengths[i].code) != i) return false;
  }
  return true;
}
static_assert(InCodeOrder(), "the table is indexed by the code");

/// What old firmware lacks of a multi-input line: states and mask of the drive's inputs.
constexpr std::size_t kDriveInputBytes = 2;

constexpr std::size_t kPromptHeader = 5;
constexpr std::size_t kPromptValue = 17;
constexpr std::size_t kPromptPause = 15;
constexpr std::size_t kPromptBranch = 6;
constexpr std::size_t kKnobPlain = 5;

std::size_t PromptLength(std::span<const std::uint8_t> line) {
  if (line.size() < 2) return 2 + 1;
  switch (line[1]) {
    case 3: return kPromptHeader;
    case 4: return kPromptPause;
    case 5: return kPromptBranch;
    default: return kPromptValue;
  }
}

bool KnobComplete(std::span<const std::uint8_t> line) {
  if ((line[0] & kProceedBit) == 0) return line.size() >= kKnobPlain;
  if (line.size() <= kKnobPlain) return false;
  return line.back() == kTextEnd || line.size() >= kKnobPlain + kKnobText;
}

bool CommentComplete(std::span<const std::uint8_t> line) {
  if (line.size() < 2) return false;
  return line.back() == kTextEnd || line.size() >= 1 + kCommentText;
}

}  // namespace

bool LineComplete(std::span<const std::uint8_t> line, std::uint8_t firmware) {
  if (line.empty()) return false;
  const std::size_t number = line[0] & kCodeMask;
  if (number >= kLengths.size()) return true;
  const LengthRow& row = kLengths[number];
  switch (row.ends) {
    case Ends::kAtLength: break;
    case Ends::kWithText: return CommentComplete(line);
    case Ends::kWithKnobText: return KnobComplete(line);
    case Ends::kBySubType: return line.size() >= PromptLength(line);
    case Ends::kByFirmware:
      return line.size() >= row.length - (firmware > kLastShortMultiInput ? 0 : kDriveInputBytes);
  }
  return line.size() >= row.length;
}

}  // namespace tavlo::hubsim
