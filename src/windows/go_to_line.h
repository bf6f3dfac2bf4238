// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>

class QWidget;

namespace tavlo {

/// Asks for the number of a line, as the operator counts. Returns the line, 0..199; nothing if the operator
/// would rather stay. `present` is the line that is proposed. Modal.
[[nodiscard]] std::optional<int> AskForLine(QWidget* parent, int present);

}  // namespace tavlo
