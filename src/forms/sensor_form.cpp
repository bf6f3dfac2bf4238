// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/sensor_form.h"

#include <algorithm>

#include "platform/number_format.h"

namespace tavlo {

SensorForm::SensorForm(const Parts& parts, InputsOf dialog) : MoveForm(parts), input_(dialog) {
  controls_.Add("deceldist", &deceldist_);
  controls_.Add("deceldistunit", &deceldist_unit_);
  input_.AddTo(controls_);
  controls_.Add("lblservo", &servo_only_);
}

void SensorForm::Fill() {
  MoveForm::Fill();
  input_.Fill(Units(), record());
  SpeedChanged();
}

double SensorForm::StoppingDistance() const {
  const double speed = speed_.Speed();
  const double revs = speed * speed / 2 / std::max(decel_.Accel(), 1);
  return std::max(1.0, RoundHalfEven(revs * GetStepsPerRev(program(), Axis())));
}

std::int32_t SensorForm::Least() const {
  return static_cast<std::int32_t>(std::min(StoppingDistance(), static_cast<double>(kMaxSteps)));
}

std::string SensorForm::Shown(double steps) const {
  return FormatDist(program(), steps, Axis());
}

void SensorForm::SpeedChanged() {
  deceldist_.caption = Shown(StoppingDistance());
  deceldist_unit_.caption = LengthUnit(Units());
  distance_.RaiseTo(Units(), Least());
}

void SensorForm::CleanUpDist() {
  distance_.CleanUp(Units(), Least(), kMaxSteps);
}

void SensorForm::SetUnits() {
  input_.CleanUpIOnum(Units());
  MoveForm::SetUnits();
}

void SensorForm::ShowHide() {
  MoveForm::ShowHide();
  servo_only_.visible = input_.OffersIndex();
}

void SensorForm::Write(Instruction& record) const {
  MoveForm::Write(record);
  input_.Write(record);
}

}  // namespace tavlo
