// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QWidget;

namespace tavlo {

/// Puts the controls of the analysis page into `page`: its rows, the choice of the axis, the graph; with
/// `output` those of an output besides.
void BuildAnalysis(QWidget* page, bool output);

}  // namespace tavlo
