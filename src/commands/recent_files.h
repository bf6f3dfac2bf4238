// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/services.h"

namespace tavlo {

inline constexpr int kRecentFiles = 8;

/// Returns the files that were loaded or saved last, the last one first. They need not exist any more.
[[nodiscard]] std::vector<std::string> RecentFiles(SettingsStore& settings);
/// Puts a file first among them.
void RememberFile(SettingsStore& settings, std::string_view path);
/// Takes a file out that could not be read.
void ForgetFile(SettingsStore& settings, std::string_view path);

}  // namespace tavlo
