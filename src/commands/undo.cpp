// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/undo.h"

#include <optional>

#include "commands/editing_now.h"
#include "session/edit_step.h"
#include "session/grid.h"

namespace tavlo {
namespace {

/// The program is another one now: shows all of it.
void ShowStepped(Desk& desk, std::optional<int> line) {
  Source& source = desk.source;
  source.Changed = !source.history.CountsAsUnchanged();
  ShowReplaced(desk);
  TellEdited(desk);
  if (line && *line < kLines) desk.view.GoTo(*line);
}

}  // namespace

void Undo(Desk& desk) {
  Source& source = desk.source;
  if (ProgramHeld(desk) || source.history.UndoName().empty()) return;
  ShowStepped(desk, source.history.Undo(source.program, source.file_name));
}

void Redo(Desk& desk) {
  Source& source = desk.source;
  if (ProgramHeld(desk) || source.history.RedoName().empty()) return;
  ShowStepped(desk, source.history.Redo(source.program, source.file_name));
}

}  // namespace tavlo
