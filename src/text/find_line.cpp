// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/find_line.h"

#include <algorithm>
#include <string>

#include "text/short_desc.h"

namespace tavlo {
namespace {

/// A letter of Latin-1 in lower case. The signs for times and divided by stand among the letters.
char Lower(char c) {
  constexpr unsigned kToLower = 0x20;
  constexpr unsigned kTimes = 0xD7;
  const auto code = static_cast<unsigned char>(c);
  const bool upper = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != kTimes);
  return upper ? static_cast<char>(code + kToLower) : c;
}

/// Without regard to case, and to where a line ends on the display.
std::string Folded(std::string_view text) {
  std::string folded(text);
  std::ranges::transform(folded, folded.begin(), [](char c) { return c == '\n' ? ' ' : Lower(c); });
  return folded;
}

bool Shows(const Program& program, int line, const std::string& words) {
  const Instruction& record = program.Prog[line];
  const bool has_text = record.Type == CM || record.Type == MMI;
  if (has_text && Folded(record.Text).find(words) != std::string::npos) return true;
  const auto desc = ShortDesc(program, line);
  return desc && Folded(ShownCaption(*desc)).find(words) != std::string::npos;
}

}  // namespace

std::optional<FoundLine> FindLine(const Program& program, std::string_view words, int from, SearchWay way) {
  if (words.empty()) return std::nullopt;
  const std::string folded = Folded(words);
  const int step = way == SearchWay::Down ? 1 : kLines - 1;
  for (int i = 0; i < kLines; ++i) {
    const int line = (from + i * step) % kLines;
    const bool wrapped = way == SearchWay::Down ? line < from : line > from;
    if (Shows(program, line, folded)) return FoundLine{line, wrapped};
  }
  return std::nullopt;
}

}  // namespace tavlo
