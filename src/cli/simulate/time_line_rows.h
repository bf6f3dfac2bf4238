// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>

#include "cli/console/console.h"
#include "cli/simulate/happening.h"
#include "session/source.h"

namespace tavlo::cli {

/// Prints the time line of a simulated run, a row for each thing that happens.
class TimeLineRows {
 public:
  TimeLineRows(Console& console, const Source& source);

  void Saw(const Happening& happening);
  /// Prints what has been seen so far; before that, rows may be kept.
  void Send();
  /// Prints what is to be said at the end.
  void Summarise(const RunSummary& summary, double limit);

 private:
  void Row(double seconds, const std::string& text);
  void LineRow(const Happening& happening, std::string_view event);
  void TellStarted();
  [[nodiscard]] const std::string& TextOf(int line) const { return texts_[static_cast<std::size_t>(line)]; }
  [[nodiscard]] std::string TextOf(const Happening& happening) const;

  Console& console_;
  const Source& source_;
  std::array<std::string, kLines> texts_;
  std::string rows_;
  /// A line that has started: if it finishes at once, one row says so.
  std::optional<Happening> started_;
  struct Waited {
    int times = 0;
    double seconds = 0;
  };
  std::map<int, Waited> waited_;
};

}  // namespace tavlo::cli
