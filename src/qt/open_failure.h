// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "qt/device_holder.h"

namespace tavlo {

// Why a port does not open, and what to do about it, for "... {error description}.  Will try ...": no point
// at the end.

/// Another program has the device.
[[nodiscard]] std::string PortInUse(const std::string& device, const DeviceHolder& holder);
/// A lock file says so that does not say whose it is.
[[nodiscard]] std::string PortLocked(const std::string& device, const std::string& lock_file);
/// What stands there is a file, a folder or a device of another kind.
[[nodiscard]] std::string NoSerialPort(const std::string& device);
/// The system refused with this errno.
[[nodiscard]] std::string OpenFailure(const std::string& device, int error);

}  // namespace tavlo
