// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_state_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

#include "qt/file_replacement.h"
#include "qt/qt_services.h"
#include "qt/system_reason.h"

namespace tavlo {
namespace {

constexpr std::string_view kLockEnding = ".lock";
/// What a replacement is called until it has replaced.
constexpr std::string_view kUnfinished = ".new-";
constexpr mode_t kFolderForOwner = 0700;
constexpr mode_t kFileForOwner = 0600;

bool MakeFolder(const std::string& folder) {
  std::error_code error;
  if (std::filesystem::is_directory(folder, error)) return chmod(folder.c_str(), kFolderForOwner) == 0;
  const std::filesystem::path above = std::filesystem::path(folder).parent_path();
  if (!std::filesystem::is_directory(above, error) && !MakeFolder(above)) return false;
  return mkdir(folder.c_str(), kFolderForOwner) == 0 || errno == EEXIST;
}

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

/// Whether the name still leads to the open file: whoever held it last may have removed it meanwhile.
bool LeadsTo(const std::string& path, int descriptor) {
  struct stat named {};
  struct stat open {};
  return stat(path.c_str(), &named) == 0 && fstat(descriptor, &open) == 0 && named.st_ino == open.st_ino &&
         named.st_dev == open.st_dev;
}

}  // namespace

std::string StateFolderOf(const std::string& room) {
  std::string above = Variable("XDG_STATE_HOME");
  if (!above.starts_with('/')) above = Variable("HOME") + "/.local/state";
  return above + "/tavlo-composer/" + room;
}

QtStateFolder::QtStateFolder(std::string folder) : folder_(std::move(folder)) {}

std::string QtStateFolder::PathOf(const std::string& name) const {
  return folder_ + "/" + name;
}

Outcome QtStateFolder::Replace(const std::string& name, std::string_view bytes) {
  if (!MakeFolder(folder_)) return Outcome::Failed(SystemReason(errno));
  // A file keeps its permissions when it is replaced, so it gets them before it holds anything.
  const std::string path = PathOf(name);
  const FileDescriptor made(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kFileForOwner));
  if (!made.Valid()) return Outcome::Failed(SystemReason(errno));
  return ReplaceFile(path, bytes);
}

Outcome QtStateFolder::Append(const std::string& name, std::string_view bytes) {
  const FileDescriptor file(open(PathOf(name).c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  if (!file.Valid()) return Outcome::Failed(SystemReason(errno));
  return WriteAll(file.Get(), bytes) ? Outcome() : Outcome::Failed(SystemReason(errno));
}

std::optional<std::string> QtStateFolder::Read(const std::string& name, std::size_t limit) {
  return QtFileStore().Read(PathOf(name), limit);
}

void QtStateFolder::Remove(const std::string& name) {
  std::error_code error;
  std::filesystem::remove(PathOf(name), error);
  if (locks_.contains(name)) std::filesystem::remove(PathOf(name) + std::string(kLockEnding), error);
  locks_.erase(name);
}

std::vector<std::string> QtStateFolder::Names() {
  std::vector<std::string> names;
  std::error_code error;
  for (std::filesystem::directory_iterator file(folder_, error), end; !error && file != end;
       file.increment(error)) {
    const std::string name = file->path().filename().string();
    std::error_code unknown;
    const bool passing = name.ends_with(kLockEnding) || name.find(kUnfinished) != std::string::npos;
    if (!passing && file->is_regular_file(unknown)) names.push_back(name);
  }
  std::ranges::sort(names);
  return names;
}

bool QtStateFolder::Claim(const std::string& name) {
  if (locks_.contains(name)) return true;
  if (!MakeFolder(folder_)) return false;
  const std::string path = PathOf(name) + std::string(kLockEnding);
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    FileDescriptor lock(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kFileForOwner));
    if (!lock.Valid() || flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) return false;
    if (!LeadsTo(path, lock.Get())) continue;
    locks_.emplace(name, std::move(lock));
    return true;
  }
  return false;
}

}  // namespace tavlo
