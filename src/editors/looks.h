// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string_view>

class QWidget;

namespace tavlo {

/// Puts the controls of the form of this name into the dialog's body; the form must exist. Returns what lays
/// them out anew after captions have changed.
[[nodiscard]] std::function<void()> BuildLook(std::string_view form, QWidget* body);

}  // namespace tavlo
