// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/wire/failure.h"

namespace tavlo::hubsim {

/// What one simulated hub is like: what is plugged into it, and how it behaves.
struct HubOptions : Sockets {
  /// Revision byte: hundredths above 1.00, so 38 is 1.38. At most 127, for a greeting has to carry it.
  std::uint8_t firmware = 38;
  /// Moves and waits take 1/speedup of their time. Nothing on the wire goes faster.
  double speedup = 1;
  FailurePlan failure;
  /// Send the power-up greeting at once.
  bool greet = false;
};

}  // namespace tavlo::hubsim
