// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"

namespace tavlo::testing {

/// A program without a line, its hardware as it is told for a new one.
inline Program NewProgram() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  return program;
}

}  // namespace tavlo::testing
