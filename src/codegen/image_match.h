// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "codegen/compile.h"

namespace tavlo {

// Whether the 8192 bytes of a hub's memory are those of a compiled program. What follows the end of a line in
// its slot and the end of the prompt texts is left over in the hub and does not count.

/// `bytes` is a compiled line.
[[nodiscard]] bool SlotHolds(std::string_view image, int line, std::string_view bytes);
/// `pool` holds the prompt texts, with their final 0x00.
[[nodiscard]] bool PoolHolds(std::string_view image, std::string_view pool);
[[nodiscard]] bool ImageHolds(std::string_view image, const CompiledProgram& compiled);

}  // namespace tavlo
