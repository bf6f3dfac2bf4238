// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QColor>

namespace tavlo {

/// How well two colours are told from each other, as the web's accessibility guidelines measure it: from 1,
/// not at all, to 21, black and white.
[[nodiscard]] double Contrast(const QColor& one, const QColor& other);

/// The least for a text and for a state that is told by a colour, and for a symbol, which is larger.
inline constexpr double kTextContrast = 4.5;
inline constexpr double kSymbolContrast = 3;

/// The colour itself where it reaches this contrast with its ground, else the nearest to it on the way to
/// black or white, whichever is farther from the ground.
[[nodiscard]] QColor StandOut(const QColor& colour, const QColor& ground, double least);

}  // namespace tavlo
