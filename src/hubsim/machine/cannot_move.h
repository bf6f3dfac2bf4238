// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <optional>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/halt.h"

namespace tavlo::hubsim {

/// Why a motor cannot turn; empty if it can.
[[nodiscard]] std::optional<Halt> CannotMove(int axis, const Machine& machine, const DriveBay& bay);

}  // namespace tavlo::hubsim
