// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "session/desk.h"

namespace tavlo {

/// The receive event of the port: splits what has arrived into display text and messages of four bytes, a
/// header of 128 or more and three bytes of 0..127. A broken message is dropped silently.
///
/// Handling a message may show a box, whose event loop may call this again. The inner call then goes on with
/// what follows that message, and newer bytes come last.
void NewOnComm(Desk& desk);

/// Handles one character for the operator terminal's display of 4 lines and 20 columns.
void Char2MMI(DisplayState& display, RunView& view, char c);

}  // namespace tavlo
