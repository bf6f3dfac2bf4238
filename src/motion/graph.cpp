// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "motion/graph.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/number_format.h"

namespace tavlo {
namespace {

// Shares of the picture: the grid's left edge and width, its base, its height with and without a band above
// it, the levels of the band.
constexpr double kLeft = 0.15;
constexpr double kWidth = 0.75;
constexpr double kBase = 0.8;
constexpr double kHeight = 0.7;
constexpr double kHeightUnderBand = 0.58;
constexpr double kHigh = 0.05;
constexpr double kLow = 0.15;

constexpr int kGridPen = 1;
constexpr int kCurvePen = 2;
/// From here on the x ticks count in thousands.
constexpr double kInThousands = 300000;
/// A y tick below it needs its decimals.
constexpr double kSmallStep = 0.1;

struct DivsRow {
  double up_to;
  int count;
  double step;
};
constexpr std::array kDivs = {DivsRow{1.5, 3, 0.5}, DivsRow{2, 4, 0.5}, DivsRow{2.5, 5, 0.5},
                              DivsRow{3, 6, 0.5},   DivsRow{4, 4, 1},   DivsRow{5, 5, 1},
                              DivsRow{6, 6, 1},     DivsRow{8, 4, 2}};

/// The power of ten at or below the value. A logarithm that is rounded would miss it at the powers
/// themselves.
double PowerOfTen(double value) {
  double power = std::pow(10, std::floor(std::log10(value)));
  while (power > value) power /= 10;
  while (power * 10 <= value) power *= 10;
  return power;
}

double FindMax(const std::vector<double>& values) {
  double max = 0;
  for (const double value : values) max = std::max(max, value);
  return max;
}

/// From data to places in the picture.
class Scale {
 public:
  Scale(double width, double height, GraphSize size)
      : x_origin_(kLeft * width),
        y_origin_(kBase * height),
        x_scale_(size.width / width),
        y_scale_(size.height / height) {}

  [[nodiscard]] double X(double x) const { return (x + x_origin_) * x_scale_; }
  [[nodiscard]] double Y(double y) const { return (y_origin_ - y) * y_scale_; }
  [[nodiscard]] Place At(double x, double y) const { return {X(x), Y(y)}; }

 private:
  double x_origin_;
  double y_origin_;
  double x_scale_;
  double y_scale_;
};

void DrawGrid(Graph& graph, const Scale& scale) {
  const auto [nx, sx] = graph.x_divisions;
  const auto [ny, sy] = graph.y_divisions;
  for (int i = 0; i <= nx; ++i)
    graph.grid.push_back({scale.At(i * sx, 0), scale.At(i * sx, ny * sy), kGridPen});
  for (int i = 0; i <= ny; ++i)
    graph.grid.push_back({scale.At(0, i * sy), scale.At(nx * sx, i * sy), kGridPen});
}

void DrawLabels(Graph& graph, const Scale& scale, double gap) {
  const auto x_captions = XCaptions(graph.x_divisions);
  for (std::size_t i = 0; i < x_captions.size(); ++i) {
    const double x = static_cast<double>(i) * graph.x_divisions.step;
    graph.x_labels.push_back({x_captions[i], {scale.X(x), scale.Y(0) + gap}});
  }
  const auto y_captions = YCaptions(graph.y_divisions);
  for (std::size_t i = 0; i < y_captions.size(); ++i) {
    const double y = static_cast<double>(i) * graph.y_divisions.step;
    graph.y_labels.push_back({y_captions[i], {scale.X(0) - gap, scale.Y(y)}});
  }
}

void DrawBand(Graph& graph, const Series& trace, const Scale& scale, GraphSize size) {
  if (trace.x.empty()) return;
  const double high = kHigh * size.height;
  const double low = kLow * size.height;
  const auto [nx, sx] = graph.x_divisions;
  for (int i = 0; i <= nx; ++i) {
    graph.output_grid.push_back({{scale.X(i * sx), high}, {scale.X(i * sx), low}, kGridPen});
  }
  for (const double y : {high, low}) {
    graph.output_grid.push_back({{scale.X(0), y}, {scale.X(nx * sx), y}, kGridPen});
  }
  const auto level = [&](double state) { return state == 0 ? low : high; };
  for (std::size_t i = 0; i + 1 < trace.x.size(); ++i) {
    graph.output.push_back({{scale.X(trace.x[i]), level(trace.y[i])},
                            {scale.X(trace.x[i + 1]), level(trace.y[i + 1])},
                            kCurvePen});
  }
  // The lower label is raised so that it stays clear of the curve's topmost one.
  graph.high_and_low = {{scale.X(0) - size.gap, high}, {scale.X(0) - size.gap, low - size.gap}};
}

}  // namespace

Divisions FindDivs(double max) {
  const double scale = PowerOfTen(max);
  const double m = max / scale;
  if (m == 1) return {5, 0.2 * scale};
  for (const DivsRow& row : kDivs) {
    if (m <= row.up_to) return {row.count, row.step * scale};
  }
  return {5, 2 * scale};
}

std::vector<std::string> XCaptions(Divisions divisions) {
  const bool thousands = divisions.count * divisions.step >= kInThousands;
  std::vector<std::string> captions;
  for (int i = 0; i <= divisions.count; ++i) {
    const double value = i * divisions.step;
    captions.push_back(thousands ? Joined(value / 1000) + "k" : Joined(value));
  }
  return captions;
}

std::vector<std::string> YCaptions(Divisions divisions) {
  std::vector<std::string> captions;
  for (int i = 0; i <= divisions.count; ++i) {
    captions.push_back(Format(i * divisions.step, divisions.step >= kSmallStep ? "#0.0" : ".000"));
  }
  return captions;
}

Graph GraphDraw(const Series& curve, const std::optional<Series>& trace, GraphSize size) {
  Graph graph;
  const double x_max = FindMax(curve.x);
  const double y_max = FindMax(curve.y);
  if (!(x_max > 0) || !(y_max > 0) || !std::isfinite(x_max) || !std::isfinite(y_max)) return graph;
  graph.x_divisions = FindDivs(x_max);
  graph.y_divisions = FindDivs(y_max);
  const Scale scale(graph.x_divisions.count * graph.x_divisions.step / kWidth,
                    graph.y_divisions.count * graph.y_divisions.step / (trace ? kHeightUnderBand : kHeight),
                    size);
  DrawGrid(graph, scale);
  if (trace) DrawBand(graph, *trace, scale, size);
  for (std::size_t i = 0; i + 1 < curve.x.size(); ++i) {
    graph.curve.push_back(
        {scale.At(curve.x[i], curve.y[i]), scale.At(curve.x[i + 1], curve.y[i + 1]), kCurvePen});
  }
  DrawLabels(graph, scale, size.gap);
  return graph;
}

}  // namespace tavlo
