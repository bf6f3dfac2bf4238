// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/svg.h"

#include <cmath>

#include "platform/encoding.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

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

}  // namespace

std::string SvgNumber(double value) {
  return Joined(std::round(value * 100) / 100);
}

std::string SvgBegin(double width, double height) {
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + SvgNumber(width) + " " +
         SvgNumber(height) + "\" font-family=\"sans-serif\" font-size=\"" + Joined(kSvgLetters) + "\">\n" +
         "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
}

std::string SvgLines(const std::vector<Line>& lines, std::string_view ink) {
  std::string svg;
  for (const Line& line : lines) {
    svg += "<line x1=\"" + SvgNumber(line.from.x) + "\" y1=\"" + SvgNumber(line.from.y) + "\" x2=\"" +
           SvgNumber(line.to.x) + "\" y2=\"" + SvgNumber(line.to.y) + "\" stroke=\"" + std::string(ink) +
           "\" stroke-width=\"" + Joined(line.pen) + "\"/>\n";
  }
  return svg;
}

std::string SvgText(Place at, std::string_view anchor, std::string_view text, std::string_view more) {
  return "<text x=\"" + SvgNumber(at.x) + "\" y=\"" + SvgNumber(at.y) + "\" text-anchor=\"" +
         std::string(anchor) + "\"" + std::string(more) + ">" + Escaped(text) + "</text>\n";
}

}  // namespace tavlo::cli
