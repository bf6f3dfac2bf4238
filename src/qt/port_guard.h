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

/// Keeps a serial device for this program alone, and finds out who has it if it is taken. It respects and
/// sets all the locks that programs use for this: the exclusive mode of the terminal (which QSerialPort
/// sets), flock, and UUCP locks. Exclusive mode does not stop root, so a process that merely has the device
/// open counts too.
class PortGuard {
 public:
  explicit PortGuard(std::string lock_folder = kUucpLockFolder) : locks_(std::move(lock_folder)) {}

  /// Must be called before the device is opened. `device` is the name that the operator knows, `canonical`
  /// the path without links. If the device is taken, the failure's text is the {error description}.
  Outcome Take(const std::string& device, const std::string& canonical);
  /// Must be called once the device is open and QSerialPort has set its own lock.
  Outcome Mark();
  void Release();

  /// Whether the device at `canonical` is still the one that was taken.
  [[nodiscard]] bool Has(const std::string& canonical) const;

 private:
  Outcome TryToTake();

  std::string device_;
  std::string canonical_;
  /// A second descriptor, beside that of QSerialPort, which holds the flock.
  FileDescriptor line_;
  UucpLocks locks_;
};

#else

/// The system itself lets only one program open a port.
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
