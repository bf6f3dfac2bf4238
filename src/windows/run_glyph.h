// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QIcon>
#include <QRgb>

class QColor;
class QPalette;

namespace tavlo {

/// The symbols on the controls of a run.
enum class Glyph { Play, Pause, Step, Reset, Stop };

/// The size that they are drawn for, beside text 16 high.
inline constexpr int kGlyphSize = 24;
inline constexpr QRgb kLitRed = qRgb(208, 24, 24);
inline constexpr QRgb kGray = qRgb(120, 120, 120);

/// Filled, or as an outline.
[[nodiscard]] QIcon GlyphIcon(Glyph glyph, const QColor& ink, bool filled);
/// In this colour as far as it can be seen on a button of this palette; an outline if that is gray.
[[nodiscard]] QIcon GlyphIcon(Glyph glyph, QRgb colour, const QPalette& palette);

}  // namespace tavlo
