// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "motion/graph.h"

namespace tavlo::cli {

// The pieces of a picture that is a file of its own. Texts are single bytes, as in a program.

inline constexpr int kSvgLetters = 12;

/// Returns a number of the picture's units, to the hundredth.
[[nodiscard]] std::string SvgNumber(double value);
/// Begins a picture on white; it ends with `kSvgEnd`.
[[nodiscard]] std::string SvgBegin(double width, double height);
inline constexpr std::string_view kSvgEnd = "</svg>\n";

[[nodiscard]] std::string SvgLines(const std::vector<Line>& lines, std::string_view ink);
/// `anchor` says which end of the text lies at the place: "start", "middle" or "end". `more` are further
/// attributes, each after a blank.
[[nodiscard]] std::string SvgText(Place at, std::string_view anchor, std::string_view text,
                                  std::string_view more = {});

}  // namespace tavlo::cli
