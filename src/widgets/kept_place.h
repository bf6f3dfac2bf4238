// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QWidget;

namespace tavlo {

/// What is hidden keeps its place, so that nothing jumps and its window keeps its size.
void KeepPlace(QWidget* widget, bool keep = true);

}  // namespace tavlo
