// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>

class QWidget;

namespace tavlo {

// The looks of the dialogs whose lines hold a text.

[[nodiscard]] std::function<void()> LookOfMMIprompt(QWidget* body);
[[nodiscard]] std::function<void()> LookOfComment(QWidget* body);

}  // namespace tavlo
