// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <vector>

#include "cli/console/environment.h"
#include "cli/console/exit_code.h"

namespace tavlo::cli {

/// Runs the companion. `arguments` are those after the program's name.
[[nodiscard]] ExitCode RunTavlo(const std::vector<std::string>& arguments, Environment& environment);

}  // namespace tavlo::cli
