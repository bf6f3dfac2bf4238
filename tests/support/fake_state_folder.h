// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/state_folder.h"

namespace tavlo::testing {

/// A disk that several folders of processes can stand on.
struct FakeStateDisk {
  std::map<std::string, std::string> files;
  std::set<std::string> claimed;
  /// Why nothing can be written; empty if it can.
  std::string broken;
  int writes = 0;
  int appends = 0;
};

/// The folder as one process has it. Its claims end with it, as those of a process that is killed.
class FakeStateFolder : public StateFolder {
 public:
  explicit FakeStateFolder(FakeStateDisk& disk) : disk_(disk) {}
  ~FakeStateFolder() override {
    for (const std::string& name : own_) disk_.claimed.erase(name);
  }
  FakeStateFolder(const FakeStateFolder&) = delete;
  FakeStateFolder& operator=(const FakeStateFolder&) = delete;

  Outcome Replace(const std::string& name, std::string_view bytes) override {
    if (!disk_.broken.empty()) return Outcome::Failed(disk_.broken);
    disk_.files[name] = bytes;
    ++disk_.writes;
    return {};
  }
  Outcome Append(const std::string& name, std::string_view bytes) override {
    if (!disk_.broken.empty()) return Outcome::Failed(disk_.broken);
    if (!disk_.files.contains(name)) return Outcome::Failed("No such file or directory");
    disk_.files[name] += bytes;
    ++disk_.appends;
    return {};
  }
  [[nodiscard]] std::optional<std::string> Read(const std::string& name, std::size_t limit) override {
    const auto found = disk_.files.find(name);
    if (found == disk_.files.end()) return std::nullopt;
    return found->second.substr(0, limit);
  }
  void Remove(const std::string& name) override {
    disk_.files.erase(name);
    if (own_.erase(name) > 0) disk_.claimed.erase(name);
  }
  [[nodiscard]] std::vector<std::string> Names() override {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : disk_.files) names.push_back(name);
    return names;
  }
  [[nodiscard]] bool Claim(const std::string& name) override {
    if (own_.contains(name)) return true;
    if (!disk_.claimed.insert(name).second) return false;
    own_.insert(name);
    return true;
  }

 private:
  FakeStateDisk& disk_;
  std::set<std::string> own_;
};

}  // namespace tavlo::testing
