// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/move_form.h"

namespace tavlo {

MoveForm::MoveForm(const Parts& parts)
    : AxisForm(parts.distance ? "disttext" : "SpeedText"),
      parts_(parts),
      distance_(parts.kind, parts.unit_suffix) {
  const auto units = [this] { return Units(); };
  const auto changed = [this] { SpeedChanged(); };
  if (parts.distance) {
    distance_.AddTo(controls_, "disttext", "distunit", [this] { CleanUpDist(); });
    distance_variable_.AddTo(controls_, "getmmidst", "dstname");
  }
  speed_.AddTo(controls_, {"SpeedText", "SpeedBar", "speedunit"}, units, changed);
  if (parts.speed_variable) speed_variable_.AddTo(controls_, "GetMMISpd", "spdname");
  if (parts.distance || parts.speed_variable) controls_.Add("lblvarname", &variable_name_);
  accel_.AddTo(controls_, {"AccelText", "AccelBar", "accelunit"}, units, changed);
  if (parts.decel) decel_.AddTo(controls_, {"DecelText", "decelbar", "decelunit"}, units, changed);
  if (parts.direction) direction_.AddTo(controls_);
}

void MoveForm::Fill() {
  const Instruction& from = record();
  drive_.Fill(program(), from.Drive);
  execution_.Fill(from);
  distance_.Fill(Units(), IsPosition() ? PositionOf(from) : from.Dist);
  speed_.Fill(Units(), from.Speed);
  accel_.Fill(Units(), from.Accel);
  decel_.Fill(Units(), from.Decel);
  direction_.Fill(from.Dir);
  distance_variable_.Fill(from.DistIsMMI, from.DistVar);
  speed_variable_.Fill(from.SpeedIsMMI, from.SpeedVar);
}

void MoveForm::CleanUp() {
  speed_.CleanUp(Units());
  accel_.CleanUp(Units());
  if (parts_.decel) decel_.CleanUp(Units());
  SpeedChanged();
  if (parts_.distance) CleanUpDist();
}

void MoveForm::SetUnits() {
  speed_.ReadAnew(Units());
  accel_.ReadAnew(Units());
  decel_.ReadAnew(Units());
  distance_.ReadAnew(Units());
  CleanUp();
}

bool MoveForm::HasVariable() const {
  return (parts_.distance && distance_variable_.IsOn()) || (parts_.speed_variable && speed_variable_.IsOn());
}

PlannedMove MoveForm::PlannedByDialog() const {
  return {.R = GetStepsPerRev(program(), Axis()),
          .Speed = speed_.Speed(),
          .Accel = accel_.Accel(),
          .Decel = decel_.Accel(),
          .Dist = distance_.Steps()};
}

void MoveForm::ShowHide() {
  distance_variable_.Show(true);
  distance_.Enable(!distance_variable_.IsOn());
  speed_variable_.Show(true);
  speed_.Enable(!(parts_.speed_variable && speed_variable_.IsOn()));
  variable_name_.visible = HasVariable();
}

void MoveForm::Write(Instruction& record) const {
  if (parts_.distance) {
    if (IsPosition()) {
      WritePosition(record, distance_.Steps());
    } else {
      record.Dist = distance_.Steps();
    }
    distance_variable_.Write(record.DistIsMMI, record.DistVar);
  }
  record.Speed = static_cast<float>(speed_.Speed());
  if (parts_.speed_variable) speed_variable_.Write(record.SpeedIsMMI, record.SpeedVar);
  record.Accel = accel_.Accel();
  if (parts_.decel) record.Decel = decel_.Accel();
  if (parts_.direction) record.Dir = direction_.Dir();
  if (parts_.execution) execution_.Write(record);
  record.Drive = Axis();
}

}  // namespace tavlo
