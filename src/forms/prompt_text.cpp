// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/prompt_text.h"

#include <algorithm>
#include <array>

#include "model/program.h"

namespace tavlo {
namespace {

constexpr char kBlank = ' ';
constexpr char kLineFeed = '\n';
/// Lines that say in a record how they ended.
constexpr std::size_t kFlaggedLines = 3;

struct Flags {
  bool Instruction::*blank;
  bool Instruction::*wrap;
};
constexpr std::array<Flags, kFlaggedLines> kFlags = {{{&Instruction::Blank1, &Instruction::Wrap1},
                                                      {&Instruction::Blank2, &Instruction::Wrap2},
                                                      {&Instruction::Blank3, &Instruction::Wrap3}}};

std::string Filled(std::string_view text) {
  std::string line(text);
  line.resize(kPromptColumns, kBlank);
  return line;
}

std::string_view WithoutBlanksBehind(std::string_view text) {
  const std::size_t last = text.find_last_not_of(kBlank);
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// Takes so many characters and gives the rest back.
std::string_view Take(std::string_view& text, std::size_t count) {
  const std::string_view taken = text.substr(0, count);
  text.remove_prefix(taken.size());
  return taken;
}

/// The blanks between a line and the word that went to the next one.
std::size_t BlanksBefore(std::string_view line, std::string_view next) {
  const std::size_t word = std::min(next.find_first_of(" \n"), next.size());
  const std::size_t reach = line.size() + word;
  // The word must reach beyond column 20, else it would stay.
  return reach > kPromptColumns ? 1 : kPromptColumns + 1 - reach;
}

/// Whether a full line that has no flag would end at column 20 by itself.
bool EndsByItself(std::string_view line, std::string_view text_of_line, std::string_view next) {
  if (next.empty()) return true;
  const bool cuts_no_word = text_of_line.size() < line.size();
  const bool one_long_word = line.find(kBlank) == std::string_view::npos;
  return next.front() != kBlank && (cuts_no_word || one_long_word);
}

std::string AsTyped(std::string_view line, bool blank, bool wrap, std::string_view next) {
  const std::string_view text = WithoutBlanksBehind(line);
  if (line.size() < kPromptColumns) return std::string(line);
  if (blank) return std::string(line) + kBlank;
  if (wrap && text.size() < line.size() && !next.empty()) {
    return std::string(text) + std::string(BlanksBefore(text, next), kBlank);
  }
  const bool filled_up = text.size() + 1 < line.size();
  if (!filled_up && EndsByItself(line, text, next)) return std::string(line);
  return std::string(text) + kLineFeed;
}

}  // namespace

bool TakesNumber(int sub_type) {
  return sub_type == GetDistance || sub_type == GetSpeed || sub_type == GetCount;
}

int LinesForText(int sub_type) {
  return TakesNumber(sub_type) ? kPromptLines - 1 : kPromptLines;
}

DisplayLine BreakLine(std::string_view& text) {
  const std::size_t line_feed = text.find(kLineFeed);
  if (line_feed <= kPromptColumns) {
    DisplayLine line{Filled(Take(text, line_feed))};
    text.remove_prefix(1);
    return line;
  }
  if (text.size() <= kPromptColumns) return {std::string(Take(text, text.size()))};
  if (text[kPromptColumns] == kBlank) {
    DisplayLine line{std::string(Take(text, kPromptColumns)), true};
    text.remove_prefix(1);
    return line;
  }
  const std::size_t last_blank = text.rfind(kBlank, kPromptColumns - 1);
  const bool cuts_a_word = text[kPromptColumns - 1] != kBlank && last_blank != std::string_view::npos;
  if (cuts_a_word) return {Filled(Take(text, last_blank + 1)), false, true};
  return {std::string(Take(text, kPromptColumns))};
}

std::string BrokenText::Stored() const {
  std::string text;
  for (const DisplayLine& line : lines) text += line.text;
  return text;
}

BrokenText BreakText(std::string_view typed, int lines) {
  std::string text = MakeQuotesSingle(typed);
  std::erase(text, '\r');
  BrokenText broken;
  std::string_view rest = text;
  for (int line = 0; line < lines && !rest.empty(); ++line) broken.lines.push_back(BreakLine(rest));
  broken.left_over = rest.size();
  return broken;
}

std::string NoWordBreaks(const Instruction& record) {
  std::string typed;
  std::string_view rest = record.Text;
  for (const Flags& flags : kFlags) {
    const std::string_view line = Take(rest, kPromptColumns);
    typed += AsTyped(line, record.*flags.blank, record.*flags.wrap, rest);
  }
  return typed.append(rest);
}

void WriteText(Instruction& record, const BrokenText& text) {
  record.Text = text.Stored();
  for (std::size_t i = 0; i < kFlaggedLines; ++i) {
    const bool is_line = i < text.lines.size();
    record.*kFlags[i].blank = is_line && text.lines[i].blank;
    record.*kFlags[i].wrap = is_line && text.lines[i].wrap;
  }
}

}  // namespace tavlo
