// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFontMetrics>
#include <algorithm>

namespace tavlo {

/// A measure that was chosen beside a text 16 high, in proportion to the height of this font, and never less
/// than it was chosen.
[[nodiscard]] inline int ByFont(const QFontMetrics& font, int measure) {
  constexpr int kChosenBeside = 16;
  return measure * std::max(font.height(), kChosenBeside) / kChosenBeside;
}

}  // namespace tavlo
