// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "platform/services.h"

namespace tavlo {

// The services that need Qt but no window.

class QtClock : public Clock {
 public:
  [[nodiscard]] double Timer() override;
};

/// Needs a QCoreApplication.
class QtEventLoop : public EventLoop {
 public:
  void Yield() override;
  void WaitSecs(double seconds) override;
};

/// On QSettings. Each application's settings are in a file or registry key of their own.
class QtSettingsStore : public SettingsStore {
 public:
  [[nodiscard]] std::string Get(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view fallback) override;
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override;
};

/// Paths are in the file system's own encoding.
class QtFileStore : public FileStore {
 public:
  Outcome Replace(const std::string& path, std::string_view bytes) override;
  [[nodiscard]] std::optional<std::string> Read(const std::string& path, std::size_t limit) override;
};

}  // namespace tavlo
