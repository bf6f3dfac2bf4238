// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/line_blocks.h"
#include "session/desk.h"

namespace tavlo {

// What is done to the selected lines. Each is one edit that can be taken back; each does nothing while the
// program must stay as it is.

/// Puts the lines on the clipboard. What is on it stays if there is none to put them on.
void CopyRows(Desk& desk, LineRange range);
/// The same, and takes them out of the program, without a question: they can be pasted again.
void CutRows(Desk& desk, LineRange range);
/// Puts the lines of the clipboard in at this line. Asks before lines in use are lost at the end.
void PasteRows(Desk& desk, int line);

/// Returns the lines as any program can read them, a row each.
[[nodiscard]] std::string PlainTextOf(const Program& program, LineRange range);

}  // namespace tavlo
