// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"
#include "text/long_desc.h"

namespace tavlo {

/// A program line that prints something.
struct ListedLine {
  /// As the operator counts.
  int line = 0;
  std::vector<LongRow> rows;
};

/// A program as it is listed on paper. Texts are single bytes as in the program, but for the file's name in
/// the heading, which is as it came.
struct Listing {
  std::vector<std::string> heading;
  /// What stands above the paragraphs of the hardware.
  std::string hardware_heading;
  /// A paragraph for each axis that has a drive.
  std::vector<std::string> hardware;
  /// The body of a Repeat stands two columns further right.
  std::vector<ListedLine> lines;
};

/// `file_name` is the name of the program's file, or "untitled".
[[nodiscard]] Listing MakeListing(const Program& program, std::string_view file_name);

}  // namespace tavlo
