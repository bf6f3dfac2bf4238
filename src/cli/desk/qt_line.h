// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <memory>

#include "cli/console/environment.h"

namespace tavlo::cli {

/// Makes a line on a serial device. While the line lives, it holds back interruptions and is the one
/// QCoreApplication of the process, so there can only be one line at a time.
[[nodiscard]] std::unique_ptr<HubLine> MakeQtLine(const PortName& port);

}  // namespace tavlo::cli
