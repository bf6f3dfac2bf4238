// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"

namespace tavlo {

/// What a reader changes in what a file holds.
enum class Repair : std::uint8_t {
  /// A line that follows the hand wheel of the earlier programmer became a comment.
  HandWheel,
  /// A pulse was lengthened to the shortest that there is.
  ShortPulse,
  /// A comment was cut to the characters that a line has room for.
  LongComment,
  /// An input of the drive itself got the number that it has now.
  DriveInput,
  /// A current was lowered to the highest of the drive model.
  HighCurrent,
  /// An axis that counted in steps counts in its unit.
  StepsOnly,
  /// A file that was saved while no comm port was open holds none, and reads as damaged; it got one.
  NoPort,
};

[[nodiscard]] constexpr bool IsOfAxis(Repair repair) {
  return repair == Repair::HighCurrent || repair == Repair::StepsOnly;
}

/// A change and the line or the axis in which it was made, 0-based; 0 for one of the whole file.
struct RepairMade {
  Repair repair = Repair::HandWheel;
  int index = 0;
  bool operator==(const RepairMade&) const = default;
};
using Repairs = std::vector<RepairMade>;

// The rules of both readers. Each adds what it changes to `repairs`, which may be null.

/// A line that follows the hand wheel becomes a comment; others stay.
void DropHandWheel(Program& program, int line, Repairs* repairs);
void LengthenPulse(Program& program, int line, Repairs* repairs);
void CutComment(Program& program, int line, Repairs* repairs);
/// Gives the line the drive's own first input.
void UseDriveInput(Program& program, int line, Repairs* repairs);
void LowerCurrent(Program& program, int axis, Repairs* repairs);
void CountInUnits(Program& program, int axis, Repairs* repairs);

/// Returns the text of a program file with a port where it was saved without one; nothing if it does not end
/// as such a file does. Whether it is whole then must be examined.
[[nodiscard]] std::optional<std::string> WithPort(std::string_view text);

/// Characters. Every row and every dialog of an axis shows its names, so a damaged file must not bring a long
/// one.
inline constexpr std::size_t kLongestName = 32767;
/// Drops the names of units and axes that are longer. Returns false if there was one.
[[nodiscard]] bool NamesFit(AxisConfig& axes);

}  // namespace tavlo
