// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QColor>

namespace tavlo {

/// Returns the contrast of two colours as the web's accessibility guidelines measure it: from 1, no
/// difference, to 21, black and white.
[[nodiscard]] double Contrast(const QColor& one, const QColor& other);

/// The least contrast for a text and for a state that is shown by a colour, and for a symbol, which is
/// larger.
inline constexpr double kTextContrast = 4.5;
inline constexpr double kSymbolContrast = 3;

/// Returns the colour itself if it has this contrast with its ground. Otherwise returns the nearest colour
/// that has it on the way to black or white, whichever is farther from the ground.
[[nodiscard]] QColor StandOut(const QColor& colour, const QColor& ground, double least);

}  // namespace tavlo
