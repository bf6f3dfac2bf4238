// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <string_view>

#include "session/rows.h"

namespace tavlo {

/// The smallest side of a line's image, in device-independent pixels.
inline constexpr int kIconSize = 24;

/// Returns the image of a cell of the icon table: a tile in the set's colour with the glyph of the line's
/// kind and, in all sets but the normal one, a badge of the set's own shape, so that no set is recognised by
/// its colour alone. It is drawn at its first use. `size` is its side, `scale` the number of device pixels
/// per unit.
[[nodiscard]] const QImage& IconImage(IconRef icon, int size, qreal scale);
/// The same as an icon.
[[nodiscard]] QIcon LineIcon(IconRef icon);
/// Returns the glyph of a cell alone, in one ink.
[[nodiscard]] QIcon GlyphIcon(IconRef icon, const QColor& ink);
/// The ground of a set's images and the ink that is drawn on it.
[[nodiscard]] QColor IconTile(IconSet set);
[[nodiscard]] QColor IconInk(IconSet set);

/// Returns the drawing of a command, such as "download", in one ink, and in another while the command is
/// disabled.
[[nodiscard]] QIcon CommandIcon(std::string_view command, const QColor& ink, const QColor& disabled_ink);

/// The program's own picture.
[[nodiscard]] QIcon ApplicationIcon();

}  // namespace tavlo
