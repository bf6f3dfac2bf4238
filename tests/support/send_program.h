// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "link/download.h"

namespace tavlo::testing {

/// Sends the desk's program, unchecked.
inline DownloadResult SendProgram(Desk& desk, float rev) {
  return DownloadProg(desk.program(), desk.link(), desk.downloading(), rev);
}

}  // namespace tavlo::testing
