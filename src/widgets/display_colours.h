// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QColor>

namespace tavlo {

// The operator terminal's display, whatever the desktop's colours.

inline constexpr QColor kGlass(214, 228, 190);
inline constexpr QColor kGlassText(16, 32, 16);
/// Hatches the lines that are kept free for an entry.
inline constexpr QColor kGlassShade(120, 140, 110);

}  // namespace tavlo
