// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

struct stat;

namespace tavlo {

/// A program that keeps a device to itself, as far as the system knows.
struct DeviceHolder {
  /// 0 if it is not known.
  int pid = 0;
  /// Empty if it is not known.
  std::string name;
};

/// Returns the process with this number, and its name.
[[nodiscard]] DeviceHolder HolderNamed(int pid);

/// Returns another process that has the device open; looks only at processes that this user may inspect,
/// which are all of them for root. The process at the far end of a pseudo terminal also holds the near end
/// open and does not count.
[[nodiscard]] std::optional<DeviceHolder> FindOpener(const struct stat& device);

/// Returns the process that has locked the device by flock, if the system knows it.
[[nodiscard]] DeviceHolder FindLocker(const struct stat& device);

}  // namespace tavlo
