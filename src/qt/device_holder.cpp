// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/device_holder.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

namespace tavlo {
namespace {

namespace fs = std::filesystem;

const fs::path kProcesses = "/proc";
/// Major numbers of the near ends of pseudo terminals.
constexpr unsigned kFirstPtyMajor = 136;
constexpr unsigned kLastPtyMajor = 143;

bool IsPty(dev_t device) {
  return major(device) >= kFirstPtyMajor && major(device) <= kLastPtyMajor;
}

/// One of a pty's numbers may stand for several, each in a file system of its own.
bool SameDevice(const struct stat& a, const struct stat& b) {
  if (!S_ISCHR(a.st_mode) || a.st_rdev != b.st_rdev) return false;
  return !IsPty(a.st_rdev) || (a.st_dev == b.st_dev && a.st_ino == b.st_ino);
}

/// The entries of a folder; empty for one that may not be read or goes meanwhile.
std::vector<fs::path> EntriesOf(const fs::path& folder) {
  std::vector<fs::path> entries;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    entries.push_back(entry->path());
  }
  return entries;
}

std::optional<pid_t> PidOf(const fs::path& process) {
  const std::string name = process.filename();
  pid_t pid = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), pid);
  return error == std::errc() && end == name.data() + name.size() ? std::optional(pid) : std::nullopt;
}

/// The number of the pty whose far end this descriptor is.
std::optional<unsigned> FarEndOf(const fs::path& process, const fs::path& descriptor) {
  constexpr std::string_view kKey = "tty-index:";
  std::ifstream info(process / "fdinfo" / descriptor.filename());
  for (std::string line; std::getline(info, line);) {
    if (line.starts_with(kKey)) return static_cast<unsigned>(std::atoi(line.c_str() + kKey.size()));
  }
  return std::nullopt;
}

/// The process has the device open, and not because it is the other side of the line.
bool HasOpen(const fs::path& process, const struct stat& device) {
  bool open = false;
  for (const fs::path& descriptor : EntriesOf(process / "fd")) {
    std::error_code error;
    const std::string target = fs::read_symlink(descriptor, error);
    // Nothing but devices is looked at more closely: a file system out of reach could hold this up.
    if (error || !target.starts_with("/dev/")) continue;
    if (IsPty(device.st_rdev) && target.ends_with("ptmx") &&
        FarEndOf(process, descriptor) == minor(device.st_rdev)) {
      return false;
    }
    struct stat status {};
    open = open || (stat(descriptor.c_str(), &status) == 0 && SameDevice(status, device));
  }
  return open;
}

}  // namespace

DeviceHolder HolderNamed(int pid) {
  DeviceHolder holder{pid, ""};
  std::ifstream name(kProcesses / std::to_string(pid) / "comm");
  std::getline(name, holder.name);
  std::erase_if(holder.name, [](char c) { return c < ' ' || c > '~'; });
  return holder;
}

std::optional<DeviceHolder> FindOpener(const struct stat& device) {
  for (const fs::path& process : EntriesOf(kProcesses)) {
    const auto pid = PidOf(process);
    if (pid && *pid != getpid() && HasOpen(process, device)) return HolderNamed(*pid);
  }
  return std::nullopt;
}

DeviceHolder FindLocker(const struct stat& device) {
  char place[64];
  std::snprintf(place, sizeof place, " %02x:%02x:%llu ", major(device.st_dev), minor(device.st_dev),
                static_cast<unsigned long long>(device.st_ino));
  std::ifstream locks(kProcesses / "locks");
  for (std::string line; std::getline(locks, line);) {
    int pid = 0;
    const std::size_t at = line.find(place);
    if (at == std::string::npos || line.find("->") != std::string::npos) continue;
    const std::size_t before = line.rfind(' ', at - 1);
    if (before != std::string::npos) pid = std::atoi(line.c_str() + before);
    if (line.find("FLOCK") != std::string::npos && pid > 0 && pid != getpid()) return HolderNamed(pid);
  }
  return {};
}

}  // namespace tavlo
