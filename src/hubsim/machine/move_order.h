// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include "hubsim/machine/axis.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/statement.h"

namespace tavlo::hubsim {

/// Turns a move as the wire has it into steps and seconds of its axis, with the variables of the moment.
[[nodiscard]] MoveOrder OrderOf(const MoveStatement& move, const Machine& machine, int line, double now);

}  // namespace tavlo::hubsim
