// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/line_operations.h"

#include <limits>

#include "model/kinds.h"
#include "model/wire.h"

namespace tavlo {
namespace {

std::size_t BytesInPool(std::size_t text_length) {
  return text_length + 1;
}

std::size_t PoolSizeWithout(const Program& program, int left_out) {
  std::size_t total = 1;
  for (int line = 0; line < kLines; ++line) {
    if (line != left_out && program.Prog[line].Type == MMI) {
      total += BytesInPool(program.Prog[line].Text.size());
    }
  }
  return total;
}

}  // namespace

std::size_t PoolSize(const Program& program) {
  constexpr int kNone = -1;
  return PoolSizeWithout(program, kNone);
}

namespace {

/// Moves the lines that are named, from this one on.
void MoveNamed(Program& program, int from, int by) {
  constexpr int kHighest = std::numeric_limits<std::int16_t>::max();
  for (int line = 0; line < kLines; ++line) {
    Instruction& record = program.Prog[line];
    if (!NamesLine(record) || record.LineNum < from || record.LineNum + by > kHighest) continue;
    record.LineNum = static_cast<std::int16_t>(record.LineNum + by);
  }
}

}  // namespace

bool StringsTooLong(const Program& program, std::size_t text_length, int target_line) {
  return PoolSizeWithout(program, target_line) + BytesInPool(text_length) > kPoolBytes;
}

void InsertLine(Program& program, int line) {
  MoveNamed(program, line, 1);
  for (int i = kLines - 1; i > line; --i) program.Prog[i] = program.Prog[i - 1];
  program.Prog[line].Type = NO;
  // The branch counts from 1 and the line from 0, so a branch to the line itself stays with the new one.
  if (program.LimitBranch > line && program.LimitBranch <= kLines - 1) ++program.LimitBranch;
}

void DeleteLine(Program& program, int line) {
  MoveNamed(program, line + 1, -1);
  for (int i = line; i < kLines - 1; ++i) program.Prog[i] = program.Prog[i + 1];
  program.Prog[kLines - 1].Type = NO;
  if (program.LimitBranch > line + 1 && program.LimitBranch > 1) --program.LimitBranch;
}

}  // namespace tavlo
