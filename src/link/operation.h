// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <utility>

#include "link/com_port.h"

namespace tavlo {

/// Runs an operation with the hub while `Busy` keeps all others out, and returns what it returns. A port that
/// goes in the middle of it is told afterwards, once, whatever the operation had still tried.
template <class Body>
auto WhileBusy(Desk& desk, Body body) {
  desk.source.link.Busy = true;
  auto result = body();
  desk.source.link.Busy = false;
  if (std::exchange(desk.source.link.PortLost, false)) TellPortLost(desk);
  return result;
}

}  // namespace tavlo
