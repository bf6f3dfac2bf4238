// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "forms/control_form.h"

namespace tavlo {

/// A short text that goes into a program file: on one line (a pasted line end becomes a blank), each double
/// quote as a single one, and no longer than told. A longer one that an older file has brought stays until
/// somebody edits it.
class ShortText {
 public:
  explicit ShortText(std::size_t longest) : longest_(longest) {}

  void AddTo(ControlTable& controls, std::string_view text);
  void Fill(std::string text);
  void CleanUp();
  [[nodiscard]] const std::string& Text() const { return text_.text; }
  void Show(bool visible) { text_.visible = visible; }

 private:
  std::size_t longest_;
  TextBox text_;
};

}  // namespace tavlo
