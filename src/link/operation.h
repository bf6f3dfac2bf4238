// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <utility>

#include "link/com_port.h"

namespace tavlo {

/// Runs an operation with the hub while `Busy` keeps all others out, and returns its result. If the port
/// vanished meanwhile, that is reported once, after the operation, whatever else the operation tried.
template <class Body>
auto WhileBusy(Desk& desk, Body body) {
  desk.source.link.Busy = true;
  auto result = body();
  desk.source.link.Busy = false;
  if (std::exchange(desk.source.link.PortLost, false)) TellPortLost(desk);
  return result;
}

}  // namespace tavlo
