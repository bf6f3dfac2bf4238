// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/program.h"

namespace tavlo {

/// Something that lines use, and the lines, as the operator counts them.
struct UseRow {
  std::string name;
  std::vector<int> lines;
  /// Of a variable: those of the lines that give it its value.
  std::vector<int> filled_by = {};
};

/// A way from one line to another that is not the next.
struct JumpRow {
  /// Nothing for a limit switch, which may be hit at any line.
  std::optional<int> from;
  std::string how;
  /// As the operator counts; may be a line that does not exist.
  int to = 0;
};

/// Who uses what in a program, and who jumps where.
struct CrossReference {
  std::vector<UseRow> inputs;
  std::vector<UseRow> outputs;
  std::vector<UseRow> variables;
  std::vector<UseRow> axes;
  /// In the order of the lines they start from, that of a limit switch first.
  std::vector<JumpRow> jumps;
};

[[nodiscard]] CrossReference MakeCrossReference(const Program& program);

/// A part of it in words.
struct ReferenceSection {
  std::string heading;
  std::vector<std::string> rows;
};

/// Returns the parts in which there is something to tell.
[[nodiscard]] std::vector<ReferenceSection> SectionsOf(const CrossReference& reference);

}  // namespace tavlo
