// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/file_items.h"
#include "model/file_repairs.h"
#include "model/program.h"

namespace tavlo {

/// Whether files of this revision hold the model code of their drive after the version.
[[nodiscard]] bool HasDriveCode(float r);
/// How many items at the end of a whole file are not read, because its revision lies on a boundary and counts
/// as older than it is.
[[nodiscard]] int UnreadOldItems(float r);

/// Reads what follows the version text in a file of the earlier, single-axis programmer: 29 or 100 lines for
/// one axis. They become the first lines of a program on axis 0; the remaining lines become empty. Returns
/// false if any item was bad; the settings of axis 0 then keep what was read of them. In both cases the
/// running current of every axis is limited to the highest of its model. Does not run `ScanLoops`. What it
/// changes in what the file holds is added to `repairs`.
[[nodiscard]] bool LoadOskelProg(ItemReader& items, float r, Program& program, Repairs* repairs = nullptr);

}  // namespace tavlo
