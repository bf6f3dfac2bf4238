// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "cli/simulate/speed_tracks.h"
#include "model/program.h"

namespace tavlo::cli {

/// The picture of a simulated run as a file of its own: the speed of each axis that moved over the time, a
/// track an axis, clockwise upwards; above them the lines as they ran. Black on white; where the program
/// waited for the world the ground is hatched.
[[nodiscard]] std::string SvgOf(const SpeedTracks& tracks, const Program& program);

}  // namespace tavlo::cli
