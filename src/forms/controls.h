// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <variant>
#include <vector>

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

struct Slider : Control {
  int min = 0;
  int max = 0;
  int value = 0;
};

struct CheckBox : Control {
  bool value = false;
};

/// One of several of which one is on.
struct OptionButton : Control {
  bool value = false;
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

using AnyControl =
    std::variant<TextBox*, Slider*, CheckBox*, OptionButton*, ListBox*, Label*, Frame*, SpinButton*>;

/// What is common to all of them.
[[nodiscard]] inline Control& CommonOf(const AnyControl& control) {
  return std::visit([](auto* which) -> Control& { return *which; }, control);
}

}  // namespace tavlo
