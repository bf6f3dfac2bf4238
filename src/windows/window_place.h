// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QRect>
#include <QSize>

#include "platform/services.h"

class QSplitter;
class QWidget;

namespace tavlo {

/// Returns the size at which a window opens: the one that suits the usual font in proportion to its own, and
/// no larger than the screen with a frame around the window.
[[nodiscard]] QSize OpeningSize(const QWidget& window, const QSize& usual);

/// Returns what the window manager draws around a window that is up, left and right and above and below it.
[[nodiscard]] QSize FrameOf(const QWidget& window);

/// Returns where a window of `size` covers as little as can be of `spared`: in the largest part of the room
/// beside it, made smaller if need be, but not below `least`. All of them with their frames.
[[nodiscard]] QRect RoomBeside(const QRect& spared, const QRect& room, const QSize& size, const QSize& least);

/// Keeps where a window stands, how large it is and how it is divided into columns until the next session.
void RememberPlace(SettingsStore& settings, const QWidget& window, const QSplitter& columns);
/// Puts the window where it stood, if a screen is still there. Leaves it as it is if nothing was kept.
void TakePlace(SettingsStore& settings, QWidget& window, QSplitter& columns);

}  // namespace tavlo
