// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/set_output.h"

namespace tavlo {

SetOutput::SetOutput() : AxisForm("pw") {
  output_.AddTo(controls_, {"optout(0)", "optout(1)", "optout(2)", "optout(3)", "optout(128)", "optout(129)",
                            "optout(130)"});
}

void SetOutput::Fill() {
  drive_.FillWithHub(program(), record().Drive);
  output_.Fill(Units(), record());
}

void SetOutput::Write(Instruction& record) const {
  record.Type = SO;
  output_.Write(Units(), record);
  record.Drive = Axis();
}

}  // namespace tavlo
