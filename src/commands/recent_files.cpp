// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/recent_files.h"

#include "platform/number_format.h"

namespace tavlo {
namespace {

std::string KeyOf(int place) {
  return "File" + Joined(place + 1);
}

void Store(SettingsStore& settings, const std::vector<std::string>& files) {
  for (int place = 0; place < kRecentFiles; ++place) {
    const bool there = place < static_cast<int>(files.size());
    settings.Save(kSettingsApplication, "Recent", KeyOf(place), there ? files[place] : std::string());
  }
}

}  // namespace

std::vector<std::string> RecentFiles(SettingsStore& settings) {
  std::vector<std::string> files;
  for (int place = 0; place < kRecentFiles; ++place) {
    std::string file = settings.Get(kSettingsApplication, "Recent", KeyOf(place), "");
    if (!file.empty()) files.push_back(std::move(file));
  }
  return files;
}

void RememberFile(SettingsStore& settings, std::string_view path) {
  std::vector<std::string> files = RecentFiles(settings);
  std::erase(files, path);
  files.insert(files.begin(), std::string(path));
  Store(settings, files);
}

void ForgetFile(SettingsStore& settings, std::string_view path) {
  std::vector<std::string> files = RecentFiles(settings);
  if (std::erase(files, path) > 0) Store(settings, files);
}

}  // namespace tavlo
