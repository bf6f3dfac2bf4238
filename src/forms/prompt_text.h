// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "model/instruction.h"

namespace tavlo {

// How the text of a prompt falls on the operator terminal's display. A record holds the text as it is shown,
// 20 characters to a line and blanks where a line ends early, with flags that tell how each of the first
// three lines ended, so that the text can be given back as it was typed.

inline constexpr std::size_t kPromptColumns = 20;
inline constexpr int kPromptLines = 4;

/// Whether a prompt of this `SubType` takes a number from the operator.
[[nodiscard]] bool TakesNumber(int sub_type);

/// The lines that a prompt of this `SubType` has for its text: one that takes a number keeps the fourth line
/// free for it.
[[nodiscard]] int LinesForText(int sub_type);

/// A line of the display and how it ended.
struct DisplayLine {
  std::string text;
  /// The blank at column 21 was dropped.
  bool blank = false;
  /// The last word moved to the next line, and blanks stand in its place.
  bool wrap = false;
};

/// Takes the next line off the text. The last line is not filled up with blanks.
[[nodiscard]] DisplayLine BreakLine(std::string_view& text);

/// A typed text on the display.
struct BrokenText {
  std::vector<DisplayLine> lines;
  /// Characters that have no room.
  std::size_t left_over = 0;

  /// What a record holds.
  [[nodiscard]] std::string Stored() const;
};
/// A double quote becomes a single one, a carriage return is dropped.
[[nodiscard]] BrokenText BreakText(std::string_view typed, int lines);

/// The opposite of BreakText(): a text that falls on the display as the record says. It has one blank where a
/// word went to the next line, or as many as it takes that it goes there again, and a line feed behind a line
/// that was filled up for no word.
[[nodiscard]] std::string NoWordBreaks(const Instruction& record);

/// Puts the text and its six flags into the record.
void WriteText(Instruction& record, const BrokenText& text);

}  // namespace tavlo
