// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <memory>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/statement.h"
#include "hubsim/terminal/interaction.h"

namespace tavlo::hubsim {

// `line` is the 0-based line that waits.

/// Waits for ENTER; meanwhile the arrow keys turn two axes.
[[nodiscard]] std::unique_ptr<Interaction> WaitForEnter(const EnterStatement& prompt, int line,
                                                        Machine& machine, const DriveBay& bay);

/// Waits for an input; meanwhile the jog inputs of the axis's drive turn it.
[[nodiscard]] std::unique_ptr<Interaction> WaitWithJog(const WaitInputStatement& wait, int line,
                                                       Machine& machine, const DriveBay& bay);

}  // namespace tavlo::hubsim
