// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string_view>

namespace tavlo::hubsim {

/// What a drive of a model (0..50) is called on the label and in the Composer; "none" for 0, "unknown type"
/// for a code that no list has.
[[nodiscard]] std::string_view DriveName(int model);

}  // namespace tavlo::hubsim
