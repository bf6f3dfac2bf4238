// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/file_items.h"
#include "model/program.h"

namespace tavlo {

/// The version of this program, which is also the revision of the files it writes.
struct Version {
  int major;
  int minor;
  int revision;
};
inline constexpr Version kVersion = {1, 29, 1};

/// "1.29.1", or "1.29" when the revision is 0.
[[nodiscard]] std::string VersionTextOf(Version version);

/// The revision of a file from its version text. A point is looked for from the third character on;
/// what follows it becomes two digits: "1.29.1" gives 1.2901, "1.21.12" gives 1.2112.
[[nodiscard]] float ParseRevision(std::string_view text);

/// A program file is never larger than a few hundred kilobytes; of a larger one no more is read.
inline constexpr std::size_t kLargestProgramFile = 16u << 20;

/// The text of a program file. `port` is the index 0..7 of the port that is chosen on screen; with none
/// the port record is left out, and the file then reads as damaged.
[[nodiscard]] std::string WriteHubProg(const Program& program, std::optional<int> port);

/// Items at the end of a whole file that are not read: its revision lies on a boundary and falls below it.
[[nodiscard]] int UnreadItems(float r);

/// Reads what stands behind the version text into the program, by the rules of revision `r`. Visits the
/// whole table whatever it meets; gives false if any item was bad. The port record is dropped: a file
/// never moves the port. Does not run `ScanLoops`.
[[nodiscard]] bool LoadHubProg(ItemReader& items, float r, Program& program);

}  // namespace tavlo
