// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

// The drive terminal: text commands to the drives behind the hub. While it is active, the hub passes
// everything on, and everything received comes from the drives.

/// Whether the terminal may open: the hub's firmware is shown and can pass commands on, and no other
/// operation is under way.
[[nodiscard]] bool TerminalAllowed(const Source& source);
/// Ctrl+T in the main window: opens the terminal if it is allowed.
void OpenTerminal(Desk& desk);

/// The window is about to be shown for the first time since it was opened: empties everything.
void LoadTerminal(Desk& desk);
/// The window has received the focus: the passthrough begins.
void ActivateTerminal(Desk& desk);
/// The window has lost the focus or is closed: ends the passthrough if it has begun.
void LeaveTerminal(Desk& desk);

/// Enter was released in `CommandText`, which holds this text. The text is sent unchanged; the log leaves out
/// its last two characters, the line end.
void SendCommandText(Desk& desk, std::string_view text);
/// Handles one byte from the drives, or of the hub's greeting.
void ProcessChar(Desk& desk, char c);
/// Returns the part of an overlong text that `CommandText` may keep.
[[nodiscard]] std::string CheckSize(std::string text);

}  // namespace tavlo
