// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"

namespace tavlo {

/// Some line is of this type.
[[nodiscard]] bool ProgHas(const Program& program, int type);
/// Some line changes the speed of a started motion on this axis.
[[nodiscard]] bool ProgHasCS(const Program& program, int axis);
/// Some line needs the operator terminal or one of its variables.
[[nodiscard]] bool ProgHasMMI(const Program& program);

}  // namespace tavlo
