// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/program.h"

namespace tavlo::examples {

/// A version of the earlier programmer, and what the files that it wrote are read for. Which of these a
/// reader expects follows from the version as a number, so versions that lie on a boundary stand beside those
/// that come next.
struct OskelRevision {
  std::string_view version;
  /// A drive code in front, and 100 lines instead of 29, which have more items.
  bool hundred_lines = false;
  bool units = false;
  /// A second distance and speed, masks of inputs, and the free resolution.
  bool second_operands = false;
  bool menus = false;
  bool prompt_direction = false;
};
inline constexpr auto kOskelRevisions = std::to_array<OskelRevision>({
    {"1.0"},
    {"1.1"},
    {"1.19.9"},
    {"1.2", true},
    {"1.27", true},
    {"1.28", true},
    {"1.281", true, true},
    {"1.3", true, true},
    {"1.4", true, true},
    {"1.401", true, true, true},
    {"1.40.5", true, true, true},
    {"1.41", true, true, true},
    {"1.411", true, true, true, true},
    {"1.49", true, true, true, true},
    {"1.5", true, true, true, true, true},
    {"1.5.1", true, true, true, true, true},
    {"2.0", true, true, true, true, true},
    {"10.2", true, true, true, true, true},
});

/// What a file of the earlier programmer holds besides its lines.
struct OskelSettings {
  std::int16_t drive_code = 1;
  /// On a scale of 0 to 255; so is `idle_byte`.
  float current = 128;
  std::int16_t idle_byte = 64;
  /// The code of the resolution, and 128 for limit switches that open.
  std::int16_t resolution = 8;
  float jog_speed = 1;
  std::int32_t jog_accel = 100;
  std::int32_t steps_per_unit = 20000;
  std::string unit_name = "rev";
  bool use_units = true;
  std::int32_t steps_per_rev = 8000;
};

/// Returns the file that this version of the earlier programmer would have written of the program's first
/// lines. A current has no fields of its own there: it stands in `Time`, its idle option in `Count`.
[[nodiscard]] std::string WriteOskelProg(const OskelRevision& revision, const Program& program,
                                         const OskelSettings& settings);

}  // namespace tavlo::examples
