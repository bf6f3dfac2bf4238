// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <memory>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/statement.h"
#include "hubsim/terminal/interaction.h"

namespace tavlo::hubsim {

/// Lets an axis follow its hand wheel until the line's input condition holds, or until ENTER in the form with
/// a text. That form names no axis: there every axis follows its own wheel.
/// `line` is the 0-based line that waits.
[[nodiscard]] std::unique_ptr<Interaction> FollowKnob(const FollowKnobStatement& knob, int line,
                                                      Machine& machine, const DriveBay& bay);

}  // namespace tavlo::hubsim
