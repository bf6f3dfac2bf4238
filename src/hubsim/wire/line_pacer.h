// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace tavlo::hubsim {

/// Bytes that arrive together, and when.
struct Arrival {
  double at = 0;
  std::string bytes;
};

/// One direction of the serial line. Unpaced, what is sent together arrives together, at once. Paced, each
/// byte takes 1/1920 s and none overtakes another. The latency comes on top. Times are seconds.
class LinePacer {
 public:
  LinePacer(bool paced, double latency_s) : paced_(paced), latency_(latency_s) {}

  void Send(std::string_view bytes, double at);
  [[nodiscard]] std::optional<double> NextArrival() const;
  /// The next that has arrived by `now`, in order.
  [[nodiscard]] std::optional<Arrival> Take(double now);
  [[nodiscard]] bool Empty() const { return under_way_.empty(); }
  /// What is under way is lost, and the line is free at once.
  void Clear() {
    under_way_.clear();
    line_free_at_ = 0;
  }

 private:
  bool paced_;
  double latency_;
  double line_free_at_ = 0;
  std::deque<Arrival> under_way_;
};

}  // namespace tavlo::hubsim
