// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"
#include "platform/state_folder.h"
#include "session/run_log.h"
#include "session/run_rows.h"

namespace tavlo {

/// The logs of the last runs, each a CSV file of a folder that outlives the session. A file there that is not
/// named like a run is never touched, nor is the run of another Composer that is up.
class RunKeep {
 public:
  static constexpr std::size_t kRuns = 10;
  /// A file does not grow beyond this by more than what one Keep() adds.
  static constexpr std::size_t kMostBytes = 4U << 20;

  explicit RunKeep(StateFolder& folder) : folder_(folder) {}

  /// Keeps what the log has gained since the last call. Called now and then while a run is open, which adds
  /// to its file and waits for no disk; and once after it was closed, which replaces the file by the whole
  /// log. Of a new run, makes the file and removes that of the oldest.
  Outcome Keep(RunLog& log);

  /// The name of the last run's file; empty before the first one.
  [[nodiscard]] const std::string& Name() const { return name_; }
  /// Returns the names of the kept runs, newest first.
  [[nodiscard]] std::vector<std::string> Names() const;
  /// Returns the row of a run's begin; nothing if the file cannot be read or holds no log.
  [[nodiscard]] std::optional<RunRow> BeginOf(const std::string& name) const;
  /// Returns the rows of a run, or nothing in the same case.
  [[nodiscard]] std::optional<std::vector<RunRow>> Read(const std::string& name) const;

 private:
  void TakeName(std::time_t began);
  void RemoveOldest();
  Outcome Replace(const RunLog& log);
  Outcome Add(const RunLog& log);

  StateFolder& folder_;
  int run_ = 0;
  std::string name_;
  bool whole_ = false;
  /// How many of the log's events the file holds, and its size. None while there is no file.
  std::optional<std::uint64_t> kept_;
  std::size_t bytes_ = 0;
};

/// Whether a file of this name holds a run.
[[nodiscard]] bool IsRunName(std::string_view name);

}  // namespace tavlo
