// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "platform/services.h"

class QSize;
class QSplitter;
class QWidget;

namespace tavlo {

/// Returns the size at which a window opens: the one that suits the usual font in proportion to its own, and
/// no larger than the screen with a frame around the window.
[[nodiscard]] QSize OpeningSize(const QWidget& window, const QSize& usual);

/// Keeps where a window stands, how large it is and how it is divided into columns until the next session.
void RememberPlace(SettingsStore& settings, const QWidget& window, const QSplitter& columns);
/// Puts the window where it stood, if a screen is still there. Leaves it as it is if nothing was kept.
void TakePlace(SettingsStore& settings, QWidget& window, QSplitter& columns);

}  // namespace tavlo
