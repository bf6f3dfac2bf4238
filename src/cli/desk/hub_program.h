// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>

#include "link/held_program.h"
#include "link/upload.h"
#include "session/desk.h"

namespace tavlo::cli {

/// Returns the sum of the last download, which an idle hub answers at once. Returns nothing if the hub has
/// been switched off since, or if its last download was broken off.
[[nodiscard]] std::optional<int> AskLastSum(Desk& desk);

/// Reads the memory of an idle hub, showing the progress of an upload.
[[nodiscard]] ImageReading ReadIdleHub(Desk& desk);

}  // namespace tavlo::cli
