// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/speed_tracks.h"

#include <cmath>

namespace tavlo::cli {
namespace {

/// Far below what can be seen, in steps/s.
constexpr double kNoDifference = 1e-6;

/// Whether the middle one of three points lies on the straight line of the others.
bool IsBetween(const hubsim::SpeedPoint& a, const hubsim::SpeedPoint& b, const hubsim::SpeedPoint& c) {
  const double length = c.time - a.time;
  if (length <= 0) return false;
  const double expected = a.steps_s + (c.steps_s - a.steps_s) * (b.time - a.time) / length;
  return std::abs(expected - b.steps_s) < kNoDifference * (1 + std::abs(expected));
}

}  // namespace

void SpeedTracks::Add(Points& points, const hubsim::SpeedPoint& point) {
  const std::size_t count = points.size();
  if (count > 0 && points.back().time == point.time && points.back().steps_s == point.steps_s) return;
  if (count > 1 && IsBetween(points[count - 2], points[count - 1], point)) points.pop_back();
  points.push_back(point);
}

void SpeedTracks::Passes(double from, double to) {
  for (int axis = 0; axis < hub_.AxisCount(); ++axis) {
    Points& points = axes_[static_cast<std::size_t>(axis)];
    if (!hub_.Axis(axis).moving) {
      if (!points.empty() && points.back().steps_s != 0) Add(points, {from, 0});
      continue;
    }
    Add(points, {from, points.empty() ? 0 : points.back().steps_s});
    for (const hubsim::SpeedPoint& point : hub_.Course(axis, start_ + to)) {
      Add(points, {point.time - start_, point.steps_s});
    }
  }
}

void SpeedTracks::Saw(const Happening& happening) {
  const double now = happening.seconds;
  switch (happening.what) {
    case Happened::Started: running_ = Span{now, now, happening.line}; return;
    case Happened::WentOn:
    case Happened::Finished:
      if (!running_ || running_->line != happening.line) return;
      running_->to = now;
      if (running_->to > running_->from) lines_.push_back(*running_);
      running_.reset();
      return;
    case Happened::Waits: waiting_[happening.line] = now; return;
    case Happened::Waited:
      if (happening.waited > 0) waits_.push_back({now - happening.waited, now, happening.line});
      waiting_.erase(happening.line);
      return;
    case Happened::Output:
    case Happened::Display:
    case Happened::Act: return;
  }
}

void SpeedTracks::End(const RunSummary& summary) {
  total_ = summary.total;
  for (int axis = 0; axis < hub_.AxisCount(); ++axis) {
    Points& points = axes_[static_cast<std::size_t>(axis)];
    const bool cut = !hub_.Axis(axis).moving && !points.empty() && points.back().steps_s != 0;
    if (cut) Add(points, {total_, 0});
  }
  if (running_ && total_ > running_->from) lines_.push_back({running_->from, total_, running_->line});
  for (const auto& [line, since] : waiting_) {
    if (total_ > since) waits_.push_back({since, total_, line});
  }
}

}  // namespace tavlo::cli
