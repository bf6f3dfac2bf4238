// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/line_list.h"

namespace tavlo {

std::string Listed(const std::vector<int>& lines) {
  std::string text = lines.size() == 1 ? "Line " : "Lines ";
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) text += i + 1 == lines.size() ? " and " : ", ";
    text += std::to_string(lines[i] + 1);
  }
  return text;
}

}  // namespace tavlo
