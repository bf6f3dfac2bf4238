// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/port_guard.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <termios.h>

#include <cerrno>
#include <utility>

#include "qt/device_holder.h"
#include "qt/open_failure.h"

namespace tavlo {
namespace {

/// This process itself must not be named as another program.
std::string InUse(const std::string& device, const DeviceHolder& holder) {
  return PortInUse(device, holder.pid == getpid() ? DeviceHolder() : holder);
}

std::string Held(const std::string& device, const UucpHold& hold) {
  return hold.pid == 0 ? PortLocked(device, hold.file) : InUse(device, HolderNamed(hold.pid));
}

}  // namespace

Outcome PortGuard::Take(const std::string& device, const std::string& canonical) {
  Release();
  device_ = device;
  canonical_ = canonical;
  Outcome taken = TryToTake();
  if (!taken) Release();
  return taken;
}

Outcome PortGuard::TryToTake() {
  struct stat status {};
  if (stat(canonical_.c_str(), &status) != 0) return Outcome::Failed(OpenFailure(device_, errno));
  if (!S_ISCHR(status.st_mode)) return Outcome::Failed(NoSerialPort(device_));
  if (const auto hold = locks_.FindHold({device_, canonical_})) return Outcome::Failed(Held(device_, *hold));
  line_ = FileDescriptor(open(canonical_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!line_.Valid()) {
    const int error = errno;
    return Outcome::Failed(error == EBUSY ? InUse(device_, FindOpener(status).value_or(DeviceHolder()))
                                          : OpenFailure(device_, error));
  }
  termios settings{};
  if (tcgetattr(line_.Get(), &settings) != 0) return Outcome::Failed(OpenFailure(device_, errno));
  if (flock(line_.Get(), LOCK_EX | LOCK_NB) != 0) return Outcome::Failed(InUse(device_, FindLocker(status)));
  if (const auto opener = FindOpener(status)) return Outcome::Failed(InUse(device_, *opener));
  return {};
}

Outcome PortGuard::Mark() {
  const auto hold = locks_.Set(canonical_);
  if (!hold) return {};
  Outcome refused = Outcome::Failed(Held(device_, *hold));
  Release();
  return refused;
}

void PortGuard::Release() {
  locks_.Release();
  line_ = FileDescriptor();
}

bool PortGuard::Has(const std::string& canonical) const {
  struct stat taken {};
  struct stat now {};
  return canonical == canonical_ && line_.Valid() && fstat(line_.Get(), &taken) == 0 &&
         stat(canonical.c_str(), &now) == 0 && taken.st_rdev == now.st_rdev && taken.st_ino == now.st_ino;
}

}  // namespace tavlo
