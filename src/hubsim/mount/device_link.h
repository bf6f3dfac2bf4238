// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <optional>
#include <string>

#include "hubsim/mount/unique_fd.h"

namespace tavlo::hubsim {

/// Where the system keeps a folder for each user who is signed in.
inline constexpr const char* kUserFolders = "/run/user";

/// Returns the folder of this user's links to simulated hubs and makes it, with mode 0700, if it does not
/// exist. It is `tavlo-composer` in the first of these two that exists and belongs to this user:
/// XDG_RUNTIME_DIR, and the user's folder below `user_folders`. If neither does, it is
/// `/tmp/tavlo-composer-{uid}`. Throws std::runtime_error if the folder is not this user's alone.
[[nodiscard]] std::string RuntimeFolder(const std::string& user_folders = kUserFolders);

/// `{RuntimeFolder()}/comm{number}`.
[[nodiscard]] std::string CommLink(int number);
/// Returns the number of the Comm whose link `link` is; empty for any other path.
[[nodiscard]] std::optional<int> CommOf(const std::string& link);

/// A symbolic link under a fixed name to wherever the hub's terminal is. While the object lives a locked file
/// beside the link reserves the name, which tells the link of a living hub from one that a killed hub has
/// left.
class DeviceLink {
 public:
  /// Throws std::runtime_error if a living hub holds the name, or if there is anything there but a link to a
  /// pseudo terminal.
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
