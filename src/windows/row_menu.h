// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>

#include "model/line_blocks.h"
#include "session/source.h"
#include "windows/shortcuts.h"

class QMenu;

namespace tavlo {

/// What the menu of a row is made of.
struct RowMenu {
  const Source& source;
  /// The row for which it was opened, 0..199, and the rows on which it acts.
  int line = 0;
  LineRange rows;
  /// The program must stay as it is now.
  bool held = false;
  std::function<void(Act)> run;
  std::function<void(int line)> go_to;
};

/// Puts the entries into the menu. Each shows its key; what makes no sense now is disabled.
void FillRowMenu(QMenu& menu, const RowMenu& row);

}  // namespace tavlo
