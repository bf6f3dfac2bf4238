// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/profile_picture.h"

#include "cli/desk/svg.h"

namespace tavlo::cli {
namespace {

constexpr std::string_view kGridInk = "#999";
constexpr std::string_view kCurveInk = "#000";

}  // namespace

std::string SvgOf(const GraphBox& picture) {
  const GraphSize size = kPictureSize;
  const Graph graph = GraphDraw(picture.curve, picture.trace, size);
  std::string svg = SvgBegin(size.width, size.height);
  svg += SvgLines(graph.grid, kGridInk) + SvgLines(graph.output_grid, kGridInk);
  svg += SvgLines(graph.curve, kCurveInk) + SvgLines(graph.output, kCurveInk);
  for (const TickLabel& tick : graph.x_labels) {
    svg += SvgText({tick.at.x, tick.at.y + kSvgLetters}, "middle", tick.caption);
  }
  for (const TickLabel& tick : graph.y_labels) {
    svg += SvgText({tick.at.x, tick.at.y + kSvgLetters / 3.0}, "end", tick.caption);
  }
  if (graph.high_and_low) {
    const auto [high, low] = *graph.high_and_low;
    svg += SvgText({high.x, high.y + kSvgLetters / 3.0}, "end", "High");
    svg += SvgText({low.x, low.y + kSvgLetters / 3.0}, "end", "Low");
  }
  svg += SvgText({size.width / 2, size.height - kSvgLetters}, "middle", picture.x_caption);
  const Place left = {kSvgLetters * 1.5, size.height / 2};
  svg += SvgText(left, "middle", picture.y_caption,
                 " transform=\"rotate(-90 " + SvgNumber(left.x) + " " + SvgNumber(left.y) + ")\"");
  return svg.append(kSvgEnd);
}

}  // namespace tavlo::cli
