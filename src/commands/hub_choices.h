// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

// What the operator chooses for the whole program beside its lines: the model of the hub, and what it does
// when a limit is hit.

/// The operator chose this index of `ModelList`, which is a change of the program.
void ChooseModel(Desk& desk, int index);

/// `LimitList` changed to this index.
void SelectLimitAction(Desk& desk, int index);
/// `LimitBranch` lost the focus with this text in it.
void LeaveLimitBranch(Desk& desk, std::string_view text);
/// `LimitBranch` as it stands in its box.
[[nodiscard]] std::string LimitBranchText(const Program& program);

}  // namespace tavlo
