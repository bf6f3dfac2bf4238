// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/lines.h"

#include <algorithm>
#include <optional>
#include <string>

#include "commands/editing_now.h"
#include "model/line_operations.h"
#include "platform/number_format.h"
#include "session/edit_step.h"
#include "session/grid.h"

namespace tavlo {

std::string Named(LineRange range) {
  if (range.count == 1) return "line " + Joined(range.first + 1);
  return "lines " + Joined(range.first + 1) + " to " + Joined(range.Last() + 1);
}

namespace {

std::string Named(int line) {
  return tavlo::Named(LineRange{line, 1});
}

}  // namespace

void CopyInst(Desk& desk, int source_line, int target_line) {
  Program& program = desk.program();
  const Instruction& from = program.Prog[source_line];
  if (from.Type == MMI && StringsTooLong(program, from.Text.size(), target_line)) {
    desk.boxes.MsgBox({.text = "Strings too long", .icon = Icon::Exclamation});
    return;
  }
  const EditStep step(desk, "copy " + Named(source_line) + " to " + Named(target_line));
  program.Prog[target_line] = from;
  desk.source.Changed = true;
  SetIcon(desk.grid(), target_line);
  ShowDesc(desk.grid(), target_line);
  ScanLoops(program);
  DrawArrows(desk.grid());
}

namespace {

/// The kinds that are their whole line.
bool HasNothingToEdit(int type) {
  return type == ER || type == NO || type == RT;
}

bool Asked(Desk& desk, const std::string& title, const std::string& question) {
  return desk.boxes.MsgBox({.text = question, .title = title, .buttons = Buttons::OKCancel}) == Answer::OK;
}

bool AnyInUse(const Program& program, LineRange range) {
  const auto first = program.Prog.begin() + range.first;
  return std::any_of(first, first + range.count, [](const Instruction& line) { return line.Type != NO; });
}

}  // namespace

void ShowMoved(Desk& desk) {
  desk.source.Changed = true;
  desk.source.shown.LimitLine = LimitLineOf(desk.program());
  ShowProgram(desk);
  desk.view.LimitChanged();
}

bool InsertRow(Desk& desk, int line) {
  if (desk.program().Prog[kLines - 1].Type != NO &&
      !Asked(desk, "Insert",
             "Insert a new line at Line " + Joined(line + 1) +
                 "?  All steps below will be pushed down and Line 200 will be lost!")) {
    return false;
  }
  const EditStep step(desk, "insert " + Named(line));
  InsertLine(desk.program(), line);
  ShowMoved(desk);
  return true;
}

bool DeleteRows(Desk& desk, LineRange range) {
  const bool in_use = AnyInUse(desk.program(), range);
  if (in_use && !Asked(desk, "Delete", "Delete program " + Named(range) + "?")) return false;
  const EditStep step(desk, "delete " + Named(range));
  for (int i = 0; i < range.count; ++i) DeleteLine(desk.program(), range.first);
  ShowMoved(desk);
  return true;
}

namespace {

/// The row's text and icon, and what other rows show of where it leads.
void ShowEdited(Desk& desk, int line) {
  ShowDesc(desk.grid(), line);
  SetIcon(desk.grid(), line);
  ScanLoops(desk.program());
  DrawArrows(desk.grid());
  MarkChains(desk.grid());
}

/// Makes `CurLine` a line of this kind and has it edited. Cancel takes the kind back.
void PutKind(Desk& desk, int type) {
  const EditStep step(desk, "edit " + Named(desk.source.CurLine));
  Instruction& record = desk.program().Prog[desk.source.CurLine];
  const Instruction before = record;
  record.Type = static_cast<std::int16_t>(type);
  if (HasNothingToEdit(type) || desk.editors->Edit(desk.program(), desk.source.CurLine, DialogPage::AsLeft)) {
    desk.source.Changed = true;
  } else {
    record = before;
  }
}

void PickProg(Desk& desk) {
  std::optional<int> kind;
  desk.editors->ShowPickProg(desk.source.CurLine, [&](const Picked& picked) {
    switch (picked.what) {
      case Picked::What::Insert: return InsertRow(desk, desk.source.CurLine);
      case Picked::What::Delete: return DeleteRows(desk, {desk.source.CurLine, 1});
      case Picked::What::Kind: kind = picked.type; return true;
    }
    return true;
  });
  if (kind) PutKind(desk, *kind);
}

/// A row was clicked: its line is picked, or with Shift edited at once.
void ClickRow(Desk& desk, int line, bool shift) {
  desk.source.CurLine = static_cast<std::int16_t>(line);
  if (desk.editors == nullptr) return;
  if (shift) return ShowInstDialog(desk);
  {
    const EditingNow editing(desk.source);
    ShowPicked(desk.grid(), line);
    PickProg(desk);
  }
  ShowEdited(desk, line);
}

}  // namespace

void ShowInstDialog(Desk& desk, DialogPage page) {
  const int line = desk.source.CurLine;
  if (desk.source.link.Busy || desk.editors == nullptr) return;
  {
    const EditingNow editing(desk.source);
    const EditStep step(desk, "edit " + Named(line));
    ShowPicked(desk.grid(), line);
    if (desk.editors->Edit(desk.program(), line, page)) desk.source.Changed = true;
  }
  ShowEdited(desk, line);
}

void DropIcon(Desk& desk, int source_line, int target_line, bool shift) {
  const auto is_line = [](int line) { return line >= 0 && line < kLines; };
  if (ProgramHeld(desk)) return;
  if (!is_line(source_line) || !is_line(target_line)) return;
  if (source_line == target_line) return ClickRow(desk, target_line, shift);
  if (desk.program().Prog[target_line].Type != NO) {
    const std::string question = "Do you want to copy program line " + Joined(source_line + 1) + " to line " +
                                 Joined(target_line + 1) + "?";
    if (!Asked(desk, "Copy Program Line", question)) return;
    CopyInst(desk, source_line, target_line);
    return;
  }
  CopyInst(desk, source_line, target_line);
  MarkChains(desk.grid());
}

}  // namespace tavlo
