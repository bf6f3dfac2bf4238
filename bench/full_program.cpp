// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "full_program.h"

#include <array>
#include <string>

namespace tavlo::bench {
namespace {

constexpr std::array<std::int16_t, 12> kMix = {FL, MMI, FP, WT, SO, FS, MMI, II, FLCS, CM, III, FLSO};
constexpr int kPoolTexts = 1535;  // the pool less its final 0x00

}  // namespace

Program FullProgram() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  int prompts = 0;
  for (int i = 0; i < kLines; ++i) {
    Instruction& line = program.Prog[i];
    line.Type = kMix[i % kMix.size()];
    line.Drive = static_cast<std::int16_t>(i % 7);
    line.Dist = 1000 + i * 37;
    line.LineNum = static_cast<std::int16_t>((i * 7) % kLines);
    if (line.Type == CM) line.Text = "Comment on line " + std::to_string(i + 1);
    if (line.Type == MMI) ++prompts;
    line.InMask = 5;
    line.InState = 1;
  }
  // Each prompt takes its text and an end mark; the first ones take what is left over.
  const int length = kPoolTexts / prompts - 1;
  int left_over = kPoolTexts - prompts * (length + 1);
  for (int i = 0; i < kLines; ++i) {
    Instruction& line = program.Prog[i];
    if (line.Type != MMI) continue;
    line.Text = std::string(static_cast<std::size_t>(length + (left_over-- > 0 ? 1 : 0)), 'x');
    line.SubType = DisplayOnly;
  }
  ScanLoops(program);
  return program;
}

}  // namespace tavlo::bench
