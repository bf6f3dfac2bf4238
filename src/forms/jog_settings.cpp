// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/jog_settings.h"

#include <algorithm>
#include <string>
#include <utility>

#include "motion/range.h"
#include "platform/number_format.h"

namespace tavlo {

void JogSettings::AddTo(ControlTable& controls, const Names& names, const std::function<AxisUnits()>& units) {
  controls.Add(std::string(names.speed), &speed_, [this, units] { CleanUpSpeed(units()); });
  controls.Add(std::string(names.speed_unit), &speed_unit_);
  controls.Add(std::string(names.accel), &accel_, [this, units] { CleanUpAccel(units()); });
  controls.Add(std::string(names.accel_unit), &accel_unit_);
}

void JogSettings::LabelUnits(AxisUnits units) {
  speed_unit_.caption = speed_caption_(units);
  accel_unit_.caption = accel_caption_(units);
}

void JogSettings::Fill(AxisUnits units, float rev_s, std::int32_t rev_s2) {
  LabelUnits(units);
  rev_s_ = rev_s;
  speed_.text = FormatSpeed(units.program, rev_s, units.axis);
  rev_s2_ = rev_s2;
  accel_.text = FormatAccel(units.program, rev_s2, units.axis);
}

void JogSettings::CleanUpSpeed(AxisUnits units) {
  const double least = MinSpeed(units.program, units.axis);
  const double most = MaxSpeed(units.program, units.axis);
  if (speed_.touched) {
    speed_.text = tavlo::CleanUpSpeed(units.program, speed_.text, units.axis).text;
    speed_.touched = false;
    // It is the number shown that is stored.
    rev_s_ = static_cast<float>(Held(UserToRev(units.program, Val(speed_.text), units.axis), least, most));
  } else if (!(rev_s_ >= least && rev_s_ <= most)) {
    rev_s_ = static_cast<float>(Held(rev_s_, least, most));
    speed_.text = FormatSpeed(units.program, rev_s_, units.axis);
  }
}

void JogSettings::CleanUpAccel(AxisUnits units) {
  const int least = MinAccel(units.program, units.axis);
  if (accel_.touched) {
    AccelEntry entry = CleanUpJogAccel(units.program, accel_.text, units.axis);
    accel_.text = std::move(entry.text);
    accel_.touched = false;
    rev_s2_ = entry.slider;
  } else if (rev_s2_ < least || rev_s2_ > kMaxAccel) {
    rev_s2_ = std::clamp(rev_s2_, least, kMaxAccel);
    accel_.text = FormatAccel(units.program, rev_s2_, units.axis);
  }
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
