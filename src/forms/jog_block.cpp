// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/jog_block.h"

#include <algorithm>
#include <string>
#include <utility>

#include "motion/range.h"
#include "platform/number_format.h"

namespace tavlo {

void JogBlock::AddTo(ControlTable& controls) {
  controls.Add(std::string(parts_.allowed), &allowed_);
  drive_.AddTo(
      controls, [this] { SetUnits(); }, parts_.drive);
  controls.Add(std::string(parts_.speed), &speed_, [this] { CleanUpSpeed(); });
  controls.Add(std::string(parts_.speed_unit), &speed_unit_);
  controls.Add(std::string(parts_.accel), &accel_, [this] { CleanUpAccel(); });
  controls.Add(std::string(parts_.accel_unit), &accel_unit_);
}

void JogBlock::Fill(const Program& program, const Instruction& record) {
  program_ = &program;
  allowed_.value = record.*parts_.jog;
  drive_.Fill(program, record.*parts_.jog_drive);
  rev_s_ = record.*parts_.jog_speed;
  rev_s2_ = record.*parts_.jog_accel;
  speed_.text = FormatSpeed(program, rev_s_, drive_.Axis());
  accel_.text = FormatAccel(program, rev_s2_, drive_.Axis());
  SetUnitLabels();
}

void JogBlock::SetUnitLabels() {
  const AxisConfig& axes = program_->Axis;
  const std::string unit = axes.UseUnits[drive_.Axis()] ? axes.UnitName[drive_.Axis()] : "rev";
  speed_unit_.caption = unit + "/sec";
  accel_unit_.caption = unit + "/s/s";
}

void JogBlock::SetUnits() {
  SetUnitLabels();
  speed_.touched = accel_.touched = true;
  CleanUp();
}

void JogBlock::CleanUp() {
  CleanUpSpeed();
  CleanUpAccel();
}

void JogBlock::CleanUpSpeed() {
  const int axis = drive_.Axis();
  const double least = MinSpeed(*program_, axis);
  const double most = MaxSpeed(*program_, axis);
  if (speed_.touched) {
    speed_.text = tavlo::CleanUpSpeed(*program_, speed_.text, axis).text;
    speed_.touched = false;
    // In the units of the axis, whether the axis uses them or not. It is the number shown that is stored.
    rev_s_ = static_cast<float>(Held(UserToRev(*program_, Val(speed_.text), axis), least, most));
  } else if (!(rev_s_ >= least && rev_s_ <= most)) {
    rev_s_ = static_cast<float>(Held(rev_s_, least, most));
    speed_.text = FormatSpeed(*program_, rev_s_, axis);
  }
}

void JogBlock::CleanUpAccel() {
  const int axis = drive_.Axis();
  const int least = MinAccel(*program_, axis);
  if (accel_.touched) {
    AccelEntry entry = CleanUpJogAccel(*program_, accel_.text, axis);
    accel_.text = std::move(entry.text);
    accel_.touched = false;
    rev_s2_ = entry.slider;
  } else if (rev_s2_ < least || rev_s2_ > kMaxAccel) {
    rev_s2_ = std::clamp(rev_s2_, least, kMaxAccel);
    accel_.text = FormatAccel(*program_, rev_s2_, axis);
  }
}

void JogBlock::ShowHide() {
  drive_.Enable(allowed_.value);
  for (Control* control : {static_cast<Control*>(&speed_), static_cast<Control*>(&speed_unit_),
                           static_cast<Control*>(&accel_), static_cast<Control*>(&accel_unit_)}) {
    control->enabled = allowed_.value;
  }
}

void JogBlock::Write(Instruction& record) const {
  record.*parts_.jog = allowed_.value;
  record.*parts_.jog_drive = drive_.Axis();
  record.*parts_.jog_speed = rev_s_;
  record.*parts_.jog_accel = rev_s2_;
}

}  // namespace tavlo
