// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QWidget;

namespace tavlo {

/// Whether a click could reach the widget now: it is visible and enabled, and no modal window blocks it. The
/// accessibility interface presses controls without checking for a modal window.
[[nodiscard]] bool TakesInput(const QWidget& widget);

}  // namespace tavlo
