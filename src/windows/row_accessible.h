// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

namespace tavlo {

/// Makes each row of the painted grid a thing of its own for screen readers and tests from outside: it says
/// what `RowSpeech` holds, its action is the click on the icon. Installs once.
void InstallRowAccessibility();

}  // namespace tavlo
