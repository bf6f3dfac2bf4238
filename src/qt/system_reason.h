// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

namespace tavlo {

/// What the system's error number means to whoever works with files, in the same words whatever the locale:
/// "No space left on device". An error that no file has is told by its number alone.
[[nodiscard]] std::string SystemReason(int error);

}  // namespace tavlo
