// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/drive_scan.h"
#include "session/desk.h"

namespace tavlo {

/// Stops the hub and asks it which drives are plugged in, and for their firmware. Whatever it does not answer
/// is reported to the operator, and unknown in the result. Never yields; takes up to two seconds without a
/// hub.
[[nodiscard]] DriveScan ScanDrives(Desk& desk);

}  // namespace tavlo
