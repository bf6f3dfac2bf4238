// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QWidget;

namespace tavlo {

/// Returns the window that a box or dialog belongs to. Before the first activation that is the one that can
/// be seen; null if there is none.
[[nodiscard]] QWidget* OwnerWindow();

}  // namespace tavlo
