// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <memory>

#include "hubsim/interaction.h"
#include "hubsim/line_runner.h"

namespace tavlo::hubsim {

/// Lets an axis follow its hand wheel until the line's input condition holds, or until ENTER in the form with
/// a text. That form names no axis: there every axis follows its own wheel.
[[nodiscard]] std::unique_ptr<Interaction> FollowKnob(const FollowKnobStatement& knob,
                                                      const LineContext& context);

}  // namespace tavlo::hubsim
