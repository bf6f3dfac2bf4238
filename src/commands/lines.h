// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// A row's icon was dropped on another row's icon, or on itself: a click arrives as a drop on itself. Does
/// nothing while a transfer or a run is under way.
void DropIcon(Desk& desk, int source_line, int target_line, bool shift);

/// Edits `CurLine` in the dialog of its kind, if it has one. Nothing while an operation with the hub is under
/// way.
void ShowInstDialog(Desk& desk);

/// Copies a whole line over another.
void CopyInst(Desk& desk, int source_line, int target_line);

}  // namespace tavlo
