// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <string>

#include "platform/services.h"

namespace tavlo {

// The services that need Qt but no window.

/// Asks the system for the zone's offset once a minute alone: that takes fifty times as long as the time
/// does.
class QtClock : public Clock {
 public:
  [[nodiscard]] double Timer() override;

 private:
  std::int64_t minute_ = -1;
  std::int64_t offset_ms_ = 0;
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
