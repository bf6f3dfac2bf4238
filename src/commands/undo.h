// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// Takes the last edit back, shows the program as it was and goes to the first line that has changed. Does
/// nothing if there is none, and while the program must stay as it is.
void Undo(Desk& desk);
/// Does the edit again that was taken back last.
void Redo(Desk& desk);

}  // namespace tavlo
