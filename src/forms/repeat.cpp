// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/repeat.h"

namespace tavlo {

Repeat::Repeat() : Form("nloopsbox") {
  count_.AddTo(controls_, "nloopsbox");
  controls_.Add("getmmi", &from_variable_);
  variable_.AddTo(controls_);
  controls_.Add("DispCount", &shows_count_);
  controls_.Add("CountUp", &counts_up_);
  controls_.Add("ChkWait", &wait_);
}

void Repeat::Fill() {
  const Instruction& from = record();
  count_.Fill(from.Count);
  from_variable_.value = from.CountIsMMI;
  variable_.Fill(from.DistVar);
  shows_count_.value = from.SpeedIsMMI;
  counts_up_.value = from.Dir == 1;
  wait_.value = !from.Proceed;
}

void Repeat::CleanUp() {
  count_.CleanUp();
}

void Repeat::ShowHide() {
  count_.Enable(!from_variable_.value);
  variable_.Show(from_variable_.value);
}

void Repeat::Write(Instruction& record) const {
  record.Type = RP;
  record.Count = count_.Count();
  record.CountIsMMI = from_variable_.value;
  if (from_variable_.value) record.DistVar = variable_.Variable();
  record.SpeedIsMMI = shows_count_.value;
  record.Dir = static_cast<std::int16_t>(counts_up_.value ? 1 : 0);
  record.Proceed = !wait_.value;
}

}  // namespace tavlo
