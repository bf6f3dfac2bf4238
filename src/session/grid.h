// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

// What the rows of the main window show, and what a running program paints on them. Each function writes
// `RowsState` and tells the view which rows to repaint.

/// Returns how a row looks at rest: as the branch target of a limit, or normal.
[[nodiscard]] RowState RestState(const Program& program, int line);

/// Sets the row's text and its background at rest.
void ShowDesc(const Grid& grid, int line);
void ShowAllDescs(const Grid& grid);
/// Sets the icon of the line's kind; the branch target takes it from the cyan set.
void SetIcon(const Grid& grid, int line);
/// Sets only the background, as at rest.
void RestoreDesc(const Grid& grid, int line);
/// Shows the line as picked for change.
void ShowPicked(const Grid& grid, int line);

void DrawArrows(const Grid& grid);
void MarkChains(const Grid& grid);
/// Refreshes all rows, as after the program was replaced. Pairs the loops first.
void ShowProgram(Desk& desk);
/// Refreshes all that is shown of the program, after it has become another one.
void ShowReplaced(Desk& desk);
/// Refreshes the axis summary.
void ShowDrive(ProgramView& view);
/// Sets the hub's model to this index of `ModelList`. Does not count as a change of the program.
void SelectModel(Desk& desk, int index);

/// A row of the axis summary: name, model or "none", current such as "1.0A". All are empty for an axis that
/// the hub does not have.
struct DriveDesc {
  std::string name;
  std::string model;
  std::string current;
};
[[nodiscard]] DriveDesc DriveDescOf(const Program& program, int axis);

// For a line outside 0..199 these do nothing.
void ShowLine(const Grid& grid, int line);
void ShowRedLine(const Grid& grid, int line);
void HideYelLine(const Grid& grid, int line);
/// Returns all rows to rest.
void ClearAnimation(const Grid& grid);

}  // namespace tavlo
