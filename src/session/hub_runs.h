// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// Takes note of whether the hub may be running its program. `StopButton` shows it, and it is kept over a
/// crash.
void NoteHubRuns(const Link& link, bool runs);

}  // namespace tavlo
