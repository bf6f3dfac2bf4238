// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/terminal/display.h"

#include <algorithm>

namespace tavlo::hubsim {
namespace {

constexpr std::string_view kClearDisplay = "\x1B\x45";
constexpr std::string_view kClearRow = "\x1BK";
constexpr std::string_view kBackspace = "\b";
constexpr std::size_t kColumns = kDisplayColumns;

bool Printable(char character) {
  return character >= ' ' && character <= '~';
}

/// The text cell by cell: no control characters, each line feed made into blanks up to the row's end.
std::string Cells(std::string_view text, std::size_t most) {
  std::string cells;
  for (const char character : text) {
    if (cells.size() >= most) break;
    if (character == '\r') continue;
    if (character == '\n') {
      cells.resize(cells.size() / kColumns * kColumns + kColumns, ' ');
    } else {
      cells += Printable(character) ? character : '?';
    }
  }
  cells.resize(std::min(cells.size(), most));
  return cells;
}

std::string_view WithoutBlanksBehind(std::string_view row) {
  return row.substr(0, row.find_last_not_of(' ') + 1);
}

}  // namespace

void TerminalDisplay::Forget() {
  lines_ = {};
  cursor_ = 0;
}

void TerminalDisplay::Clear() {
  Forget();
  reporter_.Text(kClearDisplay);
}

void TerminalDisplay::Show(std::string_view text, int rows) {
  const std::string cells = Cells(text, static_cast<std::size_t>(rows) * kColumns);
  Clear();
  for (std::size_t at = 0; at < cells.size(); at += kColumns) {
    WriteRow(static_cast<int>(at / kColumns),
             WithoutBlanksBehind(std::string_view(cells).substr(at, kColumns)));
  }
}

void TerminalDisplay::WriteRow(int row, std::string_view text) {
  text = text.substr(0, kColumns);
  std::string& line = lines_[static_cast<std::size_t>(row)];
  if (text == line) return;
  const bool here = cursor_ == row;
  if (here && line.size() == text.size() + 1 && line.starts_with(text)) {
    line.pop_back();
    reporter_.Text(kBackspace);
    return;
  }
  if (!here) GoTo(row);
  if (!text.starts_with(line)) {
    line.clear();
    reporter_.Text(kClearRow);
  }
  Append(row, text.substr(line.size()));
}

void TerminalDisplay::GoTo(int row) {
  const char bytes[] = {'\x1B', 'Y', static_cast<char>(' ' + row), ' '};
  reporter_.Text({bytes, sizeof bytes});
  cursor_ = row;
}

/// After its twentieth character the terminal goes to the next row by itself, but not from the last one.
void TerminalDisplay::Append(int row, std::string_view text) {
  std::string& line = lines_[static_cast<std::size_t>(row)];
  line += text;
  reporter_.Text(text);
  if (line.size() >= kColumns && row < kDisplayRows - 1) cursor_ = row + 1;
}

}  // namespace tavlo::hubsim
