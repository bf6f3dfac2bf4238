// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/clipboard.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/editing_now.h"
#include "commands/lines.h"
#include "model/kept_text.h"
#include "model/line_operations.h"
#include "model/wire.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "session/edit_step.h"
#include "text/line_list.h"
#include "text/short_desc.h"

namespace tavlo {
namespace {

constexpr int kBlanksBehindNumber = 2;

bool HasPrompts(const KeptLines& block) {
  return std::ranges::any_of(block.lines, [](const Instruction& line) { return line.Type == MMI; });
}

/// Asks before lines are lost. Empty ones are not worth a question.
bool MayBeLost(Desk& desk, const std::vector<int>& lost, int count, int at) {
  if (lost.empty()) return true;
  const std::string inserted = count == 1 ? "a new line" : Joined(count) + " new lines";
  const std::string range = lost.front() == lost.back()
                                ? "Line " + Joined(lost.front() + 1)
                                : "Lines " + Joined(lost.front() + 1) + " to " + Joined(lost.back() + 1);
  return desk.boxes.MsgBox({.text = "Insert " + inserted + " at Line " + Joined(at + 1) +
                                    "?  All steps below will be pushed down and " + range + " will be lost!",
                            .title = "Insert",
                            .buttons = Buttons::OKCancel}) == Answer::OK;
}

void TellLeadOut(Desk& desk, const std::vector<int>& lines) {
  if (lines.empty()) return;
  const std::string text = lines.size() == 1
                               ? " goes to a line outside of what was pasted.  It still goes there; "
                                 "please check it."
                               : " go to lines outside of what was pasted.  They still go there; "
                                 "please check them.";
  desk.boxes.MsgBox({.text = Listed(lines) + text, .title = "Paste", .line = lines.front()});
}

/// The block of the clipboard; nothing, and a word, if there is none.
std::optional<KeptLines> Block(Desk& desk) {
  const auto kept = desk.clipboard == nullptr ? std::nullopt : desk.clipboard->Kept();
  auto block = kept ? ReadKeptLines(*kept) : std::nullopt;
  if (!block) desk.view.Note("There are no program lines to paste.");
  return block;
}

/// Whether the block is the one that was cut last, which may then be put in as if it had been moved.
const CutOut* CutOf(const Source& source, const KeptLines& block) {
  const CutOut* cut = source.cut_out.get();
  const bool same =
      cut != nullptr && block.cut && cut->lines.first == block.first && cut->lines.lines == block.lines;
  return same ? cut : nullptr;
}

/// The program with the block in it; nothing if it cannot be, or the operator would rather keep what would be
/// lost.
std::optional<Insertion> Inserted(Desk& desk, const KeptLines& block, int line) {
  const int count = static_cast<int>(block.lines.size());
  auto insertion = InsertLines(desk.program(), block, line, CutOf(desk.source, block));
  if (!insertion) {
    const std::string lines = count == 1 ? "line" : "lines";
    desk.view.Note("There is no room for " + Joined(count) + " " + lines + " from line " + Joined(line + 1) +
                   " on.");
    return std::nullopt;
  }
  if (HasPrompts(block) && PoolSize(insertion->program) > kPoolBytes) {
    desk.boxes.MsgBox({.text = "Strings too long", .icon = Icon::Exclamation});
    return std::nullopt;
  }
  if (!MayBeLost(desk, insertion->lost, count, line)) return std::nullopt;
  return insertion;
}

}  // namespace

std::string PlainTextOf(const Program& program, LineRange range) {
  std::string text;
  for (int line = range.first; line <= range.Last(); ++line) {
    std::string row = Joined(line + 1);
    const auto desc = ShortDesc(program, line);
    if (desc && !desc->empty()) row += std::string(kBlanksBehindNumber, ' ') + ShownText(ShownCaption(*desc));
    text += row + "\n";
  }
  return text;
}

void CopyRows(Desk& desk, LineRange range) {
  if (ProgramHeld(desk) || desk.clipboard == nullptr) return;
  desk.clipboard->Put(KeptTextOf(LinesOf(desk.program(), range)), PlainTextOf(desk.program(), range));
  desk.view.Note("Copied " + Named(range) + ".");
}

void CutRows(Desk& desk, LineRange range) {
  if (ProgramHeld(desk) || desk.clipboard == nullptr) return;
  const std::string plain = PlainTextOf(desk.program(), range);
  const EditStep step(desk, "cut " + Named(range));
  auto cut = std::make_shared<const CutOut>(CutLines(desk.program(), range));
  desk.clipboard->Put(KeptTextOf(cut->lines), plain);
  desk.source.cut_out = std::move(cut);
  ShowMoved(desk);
  desk.view.Note("Cut " + Named(range) + ".");
}

void PasteRows(Desk& desk, int line) {
  if (ProgramHeld(desk)) return;
  const auto block = Block(desk);
  if (!block) return;
  auto insertion = Inserted(desk, *block, line);
  if (!insertion) return;
  {
    const int count = std::min(static_cast<int>(block->lines.size()), kLines - line);
    const EditStep step(desk, "paste " + Named({line, count}));
    // The rest belongs to the hub, which may have reported itself while a question was up.
    desk.program().Prog = std::move(insertion->program.Prog);
    desk.program().LimitBranch = insertion->program.LimitBranch;
    desk.source.cut_out.reset();
    ShowMoved(desk);
  }
  TellLeadOut(desk, insertion->lead_out);
}

}  // namespace tavlo
