// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/desk/settings_fields.h"
#include "codegen/compile.h"
#include "model/program.h"

namespace tavlo::cli {

/// A line that differs between a file and a hub.
struct LineDifference {
  /// 1..200
  int line = 0;
  /// The short texts of both, single bytes. They are the same if only bytes differ.
  std::string file;
  std::string hub;
  /// The file's compiled line, and the hub's slot up to the last byte that counts or is not zero.
  std::string file_bytes;
  std::string hub_bytes;
};

struct Comparison {
  std::vector<LineDifference> lines;
  std::vector<SettingDifference> settings;
  [[nodiscard]] bool Same() const { return lines.empty() && settings.empty(); }
  /// Returns how much differs, as a sentence without its stop.
  [[nodiscard]] std::string InWords() const;
};

/// Compares a compiled program with the 8192 bytes of a hub. The bytes decide. What follows the end of a line
/// in its slot and the end of the prompt texts is left over in the hub and does not count. `program` is the
/// one that was compiled: the hub's texts are made by decoding its bytes onto a copy of it.
[[nodiscard]] Comparison CompareWithHub(const Program& program, const CompiledProgram& compiled,
                                        std::string_view image);

}  // namespace tavlo::cli
