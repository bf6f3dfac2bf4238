// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tavlo::testing {

/// What goes wrong on the disk: each an error number of the system, 0 for nothing.
struct DiskFaults {
  /// Bytes that still fit on it.
  std::optional<std::size_t> room = std::nullopt;
  int when_full = ENOSPC;
  int create = 0;
  int write = 0;
  int sync = 0;
  int close = 0;
  int rename = 0;
};

/// While one lives, this process's calls that change a file fail as told. It stands between the program and
/// the system's library, so that what is tested is the whole of what ships. At most one at a time; terminals,
/// pipes and whatever is only read are left alone. Linked by the test programs that list failing_disk.cpp.
class FailingDisk {
 public:
  explicit FailingDisk(const DiskFaults& faults);
  ~FailingDisk();
  FailingDisk(const FailingDisk&) = delete;
  FailingDisk& operator=(const FailingDisk&) = delete;

  /// How many calls have failed. A fault that meets no call proves nothing.
  [[nodiscard]] static int Failures();
};

/// A way in which a save can fail, and what the operator reads of it.
struct DiskFaultRow {
  const char* name;
  DiskFaults faults;
  std::string reason;
};
[[nodiscard]] std::vector<DiskFaultRow> DiskFaultRows();

}  // namespace tavlo::testing
