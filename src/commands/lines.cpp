// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/lines.h"

#include "model/line_operations.h"
#include "platform/number_format.h"
#include "session/grid.h"

namespace tavlo {

void CopyInst(Desk& desk, int source_line, int target_line) {
  Program& program = desk.program();
  const Instruction& from = program.Prog[source_line];
  if (from.Type == MMI && StringsTooLong(program, from.Text.size(), target_line)) {
    desk.boxes.MsgBox({.text = "Strings too long", .icon = Icon::Exclamation});
    return;
  }
  program.Prog[target_line] = from;
  desk.source.Changed = true;
  SetIcon(desk.grid(), target_line);
  ShowDesc(desk.grid(), target_line);
  ScanLoops(program);
  DrawArrows(desk.grid());
}

void DropIcon(Desk& desk, int source_line, int target_line, bool shift) {
  const auto is_line = [](int line) { return line >= 0 && line < kLines; };
  // Under a transfer or a run the program stays what the hub was given.
  if (desk.source.link.Busy || desk.run.Active() != RunWindow::None) return;
  if (!is_line(source_line) || !is_line(target_line)) return;
  if (source_line == target_line) {
    desk.source.CurLine = static_cast<std::int16_t>(target_line);
    if (desk.editors == nullptr) return;
    ShowPicked(desk.grid(), target_line);
    if (shift) {
      desk.editors->ShowInstDialog();
      ShowDesc(desk.grid(), desk.source.CurLine);
      ScanLoops(desk.program());
      DrawArrows(desk.grid());
      MarkChains(desk.grid());
    } else {
      desk.editors->ShowPickProg();
    }
    SetIcon(desk.grid(), desk.source.CurLine);
    return;
  }
  if (desk.program().Prog[target_line].Type != NO) {
    const std::string question = "Do you want to copy program line " + Joined(source_line + 1) + " to line " +
                                 Joined(target_line + 1) + "?";
    const Answer answer =
        desk.boxes.MsgBox({.text = question, .title = "Copy Program Line", .buttons = Buttons::OKCancel});
    if (answer != Answer::OK) return;
    CopyInst(desk, source_line, target_line);
    return;
  }
  CopyInst(desk, source_line, target_line);
  MarkChains(desk.grid());
}

}  // namespace tavlo
