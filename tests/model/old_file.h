// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tavlo::testing {

/// One line of a file of the earlier programmer; `rest` is what stands behind number and type.
struct OldLine {
  int type;
  std::string rest;
};

inline constexpr const char* kMove29 = "20000,3,100,90,1,500,2.5,7,9,1,25,4";
inline constexpr const char* kMove12 =
    "20000,3,100,90,1,500,2.5,7,9,1,25,4,11,12,#TRUE#,#FALSE#,#TRUE#,"
    "#TRUE#,#FALSE#,#TRUE#,#FALSE#,\"old\"";

/// The text behind the version: drive code if told, so many lines like the first one given, settings.
inline std::string OldFile(const std::string& drive_code, int count, const OldLine& filler,
                           const std::vector<std::pair<int, OldLine>>& special, const std::string& settings) {
  std::string text = drive_code.empty() ? "" : drive_code + "\r\n";
  for (int i = 0; i < count; ++i) {
    OldLine line = filler;
    for (const auto& [index, other] : special) {
      if (index == i) line = other;
    }
    text += std::to_string(i) + "," + std::to_string(line.type) + "\r\n" + line.rest + "\r\n";
  }
  return text + settings + "\r\n";
}

}  // namespace tavlo::testing
