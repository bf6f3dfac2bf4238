// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "qt/device_holder.h"

namespace tavlo {

// Why a port does not open and what to do about it, as the {error description} of "... {error description}.
// Will try ...": without a full stop.

/// Another program has the device open.
[[nodiscard]] std::string PortInUse(const std::string& device, const DeviceHolder& holder);
/// A lock file says so but does not say whose it is.
[[nodiscard]] std::string PortLocked(const std::string& device, const std::string& lock_file);
/// It is a file, a folder or a device of another kind.
[[nodiscard]] std::string NoSerialPort(const std::string& device);
/// The system refused to open it with this errno.
[[nodiscard]] std::string OpenFailure(const std::string& device, int error);

}  // namespace tavlo
