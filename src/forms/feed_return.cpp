// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_return.h"

namespace tavlo {

void ReturnBlock::AddTo(ControlTable& controls, const std::function<AxisUnits()>& units) {
  delay_.AddTo(controls, "retdelay", "retdelaybar");
  speed_.AddTo(controls, {"retspeedtext", "RetSpeedBar", "retspeedunit"}, units);
}

void ReturnBlock::Fill(AxisUnits units, const Instruction& record) {
  speed_.Fill(units, record.RetSpeed);
  delay_.Fill(record.Time);
}

void ReturnBlock::CleanUp(AxisUnits units) {
  speed_.CleanUp(units);
  delay_.CleanUp();
}

void ReturnBlock::Write(Instruction& record) const {
  record.RetSpeed = static_cast<float>(speed_.Speed());
  record.Time = delay_.Hundredths();
}

FeedReturn::FeedReturn() : MoveForm({}) {
  return_.AddTo(controls_, [this] { return Units(); });
  AddExecution();
}

void FeedReturn::Fill() {
  MoveForm::Fill();
  return_.Fill(Units(), record());
}

void FeedReturn::SetUnits() {
  return_.ReadAnew(Units());
  MoveForm::SetUnits();
}

void FeedReturn::CleanUp() {
  MoveForm::CleanUp();
  return_.CleanUp(Units());
}

void FeedReturn::Write(Instruction& record) const {
  MoveForm::Write(record);
  record.Type = FR;
  return_.Write(record);
}

}  // namespace tavlo
