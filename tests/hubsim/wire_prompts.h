// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <string>

#include "hubsim/wire_lines.h"

namespace tavlo::hubsim {

/// Prompts as they go over the wire, written out by hand. Lines, axes and variables are 0-based.

struct Value {
  int sub_type = 0;
  int variable = 0;
  int lower = 1;
  int lower_fraction = 0;
  int upper = 50;
  int upper_fraction = 0;
  int axis = 0;
  int pool_offset = 0;
};

inline std::string AskFor(const Value& value) {
  return Bytes({14, value.sub_type}) + Big2(value.pool_offset) + Bytes({0, value.variable}) +
         Big3(value.lower) + Big2(value.lower_fraction) + Big3(value.upper) + Big2(value.upper_fraction) +
         Bytes({value.axis});
}

inline constexpr int kNotJogged = 128;

/// A pair of arrow keys: 1 rev/s and 100 rev/s/s.
inline std::string Arrows(int axis) {
  return Bytes({axis}) + Big2(40) + Big2(100);
}
inline std::string WaitEnter(int left_right = kNotJogged, int up_down = kNotJogged + 1, int pool_offset = 0) {
  return Bytes({14, 4}) + Big2(pool_offset) + Bytes({0}) + Arrows(left_right) + Arrows(up_down);
}
inline std::string YesNo(int line, int pool_offset = 0) {
  return Bytes({14, 5}) + Big2(pool_offset) + Bytes({0, line});
}
/// The key i branches to line 10 * i.
inline std::string Menu(int mask, int pool_offset = 0) {
  return Bytes({26}) + Big2(pool_offset) + Bytes({mask, 10, 20, 30, 40, 50, 60, 70, 80, 0});
}

/// A pool of one text.
inline std::string PoolOf(const std::string& text) {
  return text + '\xFF' + std::string(1, '\0');
}

/// A program that uses the terminal.
inline std::string TerminalSystem() {
  return SystemOf(1, {1});
}

using Rows = std::array<std::string, 4>;

}  // namespace tavlo::hubsim
