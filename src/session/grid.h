// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

// What the rows of the main window show, and what a running program paints on them. Each writes
// `Source::rows` and tells the view which rows to paint again.

/// The one rule for a row at rest: the branch target of a limit, or normal.
[[nodiscard]] RowState RestState(const Program& program, int line);

/// The row's text and resting background.
void ShowDesc(Desk& desk, int line);
void ShowAllDescs(Desk& desk);
/// The icon of the line's kind, from the cyan set on the branch target.
void SetIcon(Desk& desk, int line);
/// Only the background, at rest.
void RestoreDesc(Desk& desk, int line);
/// The line is picked for change.
void ShowPicked(Desk& desk, int line);

void DrawArrows(Desk& desk);
void MarkChains(Desk& desk);
/// The axis summary.
void ShowDrive(Desk& desk);

/// A row of the axis summary: name, model or "none", current such as "1.0A"; all empty for an axis that
/// the hub does not have.
struct DriveDesc {
  std::string name;
  std::string model;
  std::string current;
};
[[nodiscard]] DriveDesc DriveDescOf(const Program& program, int axis);

// Lines outside 0..199 paint nothing.
void ShowLine(Desk& desk, int line);
void ShowRedLine(Desk& desk, int line);
void HideYelLine(Desk& desk, int line);
/// All rows back to rest.
void ClearAnimation(Desk& desk);

}  // namespace tavlo
