// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

// What the rows of the main window show, and what a running program paints on them. Each writes
// `RowsState` and tells the view which rows to paint again.

/// The one rule for a row at rest: the branch target of a limit, or normal.
[[nodiscard]] RowState RestState(const Program& program, int line);

/// The row's text and resting background.
void ShowDesc(const Grid& grid, int line);
void ShowAllDescs(const Grid& grid);
/// The icon of the line's kind, from the cyan set on the branch target.
void SetIcon(const Grid& grid, int line);
/// Only the background, at rest.
void RestoreDesc(const Grid& grid, int line);
/// The line is picked for change.
void ShowPicked(const Grid& grid, int line);

void DrawArrows(const Grid& grid);
void MarkChains(const Grid& grid);
/// All of them anew, as after a program that was replaced: loops are paired first.
void ShowProgram(Desk& desk);
/// The axis summary.
void ShowDrive(ProgramView& view);
/// The hub's model is this index of `ModelList` now. The program does not count as changed by that.
void SelectModel(Desk& desk, int index);

/// A row of the axis summary: name, model or "none", current such as "1.0A"; all empty for an axis that
/// the hub does not have.
struct DriveDesc {
  std::string name;
  std::string model;
  std::string current;
};
[[nodiscard]] DriveDesc DriveDescOf(const Program& program, int axis);

// Lines outside 0..199 paint nothing.
void ShowLine(const Grid& grid, int line);
void ShowRedLine(const Grid& grid, int line);
void HideYelLine(const Grid& grid, int line);
/// All rows back to rest.
void ClearAnimation(const Grid& grid);

}  // namespace tavlo
