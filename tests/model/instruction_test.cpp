// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/instruction.h"

#include <gtest/gtest.h>

#include <string>

namespace tavlo {
namespace {

TEST(InstructionType, PromptSubTypesAreNumberedFromGetDistance) {
  EXPECT_EQ(GetDistance, 0);
  EXPECT_EQ(GetSpeed, 1);
  EXPECT_EQ(GetCount, 2);
  EXPECT_EQ(DisplayOnly, 3);
  EXPECT_EQ(WaitEnter, 4);
  EXPECT_EQ(BranchYesNo, 5);
  EXPECT_EQ(Menu, 6);
}

TEST(InstructionType, StartStopSubTypes) {
  EXPECT_EQ(StopAll, 0);
  EXPECT_EQ(ChangeSpeed, 1);
  EXPECT_EQ(StopAxis, 2);
  EXPECT_EQ(StartAxis, 3);
}

TEST(MMIVariable, FiftyNamesInFourRuns) {
  EXPECT_EQ(kMMIVariables, 50);
  for (int i = 0; i < 15; ++i) EXPECT_EQ(MMIVarName(i), "Dist" + std::to_string(i + 1));
  for (int i = 0; i < 10; ++i) EXPECT_EQ(MMIVarName(15 + i), "Posn" + std::to_string(i + 1));
  for (int i = 0; i < 10; ++i) EXPECT_EQ(MMIVarName(25 + i), "Speed" + std::to_string(i + 1));
  for (int i = 0; i < 15; ++i) EXPECT_EQ(MMIVarName(35 + i), "Count" + std::to_string(i + 1));
}

TEST(MMIVariable, ANumberOutsideTheTableHasNoName) {
  for (const int variable : {-1, 50, 255, 32767, -32768}) EXPECT_EQ(MMIVarName(variable), "");
}

TEST(MMIVariable, KindsOfTheThreeEntryPrompts) {
  EXPECT_EQ(MMIVarKind(0), "distance");
  EXPECT_EQ(MMIVarKind(1), "speed");
  EXPECT_EQ(MMIVarKind(2), "repeat count");
}

}  // namespace
}  // namespace tavlo
