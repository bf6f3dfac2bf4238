// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/jog_settings.h"

#include <string>
#include <utility>

#include "platform/number_format.h"

namespace tavlo {

void JogSettings::AddTo(ControlTable& controls, const Names& names, const std::function<AxisUnits()>& units) {
  controls.Add(std::string(names.speed), &speed_, [this, units] { CleanUpSpeed(units()); });
  controls.Add(std::string(names.speed_unit), &speed_unit_);
  controls.Add(std::string(names.accel), &accel_, [this, units] { CleanUpAccel(units()); });
  controls.Add(std::string(names.accel_unit), &accel_unit_);
}

void JogSettings::LabelUnits(AxisUnits units) {
  speed_unit_.caption = SpeedUnit(units);
  accel_unit_.caption = AccelUnit(units);
}

void JogSettings::Fill(AxisUnits units, float rev_s, std::int32_t rev_s2) {
  LabelUnits(units);
  rev_s_ = rev_s;
  speed_.text = FormatSpeed(units.program, rev_s, units.axis);
  rev_s2_ = rev_s2;
  accel_.text = FormatAccel(units.program, rev_s2, units.axis);
}

void JogSettings::CleanUpSpeed(AxisUnits units) {
  const bool in_range =
      rev_s_ >= MinSpeed(units.program, units.axis) && rev_s_ <= MaxSpeed(units.program, units.axis);
  if (!speed_.touched && in_range) return;
  speed_.text = tavlo::CleanUpSpeed(units.program, speed_.text, units.axis).text;
  speed_.touched = false;
  rev_s_ = static_cast<float>(UserToRev(units.program, Val(speed_.text), units.axis));
}

void JogSettings::CleanUpAccel(AxisUnits units) {
  const bool in_range = rev_s2_ >= MinAccel(units.program, units.axis) && rev_s2_ <= kMaxAccel;
  if (!accel_.touched && in_range) return;
  AccelEntry entry = CleanUpJogAccel(units.program, accel_.text, units.axis);
  accel_.text = std::move(entry.text);
  accel_.touched = false;
  rev_s2_ = entry.slider;
}

void JogSettings::CleanUp(AxisUnits units) {
  CleanUpSpeed(units);
  CleanUpAccel(units);
}

void JogSettings::ReadAnew(AxisUnits units) {
  LabelUnits(units);
  speed_.touched = accel_.touched = true;
}

}  // namespace tavlo
