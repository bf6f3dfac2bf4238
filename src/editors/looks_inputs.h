// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>

class QWidget;

namespace tavlo {

// The looks of the dialogs that choose inputs.

[[nodiscard]] std::function<void()> LookOfFeedSense(QWidget* body);
[[nodiscard]] std::function<void()> LookOfFeedSenseRet(QWidget* body);
[[nodiscard]] std::function<void()> LookOfSeekHome(QWidget* body);
[[nodiscard]] std::function<void()> LookOfWaitInput(QWidget* body);
[[nodiscard]] std::function<void()> LookOfIfInput(QWidget* body);

}  // namespace tavlo
