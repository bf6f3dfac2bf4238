// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/line_operations.h"

#include "model/wire.h"

namespace tavlo {

bool StringsTooLong(const Program& program, std::size_t text_length, int target_line) {
  std::size_t total = text_length + 1;
  for (int line = 0; line < kLines; ++line) {
    if (line != target_line && program.Prog[line].Type == MMI) total += program.Prog[line].Text.size() + 1;
  }
  return total + 1 > kPoolBytes;
}

}  // namespace tavlo
