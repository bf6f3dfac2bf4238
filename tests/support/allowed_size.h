// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <sys/resource.h>

#include <cstddef>

namespace tavlo::testing {

/// What a disk has room for is counted in these.
inline constexpr std::size_t kKilobyte = 1024;

/// While one lives, no file of this process may grow beyond so many bytes: a disk that really is full there,
/// for any user and on any file system.
class AllowedSize {
 public:
  explicit AllowedSize(std::size_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit allowed{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &allowed);
  }
  ~AllowedSize() { setrlimit(RLIMIT_FSIZE, &before_); }
  AllowedSize(const AllowedSize&) = delete;
  AllowedSize& operator=(const AllowedSize&) = delete;

 private:
  rlimit before_{};
};

}  // namespace tavlo::testing
