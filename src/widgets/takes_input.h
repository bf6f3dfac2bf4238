// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QWidget;

namespace tavlo {

/// A click could reach the widget now: it can be seen, it is enabled, and no modal window stands before it.
/// The accessibility interface presses controls without asking for the last.
[[nodiscard]] bool TakesInput(const QWidget& widget);

}  // namespace tavlo
