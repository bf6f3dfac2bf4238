// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <string_view>

#include "session/rows.h"

namespace tavlo {

/// The least side of a line's image, without a unit but that of the screen.
inline constexpr int kIconSize = 24;

/// The image of a cell of the icon table, drawn at its first use from the line kind's glyph: a tile in the
/// set's colour, the glyph in its ink and, in all sets but the normal one, a badge of the set's own shape, so
/// that no set is told by its colour alone. `size` is its side, `scale` the number of dots of the screen for
/// one unit.
[[nodiscard]] const QImage& IconImage(IconRef icon, int size, qreal scale);
/// The ground of a set's images and what is drawn on it.
[[nodiscard]] QColor IconTile(IconSet set);
[[nodiscard]] QColor IconInk(IconSet set);

/// The drawing of a command, such as "download", in one ink, and in another while it cannot be given.
[[nodiscard]] QIcon CommandIcon(std::string_view command, const QColor& ink, const QColor& disabled_ink);

/// The program's own picture.
[[nodiscard]] QIcon ApplicationIcon();

}  // namespace tavlo
