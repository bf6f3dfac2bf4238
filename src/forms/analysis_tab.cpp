// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/analysis_tab.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr std::string_view kCant =
    "Analysis of this move can't be done, because speed or distance is an MMI variable and is therefore "
    "unknown at "
    "this time.";
constexpr std::string_view kRevSpaced = "R e v / s e c";
/// Rows from here on stay as they are when a later analysis has fewer.
constexpr int kFirstThatStays = 4;

std::string SecondsText(double seconds) {
  return Format(seconds, "####0.000");
}

}  // namespace

std::string spaced(std::string_view text) {
  std::string result;
  for (const char c : text) {
    result += c;
    result += ' ';
  }
  return result;
}

std::string SpacedSpeedUnit(AxisUnits units) {
  const AxisConfig& axes = units.program.Axis;
  return axes.UseUnits[units.axis] ? spaced(axes.UnitName[units.axis]) + "/ s e c" : std::string(kRevSpaced);
}

void AnalysisTab::AddTo(ControlTable& controls, std::function<Planned()> plan) {
  plan_ = std::move(plan);
  cant_.caption = kCant;
  cant_.visible = false;
  labels_[0].caption = "Accel";
  controls.Add("SSTab1", &tabs_, [this] { TurnPage(); });
  controls.Add("lblCant", &cant_);
  for (int i = 0; i < kRows; ++i) {
    const auto at = static_cast<std::size_t>(i);
    controls.Add(Element("StatLabel", i), &labels_[at]);
    controls.Add(Element("TimeBox", i), &times_[at]);
    controls.Add(Element("DistBox", i), &dists_[at]);
    labels_[at].visible = times_[at].visible = dists_[at].visible = false;
  }
  // Nothing to show before the first analysis.
  peak_.visible = out_time_.visible = out_dist_.visible = false;
  controls.Add("PeakSpeed", &peak_);
  over_.AddTo(controls, {"OptTime", "OptDistance"}, [this] { UpdateAnalysis(); });
  over_.Fill(0);
  controls.Add("Graph", &graph_);
}

void AnalysisTab::AddOutputTo(ControlTable& controls) {
  controls.Add("OutTime", &out_time_);
  controls.Add("OutDist", &out_dist_);
}

void AnalysisTab::Activate() {
  if (tabs_.page != 0) UpdateAnalysis();
}

void AnalysisTab::TurnPage() {
  if (tabs_.page == 0) {
    left_first_ = false;
    return;
  }
  if (!std::exchange(left_first_, true)) UpdateAnalysis();
}

void AnalysisTab::ShowHideStats(int rows) {
  for (int i = 0; i < kRows; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (i >= rows && i >= kFirstThatStays) continue;
    labels_[at].visible = times_[at].visible = dists_[at].visible = i < rows;
  }
}

void AnalysisTab::UpdateAnalysis() {
  const Planned planned = plan_();
  cant_.visible = !planned.move;
  profile_ = planned.move ? Analyse(*planned.move) : std::nullopt;
  trace_.reset();
  if (!profile_) return ShowHideStats(0);
  const AxisUnits units = planned.units;
  ShowHideStats(static_cast<int>(profile_->rows.size()));
  for (std::size_t i = 0; i < profile_->rows.size(); ++i) {
    labels_[i].caption = profile_->rows[i].label;
    times_[i].caption = SecondsText(profile_->rows[i].time);
    dists_[i].caption = FormatDist(units.program, profile_->rows[i].dist, units.axis);
  }
  peak_.visible = true;
  peak_.caption = FormatSpeed(units.program, profile_->peak, units.axis);
  graph_.trace.reset();
  if (planned.output) {
    trace_ = TraceOutput(*planned.move, planned.output->change, *profile_);
    out_time_.visible = out_dist_.visible = true;
    out_time_.caption = SecondsText(trace_->time);
    out_dist_.caption = FormatDist(units.program, trace_->dist, units.axis);
    GraphOutput(planned, *trace_);
  }
  GraphMove(planned, *profile_);
}

void AnalysisTab::GraphMove(const Planned& planned, const MoveProfile& profile) {
  const auto [program, axis] = planned.units;
  graph_.curve = {};
  for (const ProfilePoint& point : profile.points) {
    graph_.curve.x.push_back(OverTime() ? point.time : ShownDist(program, point.dist, axis));
    graph_.curve.y.push_back(ShownSpeed(program, point.speed, axis));
  }
  const std::string dist = program.Axis.UseUnits[axis] ? program.Axis.UnitName[axis] : "steps";
  graph_.x_caption = OverTime() ? "sec" : dist;
  graph_.y_caption = planned.y_caption;
}

void AnalysisTab::GraphOutput(const Planned& planned, const OutputTrace& trace) {
  const auto [program, axis] = planned.units;
  graph_.trace = Series{};
  if (!planned.output->known) return;
  for (const OutputPoint& point : trace.points) {
    graph_.trace->x.push_back(OverTime() ? point.time : ShownDist(program, point.dist, axis));
    graph_.trace->y.push_back(point.state);
  }
}

}  // namespace tavlo
