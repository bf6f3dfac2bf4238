// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tavlo {

/// The commands that were entered in the drive terminal in this session. Walking through them starts at the
/// newest one and comes back to what was being written.
class CommandRecall {
 public:
  static constexpr std::size_t kCommands = 100;

  /// Adds a command, unless it is empty or the same as the last one, and ends the walk.
  void Add(std::string command);
  /// Return the command to show instead of `shown`; nothing at either end.
  [[nodiscard]] std::optional<std::string> Older(const std::string& shown);
  [[nodiscard]] std::optional<std::string> Newer();

 private:
  std::vector<std::string> commands_;
  /// What is shown on the walk; the number of commands while there is none.
  std::size_t at_ = 0;
  /// What was being written when the walk began.
  std::string draft_;
};

}  // namespace tavlo
