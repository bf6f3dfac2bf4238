// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "link/hub_messages.h"
#include "support/bytes.h"
#include "support/fake_desk.h"

namespace tavlo::testing {

/// A message of the hub reaches its handler.
inline void Handle(FakeDesk& d, int header, int b2, int b3 = 0, int b4 = 0) {
  HandleMsg(d.desk, Bytes({header, b2, b3, b4}));
}

/// The message that a line, 0..199, begins.
inline std::string LineStarted(int line) {
  return LineMessage(254, line);
}

}  // namespace tavlo::testing
