// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/kept_text.h"
#include "model/program.h"

namespace tavlo {

/// Lines that stand below each other, all of them among 0..199.
struct LineRange {
  int first = 0;
  int count = 1;
  [[nodiscard]] int Last() const { return first + count - 1; }
  [[nodiscard]] bool Holds(int line) const { return line >= first && line <= Last(); }
  bool operator==(const LineRange&) const = default;
};

/// Returns the lines as they stand, and where that is.
[[nodiscard]] KeptLines LinesOf(const Program& program, LineRange range);

/// A line outside of a block that led into it, and the line of the block that it named. `line` is where it
/// stands once the block is out; nothing for the branch of a limit.
struct LeadIn {
  std::optional<int> line;
  int offset = 0;
};

/// Lines that were taken out, and what it takes to put them in again as if they had only been moved.
struct CutOut {
  KeptLines lines;
  std::vector<LeadIn> lead_ins;
  /// The program's lines with them and without them.
  std::array<Instruction, kLines + 1> before;
  std::array<Instruction, kLines + 1> after;
};

/// Takes the lines out, as DeleteLine() does one by one, and pairs the loops.
CutOut CutLines(Program& program, LineRange range);

/// What InsertLines() would do, or has done.
struct Insertion {
  Program program;
  /// The lines in use that are pushed off the end, as they are numbered before.
  std::vector<int> lost;
  /// The inserted lines that name a line outside of the block, as they are numbered after.
  std::vector<int> lead_out;
};

/// Returns the program with the block put in at this line, as InsertLine() does it one by one. What stands
/// from there on is pushed down. Empty lines at the end of the block are left out if they have no place;
/// nothing is returned if lines in use have none.
///
/// What the lines of the block name moves along with them if it is in the block. Otherwise it is the line
/// that they named, which may have moved by the cut and by the insertion. A line number that does not exist
/// stays. With `cut`, whose lines these are, what led into the block leads there again.
[[nodiscard]] std::optional<Insertion> InsertLines(const Program& program, const KeptLines& block, int at,
                                                   const CutOut* cut = nullptr);

}  // namespace tavlo
