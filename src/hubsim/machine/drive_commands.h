// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string>
#include <string_view>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"

namespace tavlo::hubsim {

/// What the drives say to a line of text in the passthrough, with the carriage return that ends it. Nothing
/// where no drive has the address that the line begins with. Commands are told in docs/hub-protocol.md.
[[nodiscard]] std::string AnswerDriveCommand(std::string_view line, const DriveBay& bay,
                                             const Machine& machine, double now);

}  // namespace tavlo::hubsim
