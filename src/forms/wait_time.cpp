// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/wait_time.h"

namespace tavlo {

WaitTime::WaitTime() : Form("delaytime") {
  delay_.AddTo(controls_, "delaytime", "timebar");
}

void WaitTime::Fill() {
  delay_.Fill(record().Time);
}

void WaitTime::CleanUp() {
  delay_.CleanUp();
}

void WaitTime::Write(Instruction& record) const {
  record.Type = WT;
  record.Time = delay_.Hundredths();
}

}  // namespace tavlo
