// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <map>
#include <optional>
#include <vector>

#include "cli/simulate/happening.h"
#include "hubsim/hub.h"

namespace tavlo::cli {

/// A stretch of the run, in seconds.
struct Span {
  double from = 0;
  double to = 0;
  int line = 0;
};

/// Keeps what a picture of a run shows: the speed of each axis, as points between which it changes evenly,
/// which line ran, and when the program waited for the world.
class SpeedTracks {
 public:
  /// `start` is the hub's time at the start of the run. The hub must outlive this.
  SpeedTracks(const hubsim::Hub& hub, double start) : hub_(hub), start_(start) {}

  void Saw(const Happening& happening);
  void Passes(double from, double to);
  /// The run is over.
  void End(const RunSummary& summary);

  using Points = std::vector<hubsim::SpeedPoint>;
  /// Times are seconds of the run. Empty for an axis that has not moved.
  [[nodiscard]] const std::array<Points, hubsim::kAxisCount>& Axes() const { return axes_; }
  [[nodiscard]] const std::vector<Span>& Lines() const { return lines_; }
  [[nodiscard]] const std::vector<Span>& Waits() const { return waits_; }
  [[nodiscard]] double Total() const { return total_; }

 private:
  static void Add(Points& points, const hubsim::SpeedPoint& point);

  const hubsim::Hub& hub_;
  double start_;
  double total_ = 0;
  std::array<Points, hubsim::kAxisCount> axes_;
  std::vector<Span> lines_;
  std::vector<Span> waits_;
  std::optional<Span> running_;
  std::map<int, double> waiting_;
};

}  // namespace tavlo::cli
