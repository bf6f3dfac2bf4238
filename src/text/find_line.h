// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string_view>

#include "model/program.h"

namespace tavlo {

struct FoundLine {
  int line = 0;
  /// The search has passed the end of the program, or its beginning.
  bool wrapped = false;
};

enum class SearchWay { Down, Up };

/// Finds the next line that shows these words: in its short text as the row shows it, or in the text of a
/// comment or a prompt. Upper and lower case count as the same letter. Begins with the line `from`, 0..199,
/// itself and goes round once. Returns nothing if no line has them, or there are none.
[[nodiscard]] std::optional<FoundLine> FindLine(const Program& program, std::string_view words, int from,
                                                SearchWay way);

}  // namespace tavlo
