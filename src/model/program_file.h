// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/file_items.h"
#include "model/file_repairs.h"
#include "model/program.h"

namespace tavlo {

/// The version of this program, which is also the revision of the files it writes.
struct Version {
  int major;
  int minor;
  int revision;
};
inline constexpr Version kVersion = {1, 29, 1};

/// Returns "1.29.1", or "1.29" if the revision is 0.
[[nodiscard]] std::string VersionTextOf(Version version);

/// Returns the revision of a file with this version text. Looks for a point from the third character on; what
/// follows it becomes two digits: "1.29.1" is 1.2901, "1.21.12" is 1.2112.
[[nodiscard]] float ParseRevision(std::string_view text);

/// Bytes. A program file is never larger than a few hundred kilobytes; no more than this is read of a file.
inline constexpr std::size_t kLargestProgramFile = 16u << 20;

/// Returns the text of a program file. `port` is the index 0..7 of the port chosen on the screen. Without
/// one, the port record is left out, and the file then reads as damaged.
[[nodiscard]] std::string WriteHubProg(const Program& program, std::optional<int> port);

/// Returns the lines 0..199 that test inputs of the drive itself (X) among several. A program file has no
/// place for these inputs, so whoever writes one must say so.
[[nodiscard]] std::vector<int> LinesNotWhollyInFile(const Program& program);

/// How many items at the end of a whole file are not read, because its revision lies on a boundary and counts
/// as older than it is.
[[nodiscard]] int UnreadItems(float r);

/// Reads what follows the version text into the program, by the rules of revision `r`. Always goes through
/// the whole table; returns false if any item was bad. The port record is dropped: a file never changes the
/// port. Does not run `ScanLoops`. What it changes in what the file holds is added to `repairs`.
[[nodiscard]] bool LoadHubProg(ItemReader& items, float r, Program& program, Repairs* repairs = nullptr);

}  // namespace tavlo
