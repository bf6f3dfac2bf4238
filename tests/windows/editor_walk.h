// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>
#include <functional>
#include <string>

namespace tavlo::testing {

/// What to do with a window while it stands; `state` tells the windows and their states apart.
using LookAt = std::function<void(QWidget& window, const std::string& state)>;

/// Brings up the picker of kinds, the dialog of every kind in its states and the dialog of the hardware, one
/// after the other.
void ForEachEditor(const LookAt& look_at);

}  // namespace tavlo::testing
