// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/file_replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "qt/system_reason.h"

namespace tavlo {
namespace {

constexpr mode_t kPermissions = 0777;
constexpr mode_t kNewFile = 0666;

/// While one lives, a file that reaches the size allowed to this process fails the write instead of ending
/// the process.
class NoSizeSignal {
 public:
  NoSizeSignal() {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGXFSZ, &ignore, &old_);
  }
  ~NoSizeSignal() { sigaction(SIGXFSZ, &old_, nullptr); }
  NoSizeSignal(const NoSizeSignal&) = delete;
  NoSizeSignal& operator=(const NoSizeSignal&) = delete;

 private:
  struct sigaction old_ {};
};

/// A file that is written to replace another. It is removed again unless it has replaced it. Each step
/// returns false and sets errno if it fails.
class NewFile {
 public:
  explicit NewFile(std::string target) : target_(std::move(target)) {}
  ~NewFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!name_.empty()) unlink(name_.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  [[nodiscard]] bool Create() {
    // A file of this name is what a process of the same number left behind when it was ended.
    constexpr int kTries = 100;
    for (int number = 1; number <= kTries; ++number) {
      const std::string name = target_ + ".new-" + std::to_string(getpid()) + "-" + std::to_string(number);
      descriptor_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFile);
      if (descriptor_ >= 0) name_ = name;
      if (descriptor_ >= 0 || errno != EEXIST) break;
    }
    return descriptor_ >= 0;
  }

  [[nodiscard]] bool Permit(mode_t mode) { return fchmod(descriptor_, mode & kPermissions) == 0; }

  [[nodiscard]] bool Write(std::string_view bytes) { return WriteAll(descriptor_, bytes); }

  /// A file system that has no such operation has nothing to lose by it.
  [[nodiscard]] bool Sync() { return fsync(descriptor_) == 0 || errno == EINVAL || errno == ENOSYS; }

  /// The last point at which a network disk may report that it is full.
  [[nodiscard]] bool Close() { return close(std::exchange(descriptor_, -1)) == 0; }

  [[nodiscard]] bool TakeName() {
    if (rename(name_.c_str(), target_.c_str()) != 0) return false;
    name_.clear();
    return true;
  }

 private:
  std::string target_;
  std::string name_;
  int descriptor_ = -1;
};

/// Where the links of a name lead to, which need not exist.
std::filesystem::path Followed(std::filesystem::path file) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int link = 0; link < kMostLinks && std::filesystem::is_symlink(file, error); ++link) {
    const std::filesystem::path target = std::filesystem::read_symlink(file, error);
    if (error) break;
    file = file.parent_path() / target;
  }
  return file;
}

/// So that the name, too, outlasts a power cut. Without it the old file may come back then, whole.
void SyncFolderOf(const std::filesystem::path& file) {
  const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  [[maybe_unused]] const int synced = fsync(descriptor);
  close(descriptor);
}

}  // namespace

bool WriteAll(int descriptor, std::string_view bytes) {
  const NoSizeSignal no_signal;
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written == 0) errno = EIO;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

Outcome ReplaceFile(const std::string& path, std::string_view bytes) {
  const std::filesystem::path target = Followed(path);
  struct stat old {};
  const bool is_there = stat(target.c_str(), &old) == 0;
  if (!is_there && errno != ENOENT) return Outcome::Failed(SystemReason(errno));
  // A rename over a device would take the device away.
  if (is_there && !S_ISREG(old.st_mode)) return Outcome::Failed(path + " is not a file");
  if (is_there && access(target.c_str(), W_OK) != 0) return Outcome::Failed(SystemReason(errno));
  NewFile file(target);
  const bool replaced = file.Create() && (!is_there || file.Permit(old.st_mode)) && file.Write(bytes) &&
                        file.Sync() && file.Close() && file.TakeName();
  if (!replaced) return Outcome::Failed(SystemReason(errno));
  SyncFolderOf(target);
  return {};
}

}  // namespace tavlo
