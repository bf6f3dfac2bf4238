// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/undo.h"

#include <optional>
#include <string>

#include "commands/editing_now.h"
#include "session/edit_step.h"
#include "session/grid.h"

namespace tavlo {
namespace {

/// The program is another one now: shows all of it, and says `what` was done.
void ShowStepped(Desk& desk, std::optional<int> line, const std::string& what) {
  Source& source = desk.source;
  source.Changed = !source.history.CountsAsUnchanged();
  ShowReplaced(desk);
  TellEdited(desk);
  if (line && *line < kLines) desk.view.GoTo(*line);
  desk.view.Note(what);
}

}  // namespace

void Undo(Desk& desk) {
  Source& source = desk.source;
  if (ProgramHeld(desk) || source.history.UndoName().empty()) return;
  const std::string done = "Undone: " + std::string(source.history.UndoName()) + ".";
  ShowStepped(desk, source.history.Undo(source.program, source.file_name), done);
}

void Redo(Desk& desk) {
  Source& source = desk.source;
  if (ProgramHeld(desk) || source.history.RedoName().empty()) return;
  const std::string done = "Redone: " + std::string(source.history.RedoName()) + ".";
  ShowStepped(desk, source.history.Redo(source.program, source.file_name), done);
}

}  // namespace tavlo
