// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "cli/console/console.h"
#include "platform/services.h"
#include "platform/stopwatch.h"

namespace tavlo::cli {

/// Shows the progress of a transfer in one line of a terminal: bar, phase and seconds left.
class ConsoleProgress : public ProgressForm {
 public:
  ConsoleProgress(Console& console, Clock& clock) : console_(console), watch_(clock) {}

  void Show() override;
  void Hide() override { console_.Status(""); }
  /// Ignored: the gauge restarts in each phase, and the bar counts the bytes of the whole transfer.
  void Gauge(double) override {}
  void Phase(std::string_view name, int bytes_done, int bytes_total) override;

  /// Whether a transfer has begun, so that the hub's program is being replaced.
  [[nodiscard]] bool Started() const { return started_; }
  /// Bytes that have been sent and acknowledged.
  [[nodiscard]] int BytesDone() const { return bytes_done_; }
  [[nodiscard]] double Seconds() { return watch_.Seconds(); }

 private:
  Console& console_;
  Stopwatch watch_;
  bool started_ = false;
  double last_shown_ = -1;
  int bytes_done_ = 0;
};

/// Returns how many seconds the rest will take at the pace so far, but not less than the wire needs.
[[nodiscard]] double SecondsLeft(int bytes_done, int bytes_total, double elapsed);

/// Returns for example "[#####.....] program lines, 3 s left".
[[nodiscard]] std::string ProgressBar(std::string_view phase, int bytes_done, int bytes_total,
                                      double seconds_left);

}  // namespace tavlo::cli
