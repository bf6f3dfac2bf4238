// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "motion/graph.h"

namespace tavlo {

// What the controls of a dialog show and take, without the controls themselves.

struct Control {
  bool enabled = true;
  bool visible = true;
};

/// A box in which something is typed.
struct TextBox : Control {
  std::string text;
  /// Typed into, and not cleaned since.
  bool touched = false;
};

/// A box for a text of several lines. Every change of it counts at once.
struct TextArea : Control {
  std::string text;
  /// How many lines high it is.
  int lines = 1;
};

struct Slider : Control {
  int min = 0;
  int max = 0;
  int value = 0;
};

struct CheckBox : Control {
  bool value = false;
};

/// A button that does something.
struct Button : Control {
  /// Both empty where they stay as the dialog has them.
  std::string caption;
  std::string tool_tip;
  /// Stands out, for what it has opened is open.
  bool lit = false;
};

/// One of several of which one is on.
struct OptionButton : Control {
  bool value = false;
  /// Empty where the caption stays as the dialog has it.
  std::string caption;
};

struct ListBox : Control {
  std::vector<std::string> list;
  /// -1 while nothing is chosen.
  int index = -1;
};

struct Label : Control {
  std::string caption;
};

/// What others stand in.
struct Frame : Control {};

/// A pair of buttons beside a box.
struct SpinButton : Control {
  /// How it was pressed last: 1 up, -1 down.
  int way = 0;
};

/// Pages of which one is seen.
struct TabStrip : Control {
  int page = 0;
};

/// The picture of a velocity profile, with what stands beside its axes.
struct GraphBox : Control {
  Series curve;
  /// Of an output; see GraphDraw().
  std::optional<Series> trace;
  std::string x_caption;
  std::string y_caption;
};

/// A bar that shows how full something is.
struct Gauge : Control {
  enum class Level { Green, Yellow, Red };
  int percent = 0;
  Level level = Level::Green;
};

/// A picture of the operator terminal's display.
struct Display : Control {
  std::vector<std::string> lines;
  /// What is below these lines stays free for an entry.
  int lines_for_text = 0;
};

using AnyControl = std::variant<TextBox*, TextArea*, Slider*, CheckBox*, OptionButton*, Button*, ListBox*,
                                Label*, Frame*, SpinButton*, Gauge*, Display*, TabStrip*, GraphBox*>;

/// What is common to all of them.
[[nodiscard]] inline Control& CommonOf(const AnyControl& control) {
  return std::visit([](auto* which) -> Control& { return *which; }, control);
}

}  // namespace tavlo
