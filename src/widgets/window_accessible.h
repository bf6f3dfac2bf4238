// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

namespace tavlo {

/// Makes our windows frames and dialogs to a screen reader, as their kind is; otherwise they would be panes
/// without a window around them.
void InstallWindowAccessibility();

}  // namespace tavlo
