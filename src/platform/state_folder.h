// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"

namespace tavlo {

/// A folder of files that the program keeps for this user between its sessions. Nobody else can read them. A
/// name is a plain file name of letters, digits, dots and hyphens; it does not begin with a dot or end in
/// ".lock".
class StateFolder {
 public:
  virtual ~StateFolder() = default;
  /// Replaces the whole file or leaves the old one. Makes the folder if there is none.
  virtual Outcome Replace(const std::string& name, std::string_view bytes) = 0;
  /// Adds to the end of the file, which must be there. Waits for no disk, so that a machine can be served
  /// meanwhile: a power cut may take or tear what was added last, the end of the process takes nothing.
  virtual Outcome Append(const std::string& name, std::string_view bytes) {
    const auto old = Read(name, std::string().max_size());
    return old ? Replace(name, *old + std::string(bytes)) : Outcome::Failed("there is no file to add to");
  }
  /// Returns at most `limit` bytes of the file; nothing if it cannot be read.
  [[nodiscard]] virtual std::optional<std::string> Read(const std::string& name, std::size_t limit) = 0;
  /// Removes the file, if it is there, and gives the name up.
  virtual void Remove(const std::string& name) = 0;
  /// Returns the names of the files there are, sorted.
  [[nodiscard]] virtual std::vector<std::string> Names() = 0;
  /// Makes the name this process's own until it is removed or the process ends, however that comes about.
  /// Returns false if another process has it.
  [[nodiscard]] virtual bool Claim(const std::string& name) = 0;
};

}  // namespace tavlo
