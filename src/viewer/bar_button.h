// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>
#include <functional>

class QPainter;
class QRectF;
class QToolButton;
class QWidget;

namespace tavlo::viewer {

/// What a button of the bars shows.
enum class Sign { Previous, Next, Smaller, Larger, FitWidth, Find, Close };

/// A button with a drawn sign in the ink of the palette. Its name is what a screen reader says; with its key
/// it is the tool tip.
[[nodiscard]] QToolButton* MakeBarButton(Sign sign, const char* object_name, const QString& name,
                                         const QString& key, QWidget* parent);
/// Draws the sign anew, after the palette has changed.
void DrawSign(QToolButton& button, Sign sign);

}  // namespace tavlo::viewer
