// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QIcon>
#include <QRectF>
#include <functional>

class QPainter;

namespace tavlo {

/// Draws a picture that fills `place`.
using DrawPicture = std::function<void(QPainter& painter, const QRectF& place, QIcon::Mode mode)>;

/// Returns an icon that is drawn for each size and each screen, so that it is sharp at every resolution.
[[nodiscard]] QIcon DrawnIcon(DrawPicture draw);

}  // namespace tavlo
