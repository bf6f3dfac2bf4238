// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"
#include "platform/services.h"

namespace tavlo {

/// How the chain of checks ended. What stopped it has been told.
enum class CheckResult {
  Passed,
  Stopped,
  /// Stopped in a way that also takes the program for unchanged.
  StoppedClean,
};

/// Everything that is checked before a program goes to the hub, in its fixed order, from what the hub's
/// firmware can do (`HubVersion`) to the pairing of Repeats. Sets `MMIused`; on a Hub Quad cuts the masks
/// of its own inputs. `ScanLoops` has been run. The main window goes to the line that a message names.
[[nodiscard]] CheckResult CheckProgram(Program& program, MessageBoxes& boxes);

}  // namespace tavlo
