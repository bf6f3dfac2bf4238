// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>

#include "editors/form_grid.h"

namespace tavlo {

// The rows of blocks that looks share.

void AddAxis(FormGrid& grid);
void AddSpeed(FormGrid& grid);
void AddAccel(FormGrid& grid);
void AddDecel(FormGrid& grid);
/// What every move by a length or to a position has, down to its deceleration.
void AddMove(FormGrid& grid, const QString& distance, const QString& from_variable);
/// The same by a length, and its direction.
void AddLength(FormGrid& grid);
void AddDirection(FormGrid& grid);
/// The way back of a move that returns.
void AddReturn(FormGrid& grid);
void AddExecution(FormGrid& grid);
void AddTarget(FormGrid& grid);

}  // namespace tavlo
