// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/command_recall.h"

#include <utility>

namespace tavlo {

void CommandRecall::Add(std::string command) {
  const bool again = !commands_.empty() && commands_.back() == command;
  if (!command.empty() && !again) commands_.push_back(std::move(command));
  if (commands_.size() > kCommands) commands_.erase(commands_.begin());
  at_ = commands_.size();
  draft_.clear();
}

std::optional<std::string> CommandRecall::Older(const std::string& shown) {
  if (at_ == 0) return std::nullopt;
  if (at_ == commands_.size()) draft_ = shown;
  return commands_[--at_];
}

std::optional<std::string> CommandRecall::Newer() {
  if (at_ == commands_.size()) return std::nullopt;
  return ++at_ == commands_.size() ? draft_ : commands_[at_];
}

}  // namespace tavlo
