// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "model/instruction.h"

namespace tavlo {

/// The cases in which a line that is read back from the hub differs from the line that was sent, or in which
/// reading is not the plain inverse of writing. All else is read by the same rows that it was written by.
///
/// Do not "correct" any of these: programs in the field are read by these rules.
enum class DecodeException : std::uint8_t {
  SecondOperandFlags,
  SetOutVariable,
  NothingRead,
  LoopNumbers,
  MotorByte,
  MotorCurrent,
  KnobHead,
  MenuCode,
  PromptFlags,
  BranchFlags,
  WholeSubType,
  PulseOverflow,
  CommentTail,
  ShortPulse,
  CutHundredths,
  WrappedZero,
  StepResolution,
};

struct DecodeExceptionRow {
  DecodeException which;
  std::string_view name;
  /// The types of line that it applies to, by the code in the hub's bytes; empty for the axis settings.
  std::span<const std::int16_t> types;
  std::string_view reason;
};

namespace decode_exceptions {

inline constexpr std::array<std::int16_t, 2> kTwoStepFeeds = {FLSO, FLCS};
inline constexpr std::array<std::int16_t, 1> kFeedSetOut = {FLSO};
inline constexpr std::array<std::int16_t, 2> kUnread = {ER, IM};
inline constexpr std::array<std::int16_t, 2> kLoops = {RP, RL};
inline constexpr std::array<std::int16_t, 1> kMotor = {ED};
inline constexpr std::array<std::int16_t, 1> kKnob = {FE};
inline constexpr std::array<std::int16_t, 2> kMenus = {MMImenu, MMI};
inline constexpr std::array<std::int16_t, 1> kPrompts = {MMI};
inline constexpr std::array<std::int16_t, 1> kStartStop = {SS};
inline constexpr std::array<std::int16_t, 1> kSetOutput = {SO};
inline constexpr std::array<std::int16_t, 1> kComment = {CM};
inline constexpr std::array<std::int16_t, 1> kCurrent = {CC};
inline constexpr std::array<std::int16_t, 14> kWordLines = {FL,   FR, FS, FSR, FP,  FSS, FLSO,
                                                            FLCS, SH, WI, SS,  MMI, WT,  RP};

}  // namespace decode_exceptions

inline constexpr std::array<DecodeExceptionRow, 17> kDecodeExceptions = {{
    // How a line is read.
    {DecodeException::SecondOperandFlags, "second operand flags", decode_exceptions::kTwoStepFeeds,
     "The variable flags of the second operands are looked for at 8 and 16, one bit below where they were "
     "written: a second distance from a variable comes back as a second speed from one, a second speed from "
     "a variable as a plain number."},
    {DecodeException::SetOutVariable, "set output variable", decode_exceptions::kFeedSetOut,
     "The variable of the second distance is taken from the last byte of the first distance, one too early."},
    {DecodeException::NothingRead, "nothing read", decode_exceptions::kUnread,
     "End Repeat gets its target and its loop from its Repeat; If Moving has no reader, so it keeps the "
     "target "
     "and the axis that its record held."},
    {DecodeException::LoopNumbers, "loop numbers", decode_exceptions::kLoops,
     "Loops are numbered afresh once all lines are there; the numbers in the bytes are not read."},
    {DecodeException::MotorByte, "motor byte", decode_exceptions::kMotor,
     "The whole byte decides, not its lowest bit: the motor is on at 1 only."},
    {DecodeException::MotorCurrent, "motor current", decode_exceptions::kMotor,
     "Current and idle option are not read: the record keeps its own."},
    {DecodeException::KnobHead, "knob head", decode_exceptions::kKnob,
     "Input, state and ratio are all that is read, in the plain form: the axis stays as it was, and a line "
     "with a text, which the bit of Proceed marks, gives its flags and half its offset as input and state."},
    {DecodeException::MenuCode, "menu code", decode_exceptions::kMenus,
     "Only the code of its own makes a menu, and it turns into a prompt's. A prompt's code with the sub-type "
     "of a menu is read as a prompt for a value."},
    {DecodeException::PromptFlags, "prompt flags", decode_exceptions::kPrompts,
     "Four text flags are taken, and the third line's two are cleared whatever the byte says of them. Pause "
     "and branch leave the two."},
    {DecodeException::BranchFlags, "branch flags", decode_exceptions::kPrompts,
     "A yes/no prompt comes back with the variable flags of count and speed set, which it does not use."},
    {DecodeException::WholeSubType, "whole sub-type", decode_exceptions::kStartStop,
     "All bits from 16 up are the sub-type."},
    {DecodeException::PulseOverflow, "pulse overflow", decode_exceptions::kSetOutput,
     "The ticks and the hub's own 44 are added in 16 bits; a sum above 32767 has no pulse and fails."},
    {DecodeException::CommentTail, "comment tail", decode_exceptions::kComment,
     "A comment without an end mark is taken from the end of its slot, not from its start: the first four "
     "characters are gone and four bytes of the slot's rest stand behind."},
    // What the encodings do not keep.
    {DecodeException::ShortPulse, "short pulse", decode_exceptions::kSetOutput,
     "A pulse of 3 ms or less goes out as one tick, and one tick with the hub's own 44 reads as 4 ms."},
    {DecodeException::CutHundredths, "cut hundredths", decode_exceptions::kCurrent,
     "Hundredths are cut, and the Single nearest to what is read may lie below it: each trip can lose one."},
    {DecodeException::WrappedZero, "wrapped zero", decode_exceptions::kWordLines,
     "A number that wrapped to two zero bytes reads as 0, which goes out as 1 the next time."},
    {DecodeException::StepResolution,
     "step resolution",
     {},
     "The axis settings do not carry the code of the resolution, so the axis keeps its own, and the speed "
     "factor, which is worked out from it, can change."},
}};

namespace decode_exceptions {

constexpr bool InOrder() {
  for (std::size_t i = 0; i < kDecodeExceptions.size(); ++i) {
    if (static_cast<std::size_t>(kDecodeExceptions[i].which) != i) return false;
  }
  return true;
}
static_assert(InOrder(), "the table is indexed by the exception");

}  // namespace decode_exceptions

[[nodiscard]] constexpr const DecodeExceptionRow& RowOf(DecodeException exception) {
  return kDecodeExceptions[static_cast<std::size_t>(exception)];
}

/// Whether the exception applies to lines whose first byte has this type code.
[[nodiscard]] constexpr bool AppliesTo(DecodeException exception, int type) {
  return std::ranges::find(RowOf(exception).types, type) != RowOf(exception).types.end();
}

}  // namespace tavlo
