// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/file_items.h"
#include "model/program.h"

namespace tavlo {

/// Files of this revision name the model of their drive behind the version.
[[nodiscard]] bool HasDriveCode(float r);
/// Items at the end of a whole file that are not read: its revision lies on a boundary and falls below it.
[[nodiscard]] int UnreadOldItems(float r);

/// Reads what stands behind the version text of a file of the earlier, single-axis programmer: 29 or 100
/// lines for one axis, which become the first lines of a program on axis 0. Lines behind them become
/// empty. Gives false if any item was bad; the settings of axis 0 keep what was read of them. Either way the
/// running current of every axis is held to the highest of its model. Does not run `ScanLoops`.
[[nodiscard]] bool LoadOskelProg(ItemReader& items, float r, Program& program);

}  // namespace tavlo
