// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <optional>

#include "hubsim/drive_bay.h"
#include "hubsim/halt.h"
#include "hubsim/machine.h"

namespace tavlo::hubsim {

/// Why a motor cannot turn; empty if it can.
[[nodiscard]] std::optional<Halt> CannotMove(int axis, const Machine& machine, const DriveBay& bay);

}  // namespace tavlo::hubsim
