// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <vector>

#include "model/program.h"

namespace tavlo {

/// Whether a line has this type.
[[nodiscard]] bool ProgHas(const Program& program, int type);
/// Whether a line changes the speed of a motion under way on this axis.
[[nodiscard]] bool ProgHasCS(const Program& program, int axis);
/// Whether a line needs the operator terminal or one of its variables.
[[nodiscard]] bool ProgHasMMI(const Program& program);
/// Returns the axes on which a line needs a drive, 0-based; any of them may be without a slot.
[[nodiscard]] std::vector<int> AxesOf(const Program& program, const Instruction& line);

}  // namespace tavlo
