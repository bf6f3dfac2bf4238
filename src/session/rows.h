// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"

namespace tavlo {

/// The five sets of icons, one image for each kind of line in each.
enum class IconSet { Normal, Picked, Yellow, Red, Cyan };
inline constexpr int kIconSets = 5;

/// A row of the icon table: the kinds of line that share a picture, and the names of its five images.
struct IconRow {
  /// What the picture is called among the drawings.
  std::string_view glyph;
  std::array<std::string_view, kIconSets> names;
};
inline constexpr int kIconRows = 21;
extern const std::array<IconRow, kIconRows> kIcons;

/// Which image a line of this type shows. Types without a row of their own show the move; so do Call and
/// Return while they are picked or executing.
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

/// What the background of a row's text tells. Text on it is always dark.
enum class RowState { Normal, LimitTarget, Executing, WentOn, Picked };
[[nodiscard]] Colour BackgroundOf(RowState state);

/// Colour of a row's number: told when something jumps there in a way that no arrow shows.
enum class LabelColour { Plain, Red, Blue };

/// Width of an icon's frame: lines that run while an axis moves stand in a thick one.
inline constexpr int kPlainFrame = 1;
inline constexpr int kChainFrame = 3;

/// What one row of the grid shows.
struct Row {
  /// A label's caption: "&&" in it shows as one "&".
  std::string desc;
  RowState state = RowState::Normal;
  IconRef icon;
  int frame = kPlainFrame;
  LabelColour label = LabelColour::Plain;
};

/// The caption as it reads: "&&" as one "&".
[[nodiscard]] std::string ShownCaption(std::string_view caption);

/// A connecting line beside the icons, from a line that jumps to its target.
struct Arrow {
  int from;
  int to;
  /// 0-based place among the lanes, and their number: all lanes are equally wide.
  int lane;
  int lanes;
  /// 0..6
  int colour;
  bool operator==(const Arrow&) const = default;
};
inline constexpr int kArrowColours = 7;

/// The connections in the order in which they are drawn: jumps and calls, branches, ends of loops. A
/// target that is no line has none.
[[nodiscard]] std::vector<Arrow> ArrowsOf(const Program& program);
/// Colours of the 200 numbers: targets of calls red, of menus blue.
[[nodiscard]] std::array<LabelColour, kLines> LabelColoursOf(const Program& program);
/// Frame widths of the 200 icons.
[[nodiscard]] std::array<int, kLines> ChainFramesOf(const Program& program);

/// Where the scroll bar goes to bring a row into view: where it is while the row can be seen whole, else
/// so that the row stands somewhat above the middle. All in the units of `pitch`, the height of a row.
[[nodiscard]] int WantedScroll(int line, int pitch, int value, int viewport, int maximum);

/// Width of the text column as a share of what the window offers beyond 640: 0 up to there, 310 from 951 on.
[[nodiscard]] int ExtraWidth(int window_width);

}  // namespace tavlo
