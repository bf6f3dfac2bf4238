// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"

namespace tavlo {

/// Whether the hub's pool of prompt texts would overflow if the target line held a text of this length.
/// Counts one byte for the end of each text and one for the end of the pool.
[[nodiscard]] bool StringsTooLong(const Program& program, std::size_t text_length, int target_line);

}  // namespace tavlo
