// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <memory>

#include "hubsim/display.h"
#include "hubsim/interaction.h"
#include "hubsim/line_runner.h"

namespace tavlo::hubsim {

/// The prompts that read something from the keypad. Their text is on the display already.

/// Reads a number into a variable, on the entry row.
[[nodiscard]] std::unique_ptr<Interaction> AskValue(const ValueStatement& prompt, const LineContext& context,
                                                    TerminalDisplay& display);
/// Branches at "+", goes on at "-".
[[nodiscard]] std::unique_ptr<Interaction> AskYesNo(const YesNoStatement& prompt, const LineContext& context);
/// Branches at the number keys that are in use. With none in use ENTER goes on.
[[nodiscard]] std::unique_ptr<Interaction> AskMenu(const MenuStatement& menu, const LineContext& context);

}  // namespace tavlo::hubsim
