// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/shortcuts.h"

#include <QKeySequence>
#include <algorithm>
#include <iterator>

namespace tavlo {

QString KeyOf(Act act) {
  const auto* row = std::ranges::find(kShortcuts, act, &Shortcut::act);
  return row == std::end(kShortcuts) ? QString() : QKeySequence(row->Keys()).toString();
}

}  // namespace tavlo
