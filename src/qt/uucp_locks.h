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

/// A lock file that keeps its device closed to us.
struct UucpHold {
  std::string file;
  /// 0 when the file does not name a process.
  pid_t pid = 0;
};

/// The lock files of one serial device, LCK..{name}, each with the number of the process that holds the
/// device as text or as the machine keeps it. A device below a folder of /dev goes by two names: the last
/// part of its path, and the whole with _ for each /.
class UucpLocks {
 public:
  explicit UucpLocks(std::string folder = kUucpLockFolder) : folder_(std::move(folder)) {}
  UucpLocks(const UucpLocks&) = delete;
  UucpLocks& operator=(const UucpLocks&) = delete;
  ~UucpLocks() { Release(); }

  /// Gives a lock of the device that must be obeyed, under any of the names of `devices` (links to it and
  /// itself). Locks of processes that have ended are removed; a lock of a living one, and one that names
  /// none, never is.
  [[nodiscard]] std::optional<UucpHold> FindHold(const std::vector<std::string>& devices) const;
  /// Sets the device's locks that are not there yet. Where the folder takes none it goes on without. Gives
  /// the lock of another process that was quicker; then none is set.
  [[nodiscard]] std::optional<UucpHold> Set(const std::string& device);
  /// Removes what Set() has set. The end of the process by exit() does so too.
  void Release();

 private:
  struct File {
    std::string path;
    /// Keeps the lock from others who take one that nobody holds for a leftover. Not valid for a lock that
    /// was there already.
    FileDescriptor lock;
  };

  std::string folder_;
  std::vector<File> files_;
};

}  // namespace tavlo
