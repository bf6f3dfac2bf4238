// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "motion/units.h"
#include "support/new_program.h"

namespace tavlo::testing {

/// A program whose axis 0 has these steps per revolution and per user unit.
inline Program WithScale(std::int32_t steps_per_rev, std::int32_t steps_per_unit, bool use_units = true) {
  Program program = NewProgram();
  program.Axis.StepResCode[0] = 16;
  program.Axis.StepsPerRev[0] = steps_per_rev;
  program.Axis.StepsPerUnit[0] = steps_per_unit;
  program.Axis.UseUnits[0] = use_units;
  return program;
}

}  // namespace tavlo::testing
