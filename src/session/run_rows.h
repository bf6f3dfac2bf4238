// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/run_log.h"

namespace tavlo {

/// The columns of a run's log, in the window and as CSV.
enum class RunColumn { Time, Event, Line, Axis, What, Value };
inline constexpr std::array<std::string_view, 6> kRunColumns = {"time_s", "event", "line",
                                                                "axis",   "what",  "value"};

/// A row of the log, in UTF-8: an event as texts. Lines and axes count from 1.
struct RunRow {
  std::array<std::string, kRunColumns.size()> cells;

  [[nodiscard]] const std::string& operator[](RunColumn column) const {
    return cells[static_cast<std::size_t>(column)];
  }
  [[nodiscard]] std::string& operator[](RunColumn column) { return cells[static_cast<std::size_t>(column)]; }
  bool operator==(const RunRow&) const = default;
};

/// The row of an event that the log still holds.
[[nodiscard]] RunRow RowOf(const RunLog& log, std::uint64_t number);
/// The rows before the first event: that of the begin, and one that counts the events that are missing, if
/// any are.
[[nodiscard]] std::vector<RunRow> HeadOf(const RunLog& log);

/// Returns the row as CSV: fields are quoted where they must be, and the line ends in CR and LF. A text that
/// a spreadsheet would take for a formula, because it begins with = + - @ or a tab, gets an apostrophe in
/// front, as does one that begins with an apostrophe.
[[nodiscard]] std::string CsvOf(const RunRow& row);
/// Returns the line that names the columns.
[[nodiscard]] std::string CsvHeader();
/// Returns the whole log as CSV, with that line.
[[nodiscard]] std::string CsvOf(const RunLog& log);

/// Reads what CsvOf() made, whatever has happened to it: a last line that is torn is left out. Returns
/// nothing if it does not begin as a log does.
[[nodiscard]] std::optional<std::vector<RunRow>> ReadRunRows(std::string_view csv);

}  // namespace tavlo
