// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

// The drive terminal: text commands to the drives behind the hub. While it is active the hub passes
// everything through, and everything received is the drives'.

/// The hub's firmware is shown and can pass commands through, and no other operation is under way.
[[nodiscard]] bool TerminalAllowed(const Source& source);
/// Ctrl+T on the main window: opens the terminal if it is allowed.
void OpenTerminal(Desk& desk);

/// The window is about to come up for the first time of this opening: all empty.
void LoadTerminal(Desk& desk);
/// The window has got the focus: the passthrough begins.
void ActivateTerminal(Desk& desk);
/// The window has lost the focus or is closed: the passthrough ends, once for each beginning.
void LeaveTerminal(Desk& desk);

/// Enter was released in `CommandText`, which holds this text: it goes out as it stands and is logged less
/// its last two characters, the line's end.
void SendCommandText(Desk& desk, std::string_view text);
/// A byte of the drives, or of the hub's greeting.
void ProcessChar(Desk& desk, char c);
/// What `CommandText` may keep of a text that has grown too long.
[[nodiscard]] std::string CheckSize(std::string text);

}  // namespace tavlo
