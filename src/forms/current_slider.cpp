// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/current_slider.h"

#include <algorithm>

#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr double kStepsPerAmpere = 100;

int StepsOf(double amperes) {
  return static_cast<int>(RoundHalfEven(amperes * kStepsPerAmpere));
}

}  // namespace

void CurrentSlider::AddTo(ControlTable& controls, std::string_view slider, std::string_view text) {
  controls.Add(std::string(text), &text_, [this] { CleanUp(); });
  controls.Add(std::string(slider), &slider_, [this] { TakeSlider(); });
}

void CurrentSlider::Fill(float amperes, double most) {
  slider_.max = StepsOf(most);
  slider_.value = StepsOf(std::clamp<double>(amperes, 0, most));
  text_.text = Format(amperes, "0.00");
  text_.touched = false;
}

void CurrentSlider::CleanUp() {
  if (!text_.touched) return;
  slider_.value =
      StepsOf(std::clamp(Val(text_.text), slider_.min / kStepsPerAmpere, slider_.max / kStepsPerAmpere));
  TakeSlider();
}

void CurrentSlider::TakeSlider() {
  text_.text = Format(Amperes(), "0.00");
  text_.touched = false;
}

float CurrentSlider::Amperes() const {
  return static_cast<float>(slider_.value / kStepsPerAmpere);
}

}  // namespace tavlo
