// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "forms/controls.h"
#include "motion/graph.h"

namespace tavlo::cli {

inline constexpr GraphSize kPictureSize = {640, 400, 4};

/// The picture of a velocity profile as a file of its own, black on white.
[[nodiscard]] std::string SvgOf(const GraphBox& picture);

}  // namespace tavlo::cli
