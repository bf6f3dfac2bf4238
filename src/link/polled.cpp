// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/polled.h"

namespace tavlo {

double SendCommand(Desk& desk, std::string_view command) {
  static_cast<void>(desk.Comm1.Input());
  desk.Comm1.Output(command);
  return desk.clock.Timer();
}

bool AwaitExactly(Desk& desk, std::string_view reply, double start, double limit) {
  return AwaitUntil(desk, start, limit, [&] { return desk.Comm1.Input() == reply; });
}

}  // namespace tavlo
