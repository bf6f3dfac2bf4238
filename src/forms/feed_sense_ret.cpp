// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_sense_ret.h"

namespace tavlo {

FeedSenseRet::FeedSenseRet() : SensorForm({.unit_suffix = " beyond sensor"}, InputsOf::Sensors) {
  return_.AddTo(controls_, [this] { return Units(); });
  AddExecution();
}

void FeedSenseRet::Fill() {
  SensorForm::Fill();
  return_.Fill(Units(), record());
}

void FeedSenseRet::SetUnits() {
  return_.ReadAnew(Units());
  SensorForm::SetUnits();
}

void FeedSenseRet::CleanUp() {
  SensorForm::CleanUp();
  return_.CleanUp(Units());
}

void FeedSenseRet::Write(Instruction& record) const {
  SensorForm::Write(record);
  record.Type = FSR;
  return_.Write(record);
}

}  // namespace tavlo
