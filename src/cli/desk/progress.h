// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "cli/console/console.h"
#include "cli/console/stopwatch.h"
#include "platform/services.h"

namespace tavlo::cli {

/// The progress of a transfer as one line of a terminal: bar, phase and seconds left.
class ConsoleProgress : public ProgressForm {
 public:
  ConsoleProgress(Console& console, Clock& clock) : console_(console), watch_(clock) {}

  void Show() override;
  void Hide() override { console_.Status(""); }
  /// The gauge starts anew in each phase; the bar goes by the bytes of the whole transfer instead.
  void Gauge(double) override {}
  void Phase(std::string_view name, int bytes_done, int bytes_total) override;

  /// A transfer has begun, so the hub's program is being replaced.
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

/// Seconds that the rest will take: at the pace so far, but never faster than the wire.
[[nodiscard]] double SecondsLeft(int bytes_done, int bytes_total, double elapsed);

/// "[#####.....] program lines, 3 s left"
[[nodiscard]] std::string ProgressBar(std::string_view phase, int bytes_done, int bytes_total,
                                      double seconds_left);

}  // namespace tavlo::cli
