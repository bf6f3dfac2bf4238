// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/image_match.h"

#include <gtest/gtest.h>

namespace tavlo::testing {
namespace {

CompiledProgram Compiled() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  program.Prog[0].Type = FL;
  program.Prog[0].Dist = 12345;
  program.Prog[4].Type = MMI;
  program.Prog[4].Text = "Ready";
  return CompileProgram(program);
}

std::string With(std::string image, std::size_t at) {
  image[at] = static_cast<char>(image[at] + 1);
  return image;
}

TEST(ImageMatch, WhatIsLeftOverBehindALineOrThePoolDoesNotCount) {
  const CompiledProgram compiled = Compiled();
  const std::string image = ImageOf(compiled);
  EXPECT_TRUE(ImageHolds(image, compiled));
  EXPECT_TRUE(ImageHolds(With(image, compiled.lines[0].size()), compiled));
  EXPECT_TRUE(ImageHolds(With(image, kPoolAt + compiled.pool.size()), compiled));
  EXPECT_TRUE(ImageHolds(With(image, kImageBytes - 1), compiled));
}

TEST(ImageMatch, EveryByteThatADownloadSendsCounts) {
  const CompiledProgram compiled = Compiled();
  const std::string image = ImageOf(compiled);
  for (std::size_t line = 0; line < kLines; ++line) {
    for (std::size_t i = 0; i < compiled.lines[line].size(); ++i) {
      EXPECT_FALSE(ImageHolds(With(image, line * kSlotBytes + i), compiled)) << line << " " << i;
    }
  }
  for (std::size_t i = 0; i < kSystemBytes; ++i) {
    EXPECT_FALSE(ImageHolds(With(image, kSystemAt + i), compiled)) << i;
  }
  for (std::size_t i = 0; i < compiled.pool.size(); ++i) {
    EXPECT_FALSE(ImageHolds(With(image, kPoolAt + i), compiled)) << i;
  }
}

TEST(ImageMatch, APoolThatIsTooLongIsComparedAsFarAsItsPlaceGoes) {
  CompiledProgram compiled = Compiled();
  compiled.pool = std::string(kPoolBytes + 5, 'p');
  EXPECT_TRUE(ImageHolds(ImageOf(compiled), compiled));
}

}  // namespace
}  // namespace tavlo::testing
