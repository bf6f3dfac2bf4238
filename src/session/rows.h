// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"

namespace tavlo {

/// The five sets of icons. Each holds one image for every kind of line.
enum class IconSet { Normal, Picked, Yellow, Red, Cyan };
inline constexpr int kIconSets = 5;

/// A row of the icon table: a picture that some kinds of line share, and the names of its five images.
struct IconRow {
  /// The name of the picture's drawing.
  std::string_view glyph;
  std::array<std::string_view, kIconSets> names;
};
inline constexpr int kIconRows = 21;
extern const std::array<IconRow, kIconRows> kIcons;

/// The image of a line. Types without a row of their own show that of the move; so do Call and Return while
/// they are picked or executing.
struct IconRef {
  int row = 0;
  IconSet set = IconSet::Normal;
  bool operator==(const IconRef&) const = default;
};
[[nodiscard]] IconRef IconFor(int type, IconSet set);
[[nodiscard]] std::string_view IconName(IconRef icon);

struct Colour {
  int red;
  int green;
  int blue;
  bool operator==(const Colour&) const = default;
};

/// What the background of a row's text shows. The text on it is always dark.
enum class RowState { Normal, LimitTarget, Executing, WentOn, Picked };
[[nodiscard]] Colour BackgroundOf(RowState state);

/// Colour of a row's number: marks a line that is jumped to in a way that no arrow shows.
enum class LabelColour { Plain, Red, Blue };

/// Width of an icon's frame. Lines that run while an axis moves have the thick one.
inline constexpr int kPlainFrame = 1;
inline constexpr int kChainFrame = 3;

/// What one row of the grid shows.
struct Row {
  /// A label's caption: "&&" in it is shown as "&".
  std::string desc;
  RowState state = RowState::Normal;
  IconRef icon;
  int frame = kPlainFrame;
  LabelColour label = LabelColour::Plain;
};

/// A line beside the icons that connects a program line to the one that it jumps to.
struct Arrow {
  int from;
  int to;
  /// The 0-based lane that it runs in, and the number of lanes. All lanes are equally wide.
  int lane;
  int lanes;
  /// 0..6
  int colour;
  bool operator==(const Arrow&) const = default;
};
inline constexpr int kArrowColours = 7;

/// Returns the connections in the order in which they are drawn: jumps and calls, branches, ends of loops. A
/// line whose target does not exist has none.
[[nodiscard]] std::vector<Arrow> ArrowsOf(const Program& program);
/// Returns the colours of the 200 numbers: red for targets of calls, blue for targets of menus.
[[nodiscard]] std::array<LabelColour, kLines> LabelColoursOf(const Program& program);
/// Returns the frame widths of the 200 icons.
[[nodiscard]] std::array<int, kLines> ChainFramesOf(const Program& program);

/// Returns the position of the scroll bar that shows a row: the present one if the whole row can be seen,
/// otherwise one that puts the row somewhat above the middle. `pitch` is the height of a row; all are in its
/// unit.
[[nodiscard]] int WantedScroll(int line, int pitch, int value, int viewport, int maximum);

/// Returns what the text column gets of a window's width beyond 640: 0 up to there, 310 from 951 on.
[[nodiscard]] int ExtraWidth(int window_width);

}  // namespace tavlo
