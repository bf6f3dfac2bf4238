// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <string>
#include <string_view>

#include "hubsim/wire/reporter.h"

namespace tavlo::hubsim {

inline constexpr int kDisplayRows = 4;
inline constexpr int kDisplayColumns = 20;
/// The row that is kept for entries and counts.
inline constexpr int kEntryRow = kDisplayRows - 1;
using DisplayLines = std::array<std::string, kDisplayRows>;

/// What the operator terminal's display shows, as the hub believes, and the bytes that make the terminal show
/// it. A row holds at most 20 characters, all printable. It ends in no blank, unless one was just written.
class TerminalDisplay {
 public:
  explicit TerminalDisplay(Reporter& reporter) : reporter_(reporter) {}

  [[nodiscard]] const DisplayLines& Lines() const { return lines_; }

  void Clear();
  /// Clears the display and writes a text, 20 characters a row. A line feed goes to the next row, a carriage
  /// return is dropped, any other character that is not printable is shown as "?". What does not fit into the
  /// first `rows` rows is dropped.
  void Show(std::string_view text, int rows = kDisplayRows);
  /// Makes a row read `text`, cut at 20 characters. While the terminal's cursor is in the row, only the
  /// difference is sent.
  void WriteRow(int row, std::string_view text);
  /// The terminal has lost its power with the hub: the display is empty, and nothing is sent.
  void Forget();

 private:
  void GoTo(int row);
  void Append(int row, std::string_view text);

  Reporter& reporter_;
  DisplayLines lines_;
  int cursor_ = 0;  ///< row that the terminal writes to
};

}  // namespace tavlo::hubsim
