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

/// A line that is not the same in a file and in a hub.
struct LineDifference {
  /// 1..200
  int line = 0;
  /// The short texts, single bytes. The same on both sides when only bytes differ.
  std::string file;
  std::string hub;
  /// The file's compiled line, and as much of the hub's slot as counts or is not zero.
  std::string file_bytes;
  std::string hub_bytes;
};

struct Comparison {
  std::vector<LineDifference> lines;
  std::vector<SettingDifference> settings;
  [[nodiscard]] bool Same() const { return lines.empty() && settings.empty(); }
};

/// Compares what a program compiled to with the 8192 bytes of a hub. The bytes decide; what stands behind the
/// end of a line in its slot and behind the end of the prompt texts is the hub's own and does not count.
/// `program` is the one that was compiled: the hub's texts are those of an upload onto it.
[[nodiscard]] Comparison CompareWithHub(const Program& program, const CompiledProgram& compiled,
                                        std::string_view image);

}  // namespace tavlo::cli
