// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace tavlo::hubsim {

// What the panel paints itself, readable on a light palette as on a dark one and as large as the letters.

/// The disc of a lamp that is on.
[[nodiscard]] QColor LampColour(const QPalette& palette);
/// The hand of a shaft whose motor has current.
[[nodiscard]] QColor HandColour(const QPalette& palette);
/// The hand and the rim of a shaft whose motor has none.
[[nodiscard]] QColor DimColour(const QPalette& palette);
/// The frame of a lamp that can be clicked.
[[nodiscard]] QColor FrameColour(const QPalette& palette);
/// The system's letters of one width, which look as large as those of `font`.
[[nodiscard]] QFont FixedFont(const QFont& font);

}  // namespace tavlo::hubsim
