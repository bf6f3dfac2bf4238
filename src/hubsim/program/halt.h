// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>

namespace tavlo::hubsim {

enum class HaltKind : std::uint8_t {
  Limit,
  StopButton,
  StackOverflow,
  StackUnderflow,
  Fault,
  DriveDisabled,
  DriveLost,
};

/// Why a program was halted. `axis` and `code` are 0 where they mean nothing.
struct Halt {
  HaltKind kind = HaltKind::StopButton;
  int axis = 0;
  int code = 0;
};

}  // namespace tavlo::hubsim
