// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <vector>

#include "hubsim/terminal/display.h"

namespace tavlo::testing {

/// What passed over the line at one moment, and how the hub was then.
struct JournalEntry {
  double at = 0;
  bool to_hub = false;
  std::string bytes;
  /// It asked for digits when it took the bytes.
  bool asks_for_digits = false;
  /// What it believes its display to show when it said them.
  hubsim::DisplayLines display;
};

/// A row that the log must have: its time, and the rest of it.
struct ExpectedRow {
  double seconds;
  std::string rest;
};

/// Reads the journal of one run, byte by byte, into the rows that its log must have. `texts` are those of the
/// lines. The hub has the drives 20, 40 and 11 on its first three axes, and no others.
[[nodiscard]] std::vector<ExpectedRow> RowsOfJournal(const std::vector<JournalEntry>& journal,
                                                     const std::vector<std::string>& texts);

}  // namespace tavlo::testing
