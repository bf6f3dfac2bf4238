// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "model/instruction.h"

namespace tavlo {

/// The fields of a compiled line, in the order of its bytes. The compilers write from these rows and the
/// decoder reads by them. The first byte, the type code, has no row.
enum class Op : std::uint8_t {
  Flags,         ///< 1: the sum of the layout's flag bits
  Byte,          ///< 1: a whole number 0..255
  LowByte,       ///< 1: the low byte of a Long
  Sensor,        ///< 1: `IONum`, but 255 for the encoder index of an old servo
  RotatedInput,  ///< 1: `IONum`, a drive's own inputs rotated by one
  PulseByte,     ///< 1: `Time`, cut to 255 in the record as well
  PulseTicks,    ///< 2: `Time` in ticks of 1/12.8 ms less the hub's own 44
  Speed,         ///< 2: 1/40 rev/s, never 0; or a variable's number and a 0
  Word,          ///< 2: never 0; or a variable's number and a 0
  RawWord,       ///< 2: 0 stays 0
  Dist,          ///< 3: steps; or a variable's number and two 0
  LoopOfTarget,  ///< 1: `LoopIndex` of the line that `LineNum` names
  RoundedAmps,   ///< 1: `Current` rounded
  WholeAmps,     ///< 1: `Current` cut
  CentiAmps,     ///< 1: the hundredths of `Current`, cut
  InStates,      ///< 1: `InState`, complemented unless `WaitAND`
  Mode,          ///< 1: `WaitAND`, and 2 for a drive that tests its own inputs
  DriveInputs,   ///< 2, from firmware 1.09 on: wanted levels and mask of the drive's own inputs
  JogAxis,       ///< 1: the axis, + 128 when jogging is off
  KeyMask,       ///< 1: the menu's keys in use
  KeyTargets,    ///< 8: the menu's targets
  CommentText,   ///< up to 27 bytes of `Text`; fewer are followed by a 255
  PoolOffset,    ///< 2: where the text stands in the pool
  PoolHigh,      ///< 1: high byte of that offset
  PoolLow,       ///< 1: low byte of it
  PoolHead,      ///< up to 11 bytes: the head of a text whose rest is in the pool
};

/// Part of a flag byte: `value` if the flag is set; for a numeric flag, `value` times the number.
struct FlagBit {
  int value;
  bool Instruction::*flag = nullptr;
  std::int16_t Instruction::*number = nullptr;
};

/// One field. The `op` decides which of the member pointers are set.
struct LayoutItem {
  Op op;
  std::string_view what = {};
  std::int16_t Instruction::*number = nullptr;
  std::int32_t Instruction::*whole = nullptr;
  float Instruction::*single = nullptr;
  /// If this flag is set, the operand comes from the variable with this number.
  bool Instruction::*is_mmi = nullptr;
  std::int16_t Instruction::*variable = nullptr;
  bool Instruction::*enabled = nullptr;
};

struct LineLayout {
  std::span<const LayoutItem> items;
  std::span<const FlagBit> flags = {};
};

/// The layout of a line of this type; for MMI and FE, of the form that the record asks for. Null for a type
/// outside 0..31.
[[nodiscard]] const LineLayout* LayoutOf(const Instruction& line);

}  // namespace tavlo
