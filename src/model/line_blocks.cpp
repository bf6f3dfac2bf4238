// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/line_blocks.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "model/kinds.h"
#include "model/line_operations.h"

namespace tavlo {
namespace {

/// Calls `act` with each line number that the operator has entered in this line.
void ForEachTarget(Instruction& record, const std::function<void(std::int16_t&)>& act) {
  // A safety branch is no branch that an insertion adjusts, but it is one that a block takes along.
  if (NamesLine(record) || LeadOf(record) == Lead::Branch) act(record.LineNum);
  if (record.Type != MMI || record.SubType != Menu) return;
  for (std::size_t key = 1; key < record.MenuKey.size(); ++key) {
    if (record.MenuKey[key]) act(record.MenuLine[key]);
  }
}

bool IsLine(int line) {
  return line >= 0 && line < kLines;
}

/// Where the lines of a block go, and the lines that they name.
struct Move {
  LineRange from;
  /// How far the lines below the block have moved up since.
  int closed_up = 0;
  int at = 0;
  int inserted = 0;

  [[nodiscard]] int Of(int target) const {
    if (from.Holds(target)) return target - from.first + at;
    if (target > from.Last()) target -= closed_up;
    return target >= at ? target + inserted : target;
  }
};

std::vector<LeadIn> LeadInsOf(const Program& program, LineRange range) {
  std::vector<LeadIn> lead_ins;
  for (int line = 0; line < kLines; ++line) {
    const Instruction& record = program.Prog[line];
    if (range.Holds(line) || !NamesLine(record) || !range.Holds(record.LineNum)) continue;
    lead_ins.push_back({line > range.Last() ? line - range.count : line, record.LineNum - range.first});
  }
  for (int line = range.first; line <= range.Last(); ++line) {
    if (program.LimitBranch == line + 1) lead_ins.push_back({std::nullopt, line - range.first});
  }
  return lead_ins;
}

void LeadBack(Program& program, const std::vector<LeadIn>& lead_ins, int at, int inserted) {
  for (const LeadIn& lead : lead_ins) {
    const int target = at + lead.offset;
    if (lead.line) {
      const int line = *lead.line >= at ? *lead.line + inserted : *lead.line;
      if (line < kLines) program.Prog[line].LineNum = static_cast<std::int16_t>(target);
    } else {
      program.LimitBranch = target + 1;
    }
  }
}

std::vector<int> LinesInUse(const Program& program, int from) {
  std::vector<int> lines;
  for (int line = from; line < kLines; ++line) {
    if (program.Prog[line].Type != NO) lines.push_back(line);
  }
  return lines;
}

}  // namespace

KeptLines LinesOf(const Program& program, LineRange range) {
  const auto first = program.Prog.begin() + range.first;
  return {.first = range.first, .cut = false, .lines = {first, first + range.count}};
}

CutOut CutLines(Program& program, LineRange range) {
  CutOut cut = {.lines = LinesOf(program, range),
                .lead_ins = LeadInsOf(program, range),
                .before = program.Prog,
                .after = {}};
  cut.lines.cut = true;
  for (int i = 0; i < range.count; ++i) DeleteLine(program, range.first);
  ScanLoops(program);
  cut.after = program.Prog;
  return cut;
}

std::optional<Insertion> InsertLines(const Program& program, const KeptLines& block, int at,
                                     const CutOut* cut) {
  const int count = static_cast<int>(block.lines.size());
  const int fitting = std::min(count, kLines - at);
  const auto in_use = [](const Instruction& record) { return record.Type != NO; };
  if (std::any_of(block.lines.begin() + fitting, block.lines.end(), in_use)) return std::nullopt;
  const bool taken_back = cut != nullptr && program.Prog == cut->before;
  const bool moves = cut != nullptr && program.Prog == cut->after;
  const Move move = {.from = {block.first, count},
                     .closed_up = block.cut && !taken_back ? count : 0,
                     .at = at,
                     .inserted = fitting};
  Insertion insertion = {
      .program = program, .lost = LinesInUse(program, std::max(at, kLines - fitting)), .lead_out = {}};
  for (int i = 0; i < fitting; ++i) InsertLine(insertion.program, at);
  for (int i = 0; i < fitting; ++i) {
    Instruction& record = insertion.program.Prog[at + i];
    record = block.lines[i];
    bool leads_out = false;
    ForEachTarget(record, [&](std::int16_t& target) {
      if (!IsLine(target)) return;
      leads_out = leads_out || !move.from.Holds(target);
      target = static_cast<std::int16_t>(move.Of(target));
    });
    if (leads_out) insertion.lead_out.push_back(at + i);
  }
  if (moves) LeadBack(insertion.program, cut->lead_ins, at, fitting);
  return insertion;
}

}  // namespace tavlo
