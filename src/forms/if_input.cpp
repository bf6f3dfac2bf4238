// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/if_input.h"

namespace tavlo {

IfInput::IfInput() : InputForm("linenum", {II, III, "If Input"}) {
  target_.AddTo(controls_);
  AddRows();
}

void IfInput::Fill() {
  InputForm::Fill();
  target_.Fill(program(), record().LineNum, line());
}

void IfInput::Write(Instruction& record) const {
  InputForm::Write(record);
  record.LineNum = target_.Target();
}

}  // namespace tavlo
