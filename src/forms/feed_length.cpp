// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_length.h"

#include <algorithm>
#include <utility>

namespace tavlo {

FeedLength::FeedLength() : MoveForm({}) {
  controls_.Add("ChkChangeSpeed", &change_speed_);
  controls_.Add("frameFLSO", &second_speed_frame_);
  distance2_.AddTo(controls_, "Dist2Text", "dist2unit", [this] { distance2_.CleanUp(Units()); });
  distance2_variable_.AddTo(controls_, "getmmidst2", "dst2name");
  controls_.Add("CStoLabel", &change_to_);
  controls_.Add("speed2text", &speed2text_, [this] { CleanUpSpeed2(); });
  controls_.Add("speed2unit", &speed2unit_);
  speed2_variable_.AddTo(controls_, "getmmispd2", "spd2name");
  AddExecution();
  analysis_.AddTo(controls_, [this] { return Plan(); });
}

void FeedLength::Fill() {
  MoveForm::Fill();
  const Instruction& from = record();
  distance2_.Fill(Units(), from.Dist2);
  speed2_ = from.Speed2;
  speed2text_.text = FormatSpeed(program(), speed2_, Axis());
  speed2unit_.caption = SpeedUnit(Units());
  change_speed_.value = from.Type == FLCS;
  distance2_variable_.Fill(from.Dist2IsMMI, from.Dist2Var);
  speed2_variable_.Fill(from.Speed2IsMMI, from.Speed2Var);
  analysis_.Activate();
}

AnalysisTab::Planned FeedLength::Plan() {
  CleanUp();
  AnalysisTab::Planned planned{.units = Units(), .y_caption = SpacedSpeedUnit(Units())};
  const bool second_unknown = change_speed_.value && (distance2_variable_.IsOn() || speed2_variable_.IsOn());
  if (second_unknown || MoveForm::HasVariable()) return planned;
  planned.move = PlannedByDialog();
  planned.move->changes_speed = change_speed_.value;
  planned.move->Dist2 = distance2_.Steps();
  planned.move->Speed2 = speed2_;
  return planned;
}

void FeedLength::SetUnits() {
  speed2unit_.caption = SpeedUnit(Units());
  speed2text_.touched = true;
  MoveForm::SetUnits();
  CleanUpSpeed2();
  // Its number is taken at OK.
  distance2_.ReadAnew(Units());
}

void FeedLength::CleanUpSpeed2() {
  const double highest = std::min(MaxSpeed(program(), Axis()), speed_.Speed());
  const bool in_range = speed2_ >= MinSpeed(program(), Axis()) && speed2_ <= highest;
  if (!speed2text_.touched && in_range) return;
  Speed2Entry entry = tavlo::CleanUpSpeed2(program(), speed2text_.text, Axis(), speed_.Speed());
  speed2_ = static_cast<float>(entry.rev_s);
  speed2text_.text = std::move(entry.text);
  speed2text_.touched = false;
}

void FeedLength::CleanUp() {
  MoveForm::CleanUp();
  distance2_.CleanUp(Units());
  // A second speed that the move does not have is not held against the first.
  if (change_speed_.value || speed2text_.touched) CleanUpSpeed2();
}

bool FeedLength::HasVariable() const {
  const bool second = change_speed_.value && (distance2_variable_.IsOn() || speed2_variable_.IsOn());
  return second || MoveForm::HasVariable();
}

void FeedLength::ShowHide() {
  MoveForm::ShowHide();
  const bool second = change_speed_.value;
  second_speed_frame_.visible = second;
  distance2_.Show(second);
  distance2_variable_.Show(second);
  distance2_.Enable(!distance2_variable_.IsOn());
  change_to_.visible = speed2text_.visible = speed2unit_.visible = second;
  speed2_variable_.Show(second);
  speed2text_.enabled = !speed2_variable_.IsOn();
}

void FeedLength::Write(Instruction& record) const {
  MoveForm::Write(record);
  record.Type = change_speed_.value ? FLCS : FL;
  record.Dist2 = distance2_.Steps();
  record.Speed2 = speed2_;
  distance2_variable_.Write(record.Dist2IsMMI, record.Dist2Var);
  speed2_variable_.Write(record.Speed2IsMMI, record.Speed2Var);
}

}  // namespace tavlo
