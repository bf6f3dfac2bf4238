// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

namespace tavlo {

/// Returns what the system's error number means to somebody who works with files, in the same words in every
/// locale: "No space left on device". Any other error is described by its number.
[[nodiscard]] std::string SystemReason(int error);

}  // namespace tavlo
