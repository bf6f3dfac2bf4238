// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_length.h"

#include <algorithm>
#include <utility>

namespace tavlo {

FeedLength::FeedLength() : Form("disttext") {
  const auto units = [this] { return Units(); };
  drive_.AddTo(controls_, [this] { SetUnits(); });
  distance_.AddTo(controls_, "disttext", "distunit", [this] { distance_.CleanUp(Units()); });
  distance_variable_.AddTo(controls_, "getmmidst", "dstname");
  speed_.AddTo(controls_, {"SpeedText", "SpeedBar", "speedunit"}, units);
  speed_variable_.AddTo(controls_, "GetMMISpd", "spdname");
  controls_.Add("lblvarname", &variable_name_);
  accel_.AddTo(controls_, {"AccelText", "AccelBar", "accelunit"}, units);
  decel_.AddTo(controls_, {"DecelText", "decelbar", "decelunit"}, units);
  direction_.AddTo(controls_);
  controls_.Add("ChkChangeSpeed", &change_speed_);
  controls_.Add("frameFLSO", &second_speed_frame_);
  distance2_.AddTo(controls_, "Dist2Text", "dist2unit", [this] { distance2_.CleanUp(Units()); });
  distance2_variable_.AddTo(controls_, "getmmidst2", "dst2name");
  controls_.Add("CStoLabel", &change_to_);
  controls_.Add("speed2text", &speed2text_, [this] { CleanUpSpeed2(); });
  controls_.Add("speed2unit", &speed2unit_);
  speed2_variable_.AddTo(controls_, "getmmispd2", "spd2name");
  execution_.AddTo(controls_);
}

void FeedLength::Fill() {
  const Instruction& from = record();
  drive_.Fill(program(), from.Drive);
  execution_.Fill(from);
  distance_.Fill(Units(), from.Dist);
  distance2_.Fill(Units(), from.Dist2);
  speed_.Fill(Units(), from.Speed);
  accel_.Fill(Units(), from.Accel);
  decel_.Fill(Units(), from.Decel);
  speed2_ = from.Speed2;
  speed2text_.text = FormatSpeed(program(), speed2_, drive_.Axis());
  LabelSecondSpeed();
  direction_.Fill(from.Dir);
  change_speed_.value = from.Type == FLCS;
  distance_variable_.Fill(from.DistIsMMI, from.DistVar);
  speed_variable_.Fill(from.SpeedIsMMI, from.SpeedVar);
  distance2_variable_.Fill(from.Dist2IsMMI, from.Dist2Var);
  speed2_variable_.Fill(from.Speed2IsMMI, from.Speed2Var);
}

void FeedLength::LabelSecondSpeed() {
  speed2unit_.caption = SpeedUnit(Units());
}

void FeedLength::SetUnits() {
  speed_.ReadAnew(Units());
  accel_.ReadAnew(Units());
  decel_.ReadAnew(Units());
  distance_.ReadAnew(Units());
  distance2_.ReadAnew(Units());
  LabelSecondSpeed();
  speed2text_.touched = true;
  speed_.CleanUp(Units());
  accel_.CleanUp(Units());
  decel_.CleanUp(Units());
  distance_.CleanUp(Units());
  CleanUpSpeed2();
}

void FeedLength::CleanUpSpeed2() {
  const int axis = drive_.Axis();
  const double highest = std::min(MaxSpeed(program(), axis), speed_.Speed());
  const bool in_range = speed2_ >= MinSpeed(program(), axis) && speed2_ <= highest;
  if (!speed2text_.touched && in_range) return;
  Speed2Entry entry = tavlo::CleanUpSpeed2(program(), speed2text_.text, axis, speed_.Speed());
  speed2_ = static_cast<float>(entry.rev_s);
  speed2text_.text = std::move(entry.text);
  speed2text_.touched = false;
}

void FeedLength::CleanUp() {
  speed_.CleanUp(Units());
  accel_.CleanUp(Units());
  decel_.CleanUp(Units());
  distance_.CleanUp(Units());
  distance2_.CleanUp(Units());
  // A second speed that the move does not have is not held against the first.
  if (change_speed_.value || speed2text_.touched) CleanUpSpeed2();
}

void FeedLength::ShowHide() {
  const bool second = change_speed_.value;
  distance_variable_.Show(true);
  distance_.Enable(!distance_variable_.IsOn());
  speed_variable_.Show(true);
  speed_.Enable(!speed_variable_.IsOn());
  second_speed_frame_.visible = second;
  distance2_.Show(second);
  distance2_variable_.Show(second);
  distance2_.Enable(!distance2_variable_.IsOn());
  change_to_.visible = speed2text_.visible = speed2unit_.visible = second;
  speed2_variable_.Show(second);
  speed2text_.enabled = !speed2_variable_.IsOn();
  variable_name_.visible = distance_variable_.IsOn() || speed_variable_.IsOn() ||
                           (second && (distance2_variable_.IsOn() || speed2_variable_.IsOn()));
}

void FeedLength::Write(Instruction& record) const {
  record.Type = change_speed_.value ? FLCS : FL;
  record.Dist = distance_.Steps();
  record.Dist2 = distance2_.Steps();
  record.Speed = static_cast<float>(speed_.Speed());
  record.Speed2 = speed2_;
  record.Accel = accel_.Accel();
  record.Decel = decel_.Accel();
  record.Dir = direction_.Dir();
  distance_variable_.Write(record.DistIsMMI, record.DistVar);
  speed_variable_.Write(record.SpeedIsMMI, record.SpeedVar);
  distance2_variable_.Write(record.Dist2IsMMI, record.Dist2Var);
  speed2_variable_.Write(record.Speed2IsMMI, record.Speed2Var);
  execution_.Write(record);
  record.Drive = drive_.Axis();
}

}  // namespace tavlo
