// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"

namespace tavlo::bench {

/// 200 lines of mixed kinds whose prompts fill the hub's pool of 1536 bytes to the last.
[[nodiscard]] Program FullProgram();

}  // namespace tavlo::bench
