// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QtGlobal>
#include <string>

#include "platform/outcome.h"

#ifdef Q_OS_UNIX
#include "qt/file_descriptor.h"
#include "qt/uucp_locks.h"
#endif

namespace tavlo {

#ifdef Q_OS_UNIX

/// Keeps a serial device for this program alone, and finds out who has it when it cannot be had. It honours
/// and sets every way in which programs do that: the exclusive mode of the terminal (which QSerialPort sets),
/// flock, and UUCP locks. Root passes the exclusive mode, so whoever merely has the device open counts too.
class PortGuard {
 public:
  explicit PortGuard(std::string lock_folder = kUucpLockFolder) : locks_(std::move(lock_folder)) {}

  /// To be called before the device is opened: `device` as the operator knows it, `canonical` without links.
  /// Fails with the {error description} when it cannot be had.
  Outcome Take(const std::string& device, const std::string& canonical);
  /// To be called once the device is open, when QSerialPort has set the lock that it has of its own.
  Outcome Mark();
  void Release();

  /// What stands at `canonical` now is the device that was taken.
  [[nodiscard]] bool Has(const std::string& canonical) const;

 private:
  Outcome TryToTake();

  std::string device_;
  std::string canonical_;
  /// A descriptor besides that of QSerialPort: it holds the flock.
  FileDescriptor line_;
  UucpLocks locks_;
};

#else

/// The system itself gives a port to one program only.
class PortGuard {
 public:
  Outcome Take(const std::string&, const std::string& canonical) {
    canonical_ = canonical;
    return {};
  }
  Outcome Mark() { return {}; }
  void Release() {}
  [[nodiscard]] bool Has(const std::string& canonical) const { return canonical == canonical_; }

 private:
  std::string canonical_;
};

#endif

}  // namespace tavlo
