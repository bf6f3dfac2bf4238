// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "support/failing_disk.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>

namespace tavlo::testing {
namespace {

// Ready before anything else runs: the functions below are called from the first moment on.
constinit std::optional<DiskFaults> g_faults;
std::size_t g_room = 0;
int g_failures = 0;

/// The system's own function behind one of ours.
template <class Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// The descriptor is that of a file which is being written.
bool IsWritten(int descriptor) {
  struct stat file {};
  return fstat(descriptor, &file) == 0 && S_ISREG(file.st_mode) &&
         (fcntl(descriptor, F_GETFL) & O_ACCMODE) != O_RDONLY;
}

int Fail(int error) {
  ++g_failures;
  errno = error;
  return -1;
}

}  // namespace

FailingDisk::FailingDisk(const DiskFaults& faults) {
  g_room = faults.room.value_or(0);
  g_failures = 0;
  g_faults = faults;
}

FailingDisk::~FailingDisk() {
  g_faults.reset();
}

int FailingDisk::Failures() {
  return g_failures;
}

std::vector<DiskFaultRow> DiskFaultRows() {
  return {{"no file can be made", {.create = ENOSPC}, "No space left on device"},
          {"the first write fails", {.write = EIO}, "Input/output error"},
          {"the quota is used up", {.room = 3000, .when_full = EDQUOT}, "Disk quota exceeded"},
          {"the sync fails", {.sync = EIO}, "Input/output error"},
          {"the sync finds the disk full", {.sync = ENOSPC}, "No space left on device"},
          {"the close finds the quota used up", {.close = EDQUOT}, "Disk quota exceeded"},
          {"the rename fails", {.rename = EIO}, "Input/output error"},
          {"the folder takes no new name", {.rename = ENOSPC}, "No space left on device"},
          {"an error that no file has", {.write = ENOTTY}, "System error 25"}};
}

}  // namespace tavlo::testing

using tavlo::testing::Fail;
using tavlo::testing::g_faults;
using tavlo::testing::g_room;
using tavlo::testing::IsWritten;
using tavlo::testing::Real;

extern "C" {

int open(const char* path, int flags, ...) {
  if (g_faults && g_faults->create != 0 && (flags & O_CREAT) != 0) return Fail(g_faults->create);
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list rest;
    va_start(rest, flags);
    mode = va_arg(rest, mode_t);
    va_end(rest);
  }
  static auto* const real = Real<int(const char*, int, ...)>("open");
  return real(path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
  static auto* const real = Real<ssize_t(int, const void*, size_t)>("write");
  if (!g_faults || !IsWritten(descriptor)) return real(descriptor, bytes, count);
  if (g_faults->write != 0) return Fail(g_faults->write);
  if (!g_faults->room) return real(descriptor, bytes, count);
  if (g_room == 0 && count > 0) return Fail(g_faults->when_full);
  const ssize_t written = real(descriptor, bytes, std::min(count, g_room));
  if (written > 0) g_room -= static_cast<size_t>(written);
  return written;
}

int fsync(int descriptor) {
  static auto* const real = Real<int(int)>("fsync");
  return g_faults && g_faults->sync != 0 ? Fail(g_faults->sync) : real(descriptor);
}

int close(int descriptor) {
  static auto* const real = Real<int(int)>("close");
  if (!g_faults || g_faults->close == 0 || !IsWritten(descriptor)) return real(descriptor);
  real(descriptor);
  return Fail(g_faults->close);
}

int rename(const char* from, const char* to) noexcept {
  static auto* const real = Real<int(const char*, const char*)>("rename");
  return g_faults && g_faults->rename != 0 ? Fail(g_faults->rename) : real(from, to);
}

}  // extern "C"
