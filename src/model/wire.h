// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>

#include "model/instruction.h"

namespace tavlo {

// The sizes and units of the hub's memory and of the wire. They stand here because entries and files are
// limited to what can be sent.

/// A line's place in the hub's memory.
inline constexpr int kSlotBytes = 32;
/// The axis settings: a block for each axis.
inline constexpr int kAxisBlockBytes = 32;
inline constexpr int kSystemBytes = 256;
inline constexpr std::size_t kUnitNameBytes = 4;
inline constexpr std::size_t kAxisNameBytes = 8;
/// Of the free one.
inline constexpr int kMostStepsPerRev = 65535;
/// The pool of prompt texts, its final 0x00 included.
inline constexpr int kPoolBytes = 1536;
/// The memory holds the lines, the axis settings and the pool, in this order.
inline constexpr std::size_t kSystemAt = std::size_t{kLines} * kSlotBytes;
inline constexpr std::size_t kPoolAt = kSystemAt + kSystemBytes;
inline constexpr int kImageBytes = kLines * kSlotBytes + kSystemBytes + kPoolBytes;

/// The first byte of a line is its type and two flags.
inline constexpr int kTypeMask = 63;
inline constexpr int kProceedBit = 64;
inline constexpr int kWaitThisBit = 128;

/// Ends a text in a slot or in the pool.
inline constexpr char kEndMark = '\xFF';
/// A comment with this many characters fills its slot and has no end mark.
inline constexpr std::size_t kLongestComment = 27;
/// A knob line holds this many characters of its text itself; a shorter text needs no pool.
inline constexpr std::size_t kKnobHead = 11;

/// 1/40 rev/s: the unit of a speed on the wire, and one step of a speed's slider.
inline constexpr double kSpeedUnits = 40;

/// Milliseconds. A shorter pulse in a program file is read as this.
inline constexpr int kShortestPulse = 5;
/// A pulse on the wire is counted in ticks, without those that the hub adds itself.
inline constexpr double kTicksPerMs = 12.8;
inline constexpr int kTicksOfTheHub = 44;

/// The input number that stands for the encoder index of an old servo.
inline constexpr int kServoIndexInput = 255;
/// Above this firmware, the lines that test several inputs carry a drive's own inputs.
inline constexpr float kDriveInputsFirmware = 1.08F;

}  // namespace tavlo
