// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "text/line_words.h"
#include "text/short_desc.h"

namespace tavlo::testing {

/// One line of this type at 2 rev/s over 40000 steps on axis 0, "Axis 1", an Oskel-A in revolutions.
struct OneText {
  explicit OneText(int type) {
    InitHardware(program.Axis);
    InitProg(program);
    line().Type = static_cast<std::int16_t>(type);
    line().Dist = 40000;
    line().Speed = 2.0F;
  }
  Instruction& line() { return program.Prog[0]; }
  void Model(int code) { program.Axis.DriveModel[0] = static_cast<std::int16_t>(code); }
  [[nodiscard]] std::string Text() const { return ShortDesc(program, 0).value_or("(left as it was)"); }

  Program program;
};

/// For a row that takes the line as it is.
inline void Untouched(Instruction&) {}

}  // namespace tavlo::testing
