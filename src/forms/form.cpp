// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/form.h"

namespace tavlo {

void Form::Load(Program& program, int line) {
  program_ = &program;
  line_ = line;
  before_ = record();
  Fill();
  Begin();
}

void Form::Cancel() {
  program_->Prog[line_] = before_;
}

bool Form::MayWrite(MessageBoxes&) {
  return true;
}

bool Form::Accept(MessageBoxes& boxes) {
  if (!MayWrite(boxes)) return false;
  Write(program_->Prog[line_]);
  return true;
}

}  // namespace tavlo
