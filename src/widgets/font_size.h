// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFontMetrics>
#include <algorithm>

namespace tavlo {

/// Returns a measure that was chosen for text 16 high, scaled to the height of this font, and never less than
/// the measure itself.
[[nodiscard]] inline int ByFont(const QFontMetrics& font, int measure) {
  constexpr int kChosenBeside = 16;
  return measure * std::max(font.height(), kChosenBeside) / kChosenBeside;
}

}  // namespace tavlo
