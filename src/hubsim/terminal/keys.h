// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

namespace tavlo::hubsim {

/// What ENTER of the operator terminal's keypad sends.
inline constexpr char kEnterKey = '\r';

}  // namespace tavlo::hubsim
