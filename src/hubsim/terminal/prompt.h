// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <memory>

#include "hubsim/machine/machine.h"
#include "hubsim/program/statement.h"
#include "hubsim/terminal/display.h"
#include "hubsim/terminal/interaction.h"

namespace tavlo::hubsim {

// The prompts that read something from the keypad. Their text is on the display already. `line` is the
// 0-based line that asks.

/// Reads a number into a variable, on the entry row.
[[nodiscard]] std::unique_ptr<Interaction> AskValue(const ValueStatement& prompt, int line, Machine& machine,
                                                    TerminalDisplay& display);
/// Branches at "+", goes on at "-".
[[nodiscard]] std::unique_ptr<Interaction> AskYesNo(const YesNoStatement& prompt, int line);
/// Branches at the number keys that are in use. With none in use ENTER goes on.
[[nodiscard]] std::unique_ptr<Interaction> AskMenu(const MenuStatement& menu, int line);

}  // namespace tavlo::hubsim
