// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/uucp_locks.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace tavlo {
namespace {

constexpr std::string_view kDevices = "/dev/";
/// The number of a process in ten places and an end of line.
constexpr std::size_t kPidWidth = 10;

FileDescriptor Open(const std::string& path, int flags) {
  return FileDescriptor(open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, 0644));
}

std::vector<std::string> FilesOf(const std::string& folder, const std::string& device) {
  const std::string_view path = device;
  std::string whole(path.starts_with(kDevices) ? path.substr(kDevices.size()) : path);
  std::ranges::replace(whole, '/', '_');
  const std::string_view last = path.substr(path.rfind('/') + 1);
  std::vector<std::string> files = {folder + "/LCK.." + std::string(last)};
  if (whole != last) files.push_back(folder + "/LCK.." + whole);
  return files;
}

/// The process that a lock names, as digits or as the four bytes of a number; 0 for neither. One of the four
/// is zero, because numbers of processes do not grow so large, and no text has a zero.
pid_t PidIn(std::string_view content) {
  pid_t pid = 0;
  if (content.size() == sizeof pid && content.find('\0') != std::string_view::npos) {
    std::memcpy(&pid, content.data(), sizeof pid);
    return std::max(pid, 0);
  }
  const std::size_t first = std::min(content.find_first_not_of(' '), content.size());
  const auto [end, error] = std::from_chars(content.data() + first, content.data() + content.size(), pid);
  const bool ends_there = end == content.data() + content.size() || *end == '\n' || *end == ' ';
  return error == std::errc() && ends_there ? std::max(pid, 0) : 0;
}

pid_t PidIn(const FileDescriptor& file) {
  std::array<char, 32> content{};
  const ssize_t count = pread(file.Get(), content.data(), content.size(), 0);
  return count > 0 ? PidIn(std::string_view(content.data(), static_cast<std::size_t>(count))) : 0;
}

bool IsStillNamed(const FileDescriptor& file, const std::string& path) {
  struct stat by_descriptor {};
  struct stat by_name {};
  return fstat(file.Get(), &by_descriptor) == 0 && lstat(path.c_str(), &by_name) == 0 &&
         by_descriptor.st_dev == by_name.st_dev && by_descriptor.st_ino == by_name.st_ino;
}

bool Lives(pid_t pid) {
  return kill(pid, 0) == 0 || errno != ESRCH;
}

/// Removes the lock of a process that has ended, unless somebody else is about to take it over.
bool RemoveLeftover(const FileDescriptor& file, const std::string& path) {
  return flock(file.Get(), LOCK_EX | LOCK_NB) == 0 && IsStillNamed(file, path) && unlink(path.c_str()) == 0;
}

std::optional<UucpHold> HoldBy(const std::string& path) {
  const FileDescriptor file = Open(path, O_RDONLY | O_NONBLOCK);
  if (!file.Valid()) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? std::optional(UucpHold{path, 0}) : std::nullopt;
  }
  const pid_t pid = PidIn(file);
  // A lock with our own number is ours if it is locked; otherwise it belongs to an earlier process with that
  // number.
  const bool lives = pid != 0 && (pid == getpid() ? flock(file.Get(), LOCK_EX | LOCK_NB) != 0 : Lives(pid));
  if (pid == 0 || lives) return UucpHold{path, pid};
  return RemoveLeftover(file, path) ? std::nullopt : std::optional(UucpHold{path, 0});
}

/// The locks that this process must remove when it ends by exit(), which does not close the port.
std::vector<std::string>& FilesToTakeAlong() {
  static std::vector<std::string> files;
  return files;
}

void RemoveIfOurs(const std::string& path) {
  const FileDescriptor file = Open(path, O_RDONLY | O_NONBLOCK);
  if (file.Valid() && PidIn(file) == getpid()) unlink(path.c_str());
}

void TakeAlong(const std::string& path) {
  static const bool registered = [] {
    FilesToTakeAlong();
    return std::atexit([] { std::ranges::for_each(FilesToTakeAlong(), RemoveIfOurs); }) == 0;
  }();
  if (registered) FilesToTakeAlong().push_back(path);
}

/// Makes the lock file and locks it. Returns no descriptor if there is one already or none can be made.
FileDescriptor MakeLock(const std::string& path) {
  FileDescriptor file = Open(path, O_RDWR | O_CREAT | O_EXCL);
  if (!file.Valid()) return file;
  const std::string digits = std::to_string(getpid());
  const std::string content =
      std::string(kPidWidth - std::min(kPidWidth, digits.size()), ' ') + digits + '\n';
  const bool written =
      write(file.Get(), content.data(), content.size()) == static_cast<ssize_t>(content.size());
  if (written && fchmod(file.Get(), 0644) == 0 && flock(file.Get(), LOCK_EX | LOCK_NB) == 0) return file;
  unlink(path.c_str());
  return FileDescriptor();
}

}  // namespace

std::optional<UucpHold> UucpLocks::FindHold(const std::vector<std::string>& devices) const {
  for (const std::string& device : devices) {
    for (const std::string& file : FilesOf(folder_, device)) {
      if (const auto hold = HoldBy(file)) return hold;
    }
  }
  return std::nullopt;
}

std::optional<UucpHold> UucpLocks::Set(const std::string& device) {
  for (const std::string& path : FilesOf(folder_, device)) {
    files_.push_back({path, MakeLock(path)});
    TakeAlong(path);
    if (files_.back().lock.Valid()) continue;
    const auto hold = HoldBy(path);
    if (!hold || hold->pid == getpid()) continue;
    Release();
    return hold;
  }
  return std::nullopt;
}

void UucpLocks::Release() {
  for (const File& file : files_) {
    std::erase(FilesToTakeAlong(), file.path);
    if (file.lock.Valid() && IsStillNamed(file.lock, file.path)) unlink(file.path.c_str());
  }
  files_.clear();
}

}  // namespace tavlo
