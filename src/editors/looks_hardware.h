// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>

class QWidget;

namespace tavlo {

/// The look of the hardware settings: a row for each axis under common headings, the panels below.
[[nodiscard]] std::function<void()> LookOfHardware(QWidget* body);

}  // namespace tavlo
