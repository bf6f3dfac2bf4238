// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <memory>

#include "cli/console/environment.h"

namespace tavlo::cli {

/// A line on a serial device. While it lives, interruptions are held back for it and it is the process's
/// one QCoreApplication, so there can be one at a time.
[[nodiscard]] std::unique_ptr<HubLine> MakeQtLine(const PortName& port);

}  // namespace tavlo::cli
