// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"
#include "platform/services.h"

namespace tavlo {

/// How the chain of checks ended. What stopped it has been reported to the operator.
enum class CheckResult {
  Passed,
  Stopped,
  /// Stopped in a way that also marks the program as unchanged.
  StoppedClean,
};

/// Runs every check that comes before a download, in a fixed order, from what the hub's firmware can do
/// (`HubVersion`) to the pairing of Repeats. `ScanLoops` must have been run before. Sets `MMIused`; on a Hub
/// Quad it also cuts the masks of the hub's own inputs. The main window goes to the line that a message
/// names.
[[nodiscard]] CheckResult CheckProgram(Program& program, MessageBoxes& boxes);

}  // namespace tavlo
