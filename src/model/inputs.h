// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

namespace tavlo {

/// A drive's main inputs, 1 to 8.
inline constexpr int kMainInputs = 8;
/// The `LimitKind` of an axis whose limit switches are not used.
inline constexpr int kLimitsNotUsed = 2;

}  // namespace tavlo
