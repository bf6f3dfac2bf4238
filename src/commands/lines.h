// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "model/line_blocks.h"
#include "session/desk.h"

namespace tavlo {

/// A row's icon was dropped on another row's icon, or on itself: a click arrives as a drop on itself. Does
/// nothing while a transfer or a run is under way.
void DropIcon(Desk& desk, int source_line, int target_line, bool shift);

/// Edits `CurLine` in the dialog of its kind, if it has one. Nothing while an operation with the hub is under
/// way.
void ShowInstDialog(Desk& desk, DialogPage page = DialogPage::AsLeft);

/// `BtnInsert`, at this line. False if the operator would rather keep the last line.
bool InsertRow(Desk& desk, int line);
/// `BtnDelete`, of these lines. False if the operator would rather keep them.
bool DeleteRows(Desk& desk, LineRange range);

/// Returns "line 12", or "lines 12 to 16".
[[nodiscard]] std::string Named(LineRange range);
/// The program has changed, and lines have moved: shows all rows anew.
void ShowMoved(Desk& desk);

/// Copies a whole line over another.
void CopyInst(Desk& desk, int source_line, int target_line);

}  // namespace tavlo
