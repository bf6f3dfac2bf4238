// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string_view>

#include "forms/control_form.h"

namespace tavlo {

/// A current in amperes with a slider, whose steps are hundredths. What counts is the slider.
class CurrentSlider {
 public:
  void AddTo(ControlTable& controls, std::string_view slider, std::string_view text);
  /// A current above `most` shows as it is, with the slider at its end.
  void Fill(float amperes, double most);
  /// Takes what is being typed.
  void CleanUp();
  [[nodiscard]] float Amperes() const;
  void Enable(bool enabled) { slider_.enabled = text_.enabled = enabled; }

 private:
  void TakeSlider();

  Slider slider_;
  TextBox text_;
};

}  // namespace tavlo
