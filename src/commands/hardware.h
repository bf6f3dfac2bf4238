// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>

#include "model/drive_scan.h"
#include "session/desk.h"

namespace tavlo {

/// `ChangeRes`: the operator edits the hardware settings; the rows then show what has become of the lines.
/// `scan` asks the hub which drives are plugged in. Does nothing while a transfer or a run is under way.
void ChangeRes(Desk& desk, const std::function<DriveScan()>& scan);

}  // namespace tavlo
