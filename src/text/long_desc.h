// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/program.h"

namespace tavlo {

/// A row of a line's long text.
struct LongRow {
  /// The operator's number of the line, at the head of its first row. The rows below it go on from there.
  std::optional<int> number;
  /// The column of the whole line; rows without a number stand further right.
  int indent = 0;
  std::string text;
  bool operator==(const LongRow&) const = default;
};

/// Returns the row as it prints with letters of one width. Its text begins where the row's tab is, or one
/// blank behind a number that reaches as far.
[[nodiscard]] std::string AsPrinted(const LongRow& row);

/// Returns a program line in full, in the operator's words, a row or several. Returns no rows for an empty
/// line, the hub's code for the menu and any type that does not exist.
[[nodiscard]] std::vector<LongRow> PrintLine(const Program& program, int indent, int line);

/// The same for a line of the two moves with a second clause, FLSO and FLCS, whatever its type says.
[[nodiscard]] std::vector<LongRow> PrintFLSO(const Program& program, int indent, int line);
[[nodiscard]] std::vector<LongRow> PrintFLCS(const Program& program, int indent, int line);

[[nodiscard]] std::string MultiIfLong(const Program& program, int line);
[[nodiscard]] std::string MultiWaitLong(const Program& program, int line);

}  // namespace tavlo
