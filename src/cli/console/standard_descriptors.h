// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

namespace tavlo::cli {

/// Opens the null device in place of standard input, output or error if the process was started without one.
/// Must be called before anything else is opened: otherwise a port could get the number 1 and be sent the
/// results. Returns false if there is no null device.
[[nodiscard]] bool OpenStandardDescriptors();

}  // namespace tavlo::cli
