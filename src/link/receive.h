// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "session/desk.h"

namespace tavlo {

/// The receive event of the port: cuts what has arrived into messages of four bytes, a header of 128 or
/// more and three of 0 to 127, and display text. A broken message is dropped without a word.
///
/// Handling a message may show a box, whose event loop may bring this in again: it then goes on with what
/// stands behind that message, newer bytes last.
void NewOnComm(Desk& desk);

/// One character for the operator terminal's display of 4 lines and 20 columns.
void Char2MMI(DisplayState& display, RunView& view, char c);

}  // namespace tavlo
