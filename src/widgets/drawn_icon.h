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

/// An icon that is drawn anew at each size and for each screen that asks for it, so that it has all the dots
/// of the screen it is on.
[[nodiscard]] QIcon DrawnIcon(DrawPicture draw);

}  // namespace tavlo
