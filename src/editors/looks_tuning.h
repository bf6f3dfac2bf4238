// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>

class QWidget;

namespace tavlo {

/// The look of the dialog of a servo drive's control loop.
[[nodiscard]] std::function<void()> LookOfTuning(QWidget* body);

}  // namespace tavlo
