// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavlo::cli {

/// Returns the word that was most likely meant: the nearest one, with at most two letters wrong, missing,
/// added or swapped. Empty if no word is that near.
[[nodiscard]] std::string NearestWord(std::string_view typed, const std::vector<std::string>& words);

}  // namespace tavlo::cli
