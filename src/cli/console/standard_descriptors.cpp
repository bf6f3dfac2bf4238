// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

namespace tavlo::cli {

bool OpenStandardDescriptors() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    // The lowest number that is free is the one that is missing.
    if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", O_RDWR) != descriptor) return false;
  }
  return true;
}

}  // namespace tavlo::cli
