// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <map>
#include <string>

#include "platform/state_folder.h"
#include "qt/file_descriptor.h"

namespace tavlo {

/// Returns the folder `room` among those of this program in the user's state folder ($XDG_STATE_HOME, or
/// ~/.local/state).
[[nodiscard]] std::string StateFolderOf(const std::string& room);

/// A folder on the disk. It is made at the first use, with permissions for its owner alone. A claimed name
/// has an empty file beside it, ".lock" behind its name, on which the owner holds a lock.
class QtStateFolder : public StateFolder {
 public:
  explicit QtStateFolder(std::string folder);

  Outcome Replace(const std::string& name, std::string_view bytes) override;
  Outcome Append(const std::string& name, std::string_view bytes) override;
  [[nodiscard]] std::optional<std::string> Read(const std::string& name, std::size_t limit) override;
  void Remove(const std::string& name) override;
  [[nodiscard]] std::vector<std::string> Names() override;
  [[nodiscard]] bool Claim(const std::string& name) override;

 private:
  [[nodiscard]] std::string PathOf(const std::string& name) const;

  std::string folder_;
  std::map<std::string, FileDescriptor> locks_;
};

}  // namespace tavlo
