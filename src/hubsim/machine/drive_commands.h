// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string>
#include <string_view>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"

namespace tavlo::hubsim {

/// Returns what the drives answer to a line of text in the passthrough, with the final carriage return;
/// nothing if no drive has the address that the line begins with. docs/hub-protocol.md lists the commands.
[[nodiscard]] std::string AnswerDriveCommand(std::string_view line, const DriveBay& bay,
                                             const Machine& machine, double now);

}  // namespace tavlo::hubsim
