// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <optional>
#include <string>

#include "hubsim/mount/unique_fd.h"

namespace tavlo::hubsim {

/// Where the system keeps a folder for each user who is signed in.
inline constexpr const char* kUserFolders = "/run/user";

/// The folder of this user's links to simulated hubs, made with mode 0700 if need be: `tavlo-composer` in
/// XDG_RUNTIME_DIR, else in this user's folder below `user_folders`, where the system keeps one for each user
/// who is signed in; either only if it is this user's. Else `/tmp/tavlo-composer-{uid}`. Throws
/// std::runtime_error where the folder is not this user's alone.
[[nodiscard]] std::string RuntimeFolder(const std::string& user_folders = kUserFolders);

/// `{RuntimeFolder()}/comm{number}`.
[[nodiscard]] std::string CommLink(int number);
/// The number of the Comm whose link that is; empty for any other path.
[[nodiscard]] std::optional<int> CommOf(const std::string& link);

/// A symbolic link under a fixed name to wherever the hub's terminal is. While the object lives the name is
/// reserved by a locked file beside it, so that a link left by a killed hub is told from a living one's.
class DeviceLink {
 public:
  /// Throws std::runtime_error if a living hub holds the name, or something else than a link to a pseudo
  /// terminal stands there.
  explicit DeviceLink(std::string path);
  DeviceLink(const DeviceLink&) = delete;
  DeviceLink& operator=(const DeviceLink&) = delete;
  ~DeviceLink();

  [[nodiscard]] const std::string& Path() const { return path_; }
  /// Makes the link, or turns it to another target. Throws std::runtime_error.
  void PointTo(const std::string& target);
  /// Removes the link; the name stays reserved.
  void Remove();

 private:
  void Lock();

  std::string path_;
  std::string lock_path_;
  std::string target_;
  UniqueFd lock_;
};

}  // namespace tavlo::hubsim
