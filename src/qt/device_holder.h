// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

struct stat;

namespace tavlo {

/// A program that keeps a device to itself, as far as the system tells.
struct DeviceHolder {
  /// 0 where it is not known.
  int pid = 0;
  /// Empty where it is not known.
  std::string name;
};

/// The process of this number, with its name.
[[nodiscard]] DeviceHolder HolderNamed(int pid);

/// Another process that has the device open, of those that this user may look into: all of them for root. The
/// process at the far end of a pseudo terminal holds its near end open too and does not count.
[[nodiscard]] std::optional<DeviceHolder> FindOpener(const struct stat& device);

/// The process that has locked the device by flock, if the system tells it.
[[nodiscard]] DeviceHolder FindLocker(const struct stat& device);

}  // namespace tavlo
