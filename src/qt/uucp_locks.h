// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "qt/file_descriptor.h"

namespace tavlo {

/// The folder in which programs look for each other's locks of serial devices.
inline constexpr const char* kUucpLockFolder = "/var/lock";

/// A lock file that keeps us from opening its device.
struct UucpHold {
  std::string file;
  /// 0 if the file does not name a process.
  pid_t pid = 0;
};

/// The lock files of one serial device, LCK..{name}. Each holds the number of the process that has the
/// device, as text or in binary. A device below a folder of /dev has two names: the last part of its path,
/// and the whole path with _ for each /.
class UucpLocks {
 public:
  explicit UucpLocks(std::string folder = kUucpLockFolder) : folder_(std::move(folder)) {}
  UucpLocks(const UucpLocks&) = delete;
  UucpLocks& operator=(const UucpLocks&) = delete;
  ~UucpLocks() { Release(); }

  /// Returns a lock that must be respected, under any of the names in `devices` (the device and links to it).
  /// Removes locks of processes that have ended; never removes the lock of a living process or one that names
  /// no process.
  [[nodiscard]] std::optional<UucpHold> FindHold(const std::vector<std::string>& devices) const;
  /// Sets those locks of the device that do not exist yet. Goes on without them if the folder cannot be
  /// written. If another process was quicker, returns its lock and sets none.
  [[nodiscard]] std::optional<UucpHold> Set(const std::string& device);
  /// Removes what Set() has set. So does the end of the process by exit().
  void Release();

 private:
  struct File {
    std::string path;
    /// Locked by flock, so that others do not take our lock file for a leftover. Not valid if the lock file
    /// existed before.
    FileDescriptor lock;
  };

  std::string folder_;
  std::vector<File> files_;
};

}  // namespace tavlo
