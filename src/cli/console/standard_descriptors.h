// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

namespace tavlo::cli {

/// Gives a process that was started without standard input, output or error the null device in its place.
/// Before anything else is opened: a port that got the number 1 would be sent the results. False if there is
/// no null device.
[[nodiscard]] bool OpenStandardDescriptors();

}  // namespace tavlo::cli
