// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_sense.h"

namespace tavlo {

FeedSense::FeedSense() : SensorForm({.unit_suffix = " beyond sensor"}, InputsOf::Sensors) {
  controls_.Add("ChkSafety", &safety_);
  safety_distance_.AddTo(controls_, "SafetyDist", "sfdistunit", [this] { CleanUpSFdist(); });
  safety_line_.AddTo(controls_, {.text = "SafetyLine", .line_text = "SafetyLineText"});
  AddExecution();
}

void FeedSense::Fill() {
  SensorForm::Fill();
  safety_.value = record().Type == FSS;
  safety_distance_.Fill(Units(), record().SafetyDist);
  safety_line_.Fill(program(), record().LineNum, line());
}

void FeedSense::SetUnits() {
  safety_distance_.ReadAnew(Units());
  SensorForm::SetUnits();
}

void FeedSense::CleanUp() {
  SensorForm::CleanUp();
  CleanUpSFdist();
  safety_line_.CleanUp();
}

void FeedSense::ShowHide() {
  SensorForm::ShowHide();
  safety_distance_.Enable(safety_.value);
  safety_line_.Enable(safety_.value);
}

void FeedSense::Write(Instruction& record) const {
  SensorForm::Write(record);
  record.Type = safety_.value ? FSS : FS;
  record.SafetyDist = safety_distance_.Steps();
  record.LineNum = safety_line_.Target();
}

}  // namespace tavlo
