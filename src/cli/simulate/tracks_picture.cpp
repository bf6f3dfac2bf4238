// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/tracks_picture.h"

#include <algorithm>
#include <cmath>

#include "cli/desk/svg.h"
#include "cli/simulate/run_words.h"
#include "motion/units.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

constexpr double kWidth = 960;
constexpr double kLeft = 84;
constexpr double kGridWidth = 850;
constexpr double kLineStrip = 20;
constexpr double kLineStripTop = 28;
constexpr double kTracksTop = 58;
constexpr double kTitle = 20;
constexpr double kTrackHeight = 120;
constexpr double kTrackGap = 14;
constexpr double kBottom = 48;
constexpr double kLabelGap = 4;
/// A label of one line, and the figures of a line's number.
constexpr double kLabelHeight = kSvgLetters + 3;
constexpr double kFigureWidth = 8;
constexpr std::size_t kLongestName = 40;
constexpr double kCurvePen = 1.5;

constexpr std::string_view kTrackGridInk = "#bbb";
constexpr std::string_view kZeroInk = "#666";
constexpr const char* kTrackInk = "#000";

/// More points than these in a column of the picture cannot be told apart.
struct Column {
  hubsim::SpeedPoint first;
  hubsim::SpeedPoint last;
  hubsim::SpeedPoint lowest;
  hubsim::SpeedPoint highest;
};

std::vector<hubsim::SpeedPoint> PointsOf(const Column& column) {
  const bool low_first = column.lowest.time <= column.highest.time;
  return {column.first, low_first ? column.lowest : column.highest,
          low_first ? column.highest : column.lowest, column.last};
}

/// A time axis that all tracks share.
struct TimeScale {
  Divisions divisions;

  explicit TimeScale(double total) : divisions(FindDivs(total > 0 ? total : 1)) {}
  [[nodiscard]] double X(double seconds) const {
    return kLeft + seconds / (divisions.count * divisions.step) * kGridWidth;
  }
};

/// Leaves the points that are seen.
SpeedTracks::Points Thinned(const SpeedTracks::Points& points, const TimeScale& time) {
  SpeedTracks::Points thin;
  std::optional<Column> column;
  double at = 0;
  for (const hubsim::SpeedPoint& point : points) {
    const double x = std::floor(time.X(point.time));
    if (column && x == at) {
      column->last = point;
      if (point.steps_s < column->lowest.steps_s) column->lowest = point;
      if (point.steps_s > column->highest.steps_s) column->highest = point;
      continue;
    }
    if (column) std::ranges::copy(PointsOf(*column), std::back_inserter(thin));
    column = Column{point, point, point, point};
    at = x;
  }
  if (column) std::ranges::copy(PointsOf(*column), std::back_inserter(thin));
  const auto same = [](const hubsim::SpeedPoint& a, const hubsim::SpeedPoint& b) {
    return a.time == b.time && a.steps_s == b.steps_s;
  };
  thin.erase(std::unique(thin.begin(), thin.end(), same), thin.end());
  return thin;
}

/// The speeds of one axis in its units a second, and how its track is divided upwards and downwards.
class Track {
 public:
  Track(const Program& program, int axis, const SpeedTracks::Points& points, double top) : top_(top) {
    for (const hubsim::SpeedPoint& point : points) {
      points_.push_back({point.time, ShownDist(program, point.steps_s, axis)});
    }
    double high = 0;
    double low = 0;
    for (const hubsim::SpeedPoint& point : points_) {
      high = std::max(high, point.steps_s);
      low = std::min(low, point.steps_s);
    }
    divisions_ = FindDivs(std::max({high, -low, 1e-6}));
    up_ = static_cast<int>(std::ceil(high / divisions_.step - 1e-9));
    down_ = static_cast<int>(std::ceil(-low / divisions_.step - 1e-9));
    if (down_ == 0) up_ = std::max(up_, 1);
    title_ = NameOfAxis(program, axis).substr(0, kLongestName) + ", " +
             program.Axis.UnitName[static_cast<std::size_t>(axis)].substr(0, kLongestName) + "/s";
  }

  [[nodiscard]] std::string Draw(const TimeScale& time) const {
    return SvgText({kLeft, top_ - kLabelGap - 2}, "start", title_, " font-weight=\"bold\"") + Grid(time) +
           Labels() + Curve(time);
  }

 private:
  [[nodiscard]] double Y(double division) const {
    return top_ + (up_ - division) / (up_ + down_) * kTrackHeight;
  }

  [[nodiscard]] std::string Grid(const TimeScale& time) const {
    std::vector<Line> grid;
    const double right = time.X(time.divisions.count * time.divisions.step);
    for (int i = -down_; i <= up_; ++i) grid.push_back({{kLeft, Y(i)}, {right, Y(i)}, 1});
    for (int i = 0; i <= time.divisions.count; ++i) {
      const double x = time.X(i * time.divisions.step);
      grid.push_back({{x, Y(up_)}, {x, Y(-down_)}, 1});
    }
    return SvgLines(grid, kTrackGridInk) + SvgLines({{{kLeft, Y(0)}, {right, Y(0)}, 1}}, kZeroInk);
  }

  /// As many labels as have room, counted from the zero.
  [[nodiscard]] std::string Labels() const {
    const auto captions = YCaptions(divisions_);
    const double room = kTrackHeight / (up_ + down_);
    const int stride = static_cast<int>(std::ceil(kLabelHeight / room));
    std::string svg;
    for (int i = -down_; i <= up_; ++i) {
      if (i % stride != 0) continue;
      const std::string& caption = captions[static_cast<std::size_t>(std::abs(i))];
      svg += SvgText({kLeft - kLabelGap, Y(i) + kSvgLetters / 3.0}, "end", (i < 0 ? "-" : "") + caption);
    }
    return svg;
  }

  [[nodiscard]] std::string Curve(const TimeScale& time) const {
    std::string points;
    for (const hubsim::SpeedPoint& point : Thinned(points_, time)) {
      points += (points.empty() ? "" : " ") + SvgNumber(time.X(point.time)) + "," +
                SvgNumber(Y(point.steps_s / divisions_.step));
    }
    return "<polyline points=\"" + points + "\" fill=\"none\" stroke=\"" + kTrackInk + "\" stroke-width=\"" +
           SvgNumber(kCurvePen) + "\" stroke-linejoin=\"round\"/>\n";
  }

  double top_;
  SpeedTracks::Points points_;
  Divisions divisions_;
  int up_ = 0;
  int down_ = 0;
  std::string title_;
};

std::string Rect(double x, double y, double width, double height, std::string_view more) {
  return "<rect x=\"" + SvgNumber(x) + "\" y=\"" + SvgNumber(y) + "\" width=\"" + SvgNumber(width) +
         "\" height=\"" + SvgNumber(height) + "\"" + std::string(more) + "/>\n";
}

/// The lines as they ran, with their numbers where there is room for them.
std::string LineStrip(const SpeedTracks& tracks, const TimeScale& time) {
  constexpr double kNarrowest = 1;
  std::string svg =
      SvgText({kLeft - kLabelGap, kLineStripTop + kLineStrip / 2 + kSvgLetters / 3.0}, "end", "Line");
  for (const Span& span : tracks.Lines()) {
    const double x = time.X(span.from);
    const double width = time.X(span.to) - x;
    if (width < kNarrowest) continue;
    svg += Rect(x, kLineStripTop, width, kLineStrip, " fill=\"#eee\" stroke=\"#999\"");
    const std::string number = Joined(span.line + 1);
    if (width < kFigureWidth * static_cast<double>(number.size() + 1)) continue;
    svg += SvgText({x + width / 2, kLineStripTop + kLineStrip / 2 + kSvgLetters / 3.0}, "middle", number);
  }
  return svg;
}

std::string WaitBands(const SpeedTracks& tracks, const TimeScale& time, double bottom) {
  if (tracks.Waits().empty()) return {};
  std::string svg =
      "<defs><pattern id=\"waits\" width=\"6\" height=\"6\" patternUnits=\"userSpaceOnUse\" "
      "patternTransform=\"rotate(45)\"><line x1=\"0\" y1=\"0\" x2=\"0\" y2=\"6\" stroke=\"#ccc\" "
      "stroke-width=\"2\"/></pattern></defs>\n";
  constexpr std::string_view kHatched = " fill=\"url(#waits)\"";
  const double top = kTracksTop - kTrackGap / 2;
  for (const Span& span : tracks.Waits()) {
    const double x = time.X(span.from);
    svg += Rect(x, top, std::max(time.X(span.to) - x, 1.0), bottom - top, kHatched);
  }
  const double right = kLeft + kGridWidth;
  svg += SvgText({right, kSvgLetters + kLabelGap}, "end", "waits for the world");
  constexpr double kLegendText = 118;
  return svg + Rect(right - kLegendText - 24, kLabelGap, 18, kSvgLetters + 2, kHatched);
}

std::string TimeLabels(const TimeScale& time, double top) {
  std::string svg;
  const auto captions = XCaptions(time.divisions);
  for (std::size_t i = 0; i < captions.size(); ++i) {
    svg += SvgText({time.X(static_cast<double>(i) * time.divisions.step), top + kSvgLetters + kLabelGap},
                   "middle", captions[i]);
  }
  return svg + SvgText({kLeft + kGridWidth / 2, top + 2 * kLabelHeight + kLabelGap}, "middle", "sec");
}

}  // namespace

std::string SvgOf(const SpeedTracks& tracks, const Program& program) {
  const TimeScale time(tracks.Total());
  std::string drawn;
  double top = kTracksTop;
  for (int axis = 0; axis < hubsim::kAxisCount; ++axis) {
    const auto& points = tracks.Axes()[static_cast<std::size_t>(axis)];
    if (points.empty()) continue;
    drawn += Track(program, axis, points, top + kTitle).Draw(time);
    top += kTitle + kTrackHeight + kTrackGap;
  }
  if (top == kTracksTop) {
    drawn = SvgText({kLeft + kGridWidth / 2, top + kTitle}, "middle", "No axis moves.");
    top += 2 * kTitle;
  }
  std::string svg = SvgBegin(kWidth, top + kBottom);
  svg += WaitBands(tracks, time, top) + drawn + LineStrip(tracks, time) + TimeLabels(time, top);
  return svg.append(kSvgEnd);
}

}  // namespace tavlo::cli
