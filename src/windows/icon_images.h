// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <string_view>

#include "desk/rows.h"

namespace tavlo {

/// Side of a line's image, without a unit but that of the screen.
inline constexpr int kIconSize = 24;

/// The image of a cell of the icon table, drawn at its first use from the line kind's glyph: a tile in the
/// set's colour, the glyph in its ink and, in all sets but the normal one, a badge of the set's own shape, so
/// that no set is told by its colour alone. `scale` is the number of dots of the screen for one unit.
[[nodiscard]] const QImage& IconImage(IconRef icon, qreal scale);

/// The drawing of a command, such as "download", in one ink.
[[nodiscard]] QPixmap CommandImage(std::string_view command, const QColor& ink, int size, qreal scale);

/// The program's own picture.
[[nodiscard]] QPixmap ApplicationImage(int size, qreal scale);

}  // namespace tavlo
