// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string>

#include "hubsim/program/fixed4.h"

namespace tavlo::hubsim {

/// As an operator writes it: no zeros after the last decimal, no point after a whole number.
[[nodiscard]] std::string FormatFixed4(Fixed4 value);

/// A number as it is typed on the keypad: digits, "." and a sign, the last one taken back by a backspace.
/// Keys that cannot follow are ignored: a second point, a fifth decimal, a tenth digit before the point.
class ValueEntry {
 public:
  struct Rules {
    bool decimals = true;
    bool sign = false;
  };

  explicit ValueEntry(Rules rules) : rules_(rules) {}

  /// Returns false if the key changed nothing.
  bool Key(char key);
  void Clear();
  [[nodiscard]] const std::string& Text() const { return text_; }
  /// No digit has been typed.
  [[nodiscard]] bool Empty() const;
  [[nodiscard]] Fixed4 Value() const;

 private:
  bool Digit(char digit);
  bool Point();
  bool Sign(char sign);

  Rules rules_;
  std::string text_;
};

}  // namespace tavlo::hubsim
