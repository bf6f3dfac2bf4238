// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

// What the operator chooses for the whole program: the model of the hub, and what the hub does when a limit
// is hit.

/// The operator chose this index of `ModelList`. Counts as a change of the program.
void ChooseModel(Desk& desk, int index);

/// `LimitList` changed to this index.
void SelectLimitAction(Desk& desk, int index);
/// `LimitBranch` has lost the focus while it held this text.
void LeaveLimitBranch(Desk& desk, std::string_view text);
/// The text of the `LimitBranch` box.
[[nodiscard]] std::string LimitBranchText(const Program& program);

}  // namespace tavlo
