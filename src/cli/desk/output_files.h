// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "cli/console/console.h"

namespace tavlo::cli {

/// Writes what a command was asked for: to standard output for "-", to a device as it stands, else to a file,
/// which is replaced whole or not at all. Returns false after the message of a failure.
[[nodiscard]] bool WriteOutput(Console& console, const std::string& path, const std::string& bytes);

}  // namespace tavlo::cli
