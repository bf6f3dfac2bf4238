// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "motion/move_profile.h"

namespace tavlo {

/// How an axis of the graph is divided so that it ends on a round number.
struct Divisions {
  int count = 0;
  double step = 0;
  bool operator==(const Divisions&) const = default;
};
/// Returns the divisions for a largest value, which must be above 0. There are never more than six.
[[nodiscard]] Divisions FindDivs(double max);

/// A place in the picture, from its top left corner.
struct Place {
  double x;
  double y;
};

/// A straight line in the picture, and the width of its pen.
struct Line {
  Place from;
  Place to;
  int pen;
};

/// A label of a tick. The label of an x tick hangs from the middle of its top edge, that of a y tick from the
/// middle of its right edge.
struct TickLabel {
  std::string caption;
  Place at;
};

/// What the curve is drawn from, in the units that are shown.
struct Series {
  std::vector<double> x;
  std::vector<double> y;
};

/// A picture of a velocity profile, as lines and labels in the picture's own units.
struct Graph {
  Divisions x_divisions;
  Divisions y_divisions;
  std::vector<Line> grid;
  std::vector<Line> curve;
  std::vector<TickLabel> x_labels;
  std::vector<TickLabel> y_labels;
  /// The output's trace above the curve, and the places of "high" and "low" to its left, given as for y
  /// labels.
  std::vector<Line> output_grid;
  std::vector<Line> output;
  std::optional<std::pair<Place, Place>> high_and_low;
};

/// The sides of the picture, and the gap beside a label. With an output, a band above the curve holds its
/// trace.
struct GraphSize {
  double width;
  double height;
  double gap;
};
/// Draws the graph. `trace` holds times or distances of the output's points and their levels: nothing if
/// there is no output, an empty series if the place of its change is not known; the band is then left empty.
[[nodiscard]] Graph GraphDraw(const Series& curve, const std::optional<Series>& trace, GraphSize size);

/// Returns the captions of the ticks, from 0 on.
[[nodiscard]] std::vector<std::string> XCaptions(Divisions divisions);
[[nodiscard]] std::vector<std::string> YCaptions(Divisions divisions);

}  // namespace tavlo
