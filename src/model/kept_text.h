// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"

namespace tavlo {

// Programs and lines as texts that lose nothing, for this program alone: what is kept for the case of a
// crash, and what the clipboard holds. A program file has no place for some of their fields. A text ends with
// a sum, so that half of one is told from a whole one. Each reader returns nothing for a text that it cannot
// read whole.

/// Bytes. No kept text is longer.
inline constexpr std::size_t kLargestKeptText = 1u << 20;

/// Ends a text with its sum.
[[nodiscard]] std::string WithSum(std::string text);

/// A session's program, and what is known about it.
struct KeptProgram {
  Program program;
  std::string file_name;
  /// When it was kept, in seconds since 1970.
  std::int64_t time = 0;
  /// The program differs from what a file holds.
  bool unsaved = true;
  /// A program was running on the hub.
  bool running = false;
};
[[nodiscard]] std::string KeptTextOf(const KeptProgram& kept);
[[nodiscard]] std::optional<KeptProgram> ReadKeptProgram(std::string_view text);

/// Lines that stood below each other.
struct KeptLines {
  /// Where the first of them stood, 0..199.
  int first = 0;
  /// They were taken out there: the lines below have moved up since.
  bool cut = false;
  std::vector<Instruction> lines;
};
[[nodiscard]] std::string KeptTextOf(const KeptLines& kept);
[[nodiscard]] std::optional<KeptLines> ReadKeptLines(std::string_view text);

}  // namespace tavlo
