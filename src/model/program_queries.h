// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"

namespace tavlo {

/// Whether a line has this type.
[[nodiscard]] bool ProgHas(const Program& program, int type);
/// Whether a line changes the speed of a motion under way on this axis.
[[nodiscard]] bool ProgHasCS(const Program& program, int axis);
/// Whether a line needs the operator terminal or one of its variables.
[[nodiscard]] bool ProgHasMMI(const Program& program);

}  // namespace tavlo
