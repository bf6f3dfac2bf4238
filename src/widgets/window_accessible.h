// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

namespace tavlo {

/// Presents our windows to screen readers as frames and dialogs, by their kind. Otherwise they would be panes
/// without a window around them.
void InstallWindowAccessibility();

}  // namespace tavlo
