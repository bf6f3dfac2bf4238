// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "forms/form_bench.h"
#include "forms/mmi_prompt.h"

namespace tavlo::testing {

struct PromptBench : FormBench<MMIprompt> {
  explicit PromptBench(int sub_type = DisplayOnly) {
    InInches(program, 0, 20000);
    Line().Type = MMI;
    Line().SubType = static_cast<std::int16_t>(sub_type);
    Open();
  }
  [[nodiscard]] static std::string Function(int sub_type) {
    return "MMIfunction(" + std::to_string(sub_type) + ")";
  }
  [[nodiscard]] int Function() {
    for (int i = 0; i < 7; ++i) {
      if (Chosen(Function(i))) return i;
    }
    return -1;
  }
};

/// A line with everything set that a prompt may have.
inline Instruction FullLine(int sub_type) {
  Instruction line = {.Type = MMI,
                      .Dist = 7,
                      .LineNum = 33,
                      .Text = "word1 word2 word3   word4",
                      .SubType = static_cast<std::int16_t>(sub_type),
                      .UpperInt = 20,
                      .UpperFrac = 10000,
                      .LowerInt = 2,
                      .LowerFrac = 1,
                      .DistVar = 49,
                      // Flags that no text would give.
                      .Blank1 = true,
                      .Wrap1 = true,
                      .Wrap3 = true,
                      .MenuKey = {false, false, true},
                      .Drive = 2,
                      .JogLRDrive = 3,
                      .JogUDDrive = 7,
                      .Proceed = true,
                      .JogLRSpeed = 1.2345F,
                      .JogUDSpeed = 0.777F,
                      .JogLRAccel = 123,
                      .JogUDAccel = 2999,
                      .JogLR = true};
  for (std::int16_t i = 1; i <= 8; ++i) line.MenuLine[static_cast<std::size_t>(i)] = i;
  return line;
}

}  // namespace tavlo::testing
