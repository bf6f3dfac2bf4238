// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

namespace tavlo {

/// The device that Comm `number` (1..8) stands for, as a path or a Windows port name.
///
/// On Windows COM1 to COM8. Elsewhere, first that exists: the link comm{N} in this user's runtime folder,
/// where the simulated hub puts its line; /dev/tavlo-comm{N}, which the operator can make; the N-th of the
/// serial devices that are there. With none of them the link's path, so that a failure names something.
[[nodiscard]] std::string CommDeviceFor(int number);

/// The folder of the comm links: tavlo-composer in XDG_RUNTIME_DIR, or tavlo-composer-{uid} in /tmp.
[[nodiscard]] std::string CommFolder();

}  // namespace tavlo
