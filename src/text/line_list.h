// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <vector>

namespace tavlo {

/// Returns the lines, which are 0-based, at the beginning of a sentence: "Line 12", "Lines 12, 13 and 14".
[[nodiscard]] std::string Listed(const std::vector<int>& lines);

}  // namespace tavlo
