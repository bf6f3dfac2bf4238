// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

namespace tavlo {

/// Makes each row of the painted grid an object of its own for screen readers and tests: its texts are those
/// of `RowSpeech`, and its action is the click on the icon. Further calls do nothing.
void InstallRowAccessibility();

}  // namespace tavlo
