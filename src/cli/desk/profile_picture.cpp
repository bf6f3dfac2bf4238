// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/profile_picture.h"

#include <cmath>

#include "cli/console/encoding.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

constexpr const char* kGridInk = "#999";
constexpr const char* kCurveInk = "#000";
constexpr int kLetters = 12;

std::string Number(double value) {
  return Joined(std::round(value * 100) / 100);
}

std::string Escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&': result += "&amp;"; break;
      case '<': result += "&lt;"; break;
      case '>': result += "&gt;"; break;
      case '"': result += "&quot;"; break;
      default: result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
  }
  return Utf8FromLatin1(result);
}

std::string Lines(const std::vector<Line>& lines, const char* ink) {
  std::string svg;
  for (const Line& line : lines) {
    svg += "<line x1=\"" + Number(line.from.x) + "\" y1=\"" + Number(line.from.y) + "\" x2=\"" +
           Number(line.to.x) + "\" y2=\"" + Number(line.to.y) + "\" stroke=\"" + ink + "\" stroke-width=\"" +
           Joined(line.pen) + "\"/>\n";
  }
  return svg;
}

std::string Text(Place at, const char* anchor, std::string_view text, const std::string& more = "") {
  return "<text x=\"" + Number(at.x) + "\" y=\"" + Number(at.y) + "\" text-anchor=\"" + anchor + "\"" + more +
         ">" + Escaped(text) + "</text>\n";
}

}  // namespace

std::string SvgOf(const GraphBox& picture) {
  const GraphSize size = kPictureSize;
  const Graph graph = GraphDraw(picture.curve, picture.trace, size);
  const std::string box = Number(size.width) + " " + Number(size.height);
  std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + box +
                    "\" font-family=\"sans-serif\" font-size=\"" + Joined(kLetters) + "\">\n" +
                    "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
  svg += Lines(graph.grid, kGridInk) + Lines(graph.output_grid, kGridInk);
  svg += Lines(graph.curve, kCurveInk) + Lines(graph.output, kCurveInk);
  for (const TickLabel& tick : graph.x_labels) {
    svg += Text({tick.at.x, tick.at.y + kLetters}, "middle", tick.caption);
  }
  for (const TickLabel& tick : graph.y_labels) {
    svg += Text({tick.at.x, tick.at.y + kLetters / 3.0}, "end", tick.caption);
  }
  if (graph.high_and_low) {
    const auto [high, low] = *graph.high_and_low;
    svg += Text({high.x, high.y + kLetters / 3.0}, "end", "High");
    svg += Text({low.x, low.y + kLetters / 3.0}, "end", "Low");
  }
  svg += Text({size.width / 2, size.height - kLetters}, "middle", picture.x_caption);
  const Place left = {kLetters * 1.5, size.height / 2};
  svg += Text(left, "middle", picture.y_caption,
              " transform=\"rotate(-90 " + Number(left.x) + " " + Number(left.y) + ")\"");
  return svg + "</svg>\n";
}

}  // namespace tavlo::cli
