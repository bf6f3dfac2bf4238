// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/mount/device_link.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace tavlo::hubsim {
namespace {

constexpr std::string_view kPseudoTerminals = "/dev/pts/";
constexpr int kCommCount = 8;

[[noreturn]] void Fail(const std::string& what, int error) {
  throw std::runtime_error(what + ": " + std::generic_category().message(error));
}

bool IsFolderOfThisUser(const std::string& path) {
  struct stat status {};
  return path.starts_with('/') && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == ::getuid();
}

std::string FolderPath(const std::string& user_folders) {
  const std::string uid = std::to_string(::getuid());
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  const std::string of_user = user_folders + "/" + uid;
  if (runtime != nullptr && IsFolderOfThisUser(runtime)) return std::string(runtime) + "/tavlo-composer";
  if (IsFolderOfThisUser(of_user)) return of_user + "/tavlo-composer";
  return "/tmp/tavlo-composer-" + uid;
}

/// Where the link at `path` leads, empty if there is nothing. Throws for what is no link.
std::string CurrentTarget(const std::string& path) {
  std::error_code error;
  const auto status = std::filesystem::symlink_status(path, error);
  if (!std::filesystem::exists(status)) return {};
  if (!std::filesystem::is_symlink(status))
    throw std::runtime_error(path + " is there already and is no link.");
  return std::filesystem::read_symlink(path, error).string();
}

std::string HolderOf(int lock) {
  std::array<char, 32> text{};
  const ssize_t count = ::pread(lock, text.data(), text.size(), 0);
  const std::string pid(text.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
  return pid.empty() ? "another process" : "process " + pid;
}

bool SameFile(int fd, const std::string& path) {
  struct stat by_fd {};
  struct stat by_name {};
  if (::fstat(fd, &by_fd) != 0 || ::stat(path.c_str(), &by_name) != 0) return false;
  return by_fd.st_dev == by_name.st_dev && by_fd.st_ino == by_name.st_ino;
}

}  // namespace

std::string RuntimeFolder(const std::string& user_folders) {
  const std::string folder = FolderPath(user_folders);
  if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) Fail("Cannot make " + folder, errno);
  struct stat status {};
  if (::lstat(folder.c_str(), &status) != 0) Fail("Cannot look at " + folder, errno);
  if (!S_ISDIR(status.st_mode) || status.st_uid != ::getuid() || (status.st_mode & 077) != 0) {
    throw std::runtime_error(folder + " is not a folder of this user alone. Remove it, or choose --link.");
  }
  return folder;
}

std::string CommLink(int number) {
  return RuntimeFolder() + "/comm" + std::to_string(number);
}

std::optional<int> CommOf(const std::string& link) {
  const std::string folder = FolderPath(kUserFolders);
  for (int number = 1; number <= kCommCount; ++number) {
    if (link == folder + "/comm" + std::to_string(number)) return number;
  }
  return std::nullopt;
}

DeviceLink::DeviceLink(std::string path) : path_(std::move(path)), lock_path_(path_ + ".lock") {
  Lock();
  const std::string target = CurrentTarget(path_);
  if (!target.empty() && !target.starts_with(kPseudoTerminals)) {
    ::unlink(lock_path_.c_str());
    throw std::runtime_error(path_ + " is a link to " + target + ", which is no simulated hub's.");
  }
}

/// A holder that goes removes the lock file, so the one that was locked must still be the one of that name.
void DeviceLink::Lock() {
  while (true) {
    lock_.Reset(::open(lock_path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!lock_.Valid()) Fail("Cannot make " + lock_path_, errno);
    if (::flock(lock_.Get(), LOCK_EX | LOCK_NB) != 0) {
      if (errno != EWOULDBLOCK) Fail("Cannot lock " + lock_path_, errno);
      throw std::runtime_error(path_ + " belongs to a running hub (" + HolderOf(lock_.Get()) + ").");
    }
    if (SameFile(lock_.Get(), lock_path_)) break;
  }
  const std::string pid = std::to_string(::getpid());
  if (::ftruncate(lock_.Get(), 0) != 0 || ::pwrite(lock_.Get(), pid.data(), pid.size(), 0) < 0) {
    Fail("Cannot write " + lock_path_, errno);
  }
}

DeviceLink::~DeviceLink() {
  Remove();
  ::unlink(lock_path_.c_str());
}

void DeviceLink::PointTo(const std::string& target) {
  // Made under another name and moved into place: whoever opens the name finds the old link or the new one.
  const std::string fresh = path_ + ".new";
  ::unlink(fresh.c_str());
  if (::symlink(target.c_str(), fresh.c_str()) != 0) Fail("Cannot make the link " + path_, errno);
  if (::rename(fresh.c_str(), path_.c_str()) != 0) Fail("Cannot make the link " + path_, errno);
  target_ = target;
}

void DeviceLink::Remove() {
  if (target_.empty()) return;
  std::error_code error;
  if (std::filesystem::read_symlink(path_, error) == target_) ::unlink(path_.c_str());
  target_.clear();
}

}  // namespace tavlo::hubsim
