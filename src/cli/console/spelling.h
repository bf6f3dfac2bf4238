// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavlo::cli {

/// The one of these words that was most likely meant: at most two letters are wrong, missing, too many or the
/// other way about. Empty if none is that near.
[[nodiscard]] std::string NearestWord(std::string_view typed, const std::vector<std::string>& words);

}  // namespace tavlo::cli
