// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/open_failure.h"

#include <QtGlobal>
#include <cerrno>
#ifdef Q_OS_UNIX
#include <grp.h>
#include <sys/stat.h>
#endif

namespace tavlo {
namespace {

/// Returns the group whose members may use the device; empty if joining a group is not the way.
std::string GroupOf(const std::string& device) {
#ifdef Q_OS_UNIX
  struct stat status {};
  constexpr mode_t kUse = S_IRGRP | S_IWGRP;
  if (stat(device.c_str(), &status) != 0 || (status.st_mode & kUse) != kUse || status.st_gid == 0) return {};
  const group* entry = getgrgid(status.st_gid);
  return entry != nullptr ? entry->gr_name : std::string();
#else
  static_cast<void>(device);
  return {};
#endif
}

std::string NoRight(const std::string& device) {
  const std::string group = GroupOf(device);
  return "you have no right to use " + device +
         (group.empty() ? "; ask the administrator of this computer for it"
                        : "; have yourself added to the group " + group + " and sign in again");
}

}  // namespace

std::string PortInUse(const std::string& device, const DeviceHolder& holder) {
  std::string who = "another program";
  if (holder.pid != 0) {
    const std::string process = "process " + std::to_string(holder.pid);
    who = holder.name.empty() ? process : holder.name + " (" + process + ")";
  }
  return device + " is in use by " + who + "; close it there first";
}

std::string PortLocked(const std::string& device, const std::string& lock_file) {
  return device + " is in use according to " + lock_file + "; remove that file if no program uses the port";
}

std::string NoSerialPort(const std::string& device) {
  return device + " is no serial port; choose another port";
}

std::string OpenFailure(const std::string& device, int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG: return "there is no device " + device + "; connect the hub or choose another port";
    case EACCES:
    case EPERM:
    case EROFS: return NoRight(device);
    case EBUSY: return PortInUse(device, {});
    case ENOTTY:
    case EINVAL: return NoSerialPort(device);
    case EIO:
    case ENXIO:
    case ENODEV: return "no port answers at " + device + "; connect the hub or choose another port";
    default:
      return device + " cannot be opened now (error " + std::to_string(error) +
             "); close other programs, or connect the hub anew, and try again";
  }
}

}  // namespace tavlo
