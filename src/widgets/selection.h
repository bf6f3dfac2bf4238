// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QWidget;

namespace tavlo {

/// Darkens or lightens the ground of what is selected in a box, so that the text on it stands out as any
/// other text does, whatever colours the desktop has for it.
void MakeSelectionStandOut(QWidget& box);

}  // namespace tavlo
