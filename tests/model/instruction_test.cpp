// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/instruction.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

namespace tavlo {
namespace {

struct TypeRow {
  int code;
  int enumerator;
  std::string_view mnemonic;
};
constexpr TypeRow kTypeRows[] = {{0, FL, "FL"},    {1, FR, "FR"},      {2, FS, "FS"},        {3, FSR, "FSR"},
                                 {4, WT, "WT"},    {5, WI, "WI"},      {6, GT, "GT"},        {7, RP, "RP"},
                                 {8, ER, "ER"},    {9, SO, "SO"},      {10, II, "II"},       {11, NO, "NO"},
                                 {12, SH, "SH"},   {13, CM, "CM"},     {14, MMI, "MMI"},     {15, FP, "FP"},
                                 {16, ED, "ED"},   {17, SP, "SP"},     {18, FE, "FE"},       {19, CC, "CC"},
                                 {20, III, "III"}, {21, FLSO, "FLSO"}, {22, FLCS, "FLCS"},   {23, WII, "WII"},
                                 {24, FSS, "FSS"}, {25, RL, "RL"},     {26, MMImenu, "MMI"}, {27, LP, "LP"},
                                 {28, CL, "CL"},   {29, RT, "RT"},     {30, IM, "IM"},       {31, SS, "SS"}};

TEST(InstructionType, EveryCodeHasItsMnemonic) {
  int code = 0;
  for (const TypeRow& row : kTypeRows) {
    EXPECT_EQ(row.code, code);
    EXPECT_EQ(row.enumerator, row.code) << row.mnemonic;
    EXPECT_EQ(Mnemonic(row.code), row.mnemonic);
    ++code;
  }
  EXPECT_EQ(code, kTypes);
}

TEST(InstructionType, ACodeOutsideTheTableHasNoMnemonic) {
  for (const int code : {-1, 32, 100, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(Mnemonic(code), "?");
  }
}

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

TEST(InstructionType, MovesAreTheNineTypesThatRunAnAxisToAnEnd) {
  const std::set<int> moves = {0, 1, 2, 3, 12, 15, 21, 22, 24};
  for (int type = -2; type < 40; ++type) EXPECT_EQ(IsMove(type), moves.count(type) == 1) << type;
}

TEST(InstructionType, SixTypesCanBePassedWhileMoving) {
  const std::set<int> passive = {4, 9, 11, 13, 14, 30};
  for (int type = -2; type < 40; ++type) EXPECT_EQ(IsPassive(type), passive.count(type) == 1) << type;
}

}  // namespace
}  // namespace tavlo
