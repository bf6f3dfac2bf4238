// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/program/line_codes.h"

#include <array>
#include <cstddef>

namespace tavlo::hubsim {
namespace {

/// What a line's end depends on.
enum class Ends : std::uint8_t { AtLength, WithText, WithKnobText, BySubType, ByFirmware };

/// `length` is the whole line's; 0 where the code alone does not tell it.
struct LengthRow {
  LineCode code;
  std::size_t length;
  Ends ends = Ends::AtLength;
};

constexpr std::array<LengthRow, kLineCodes> kLengths{{
    {LineCode::Feed, 12},
    {LineCode::FeedReturn, 16},
    {LineCode::FeedSensor, 14},
    {LineCode::FeedSensorReturn, 18},
    {LineCode::WaitTime, 3},
    {LineCode::WaitInput, 9},
    {LineCode::GoTo, 2},
    {LineCode::Repeat, 5},
    {LineCode::EndRepeat, 3},
    {LineCode::SetOutput, 6},
    {LineCode::IfInput, 5},
    {LineCode::Empty, 1},
    {LineCode::SeekHome, 11},
    {LineCode::Comment, 0, Ends::WithText},
    {LineCode::Prompt, 0, Ends::BySubType},
    {LineCode::FeedPosition, 12},
    {LineCode::MotorPower, 5},
    {LineCode::SetPosition, 6},
    {LineCode::FollowKnob, 0, Ends::WithKnobText},
    {LineCode::MotorCurrent, 4},
    {LineCode::IfInputs, 8, Ends::ByFirmware},
    {LineCode::FeedOutput, 18},
    {LineCode::FeedChange, 17},
    {LineCode::WaitInputs, 7, Ends::ByFirmware},
    {LineCode::FeedSafety, 18},
    {LineCode::ResetLoop, 3},
    {LineCode::Menu, 13},
    {LineCode::LearnPosition, 3},
    {LineCode::Call, 2},
    {LineCode::Return, 1},
    {LineCode::IfMoving, 3},
    {LineCode::StartStop, 7},
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
    case Ends::AtLength: break;
    case Ends::WithText: return CommentComplete(line);
    case Ends::WithKnobText: return KnobComplete(line);
    case Ends::BySubType: return line.size() >= PromptLength(line);
    case Ends::ByFirmware:
      return line.size() >= row.length - (firmware > kLastShortMultiInput ? 0 : kDriveInputBytes);
  }
  return line.size() >= row.length;
}

}  // namespace tavlo::hubsim
