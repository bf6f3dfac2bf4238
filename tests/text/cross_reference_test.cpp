// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/cross_reference.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/kinds.h"
#include "support/new_program.h"
#include "text/one_text.h"

namespace tavlo {
namespace {

using testing::NewProgram;
using testing::OneText;
using Texts = std::vector<std::string>;

/// The rows under a heading; none if it is not there.
Texts Rows(const Program& program, std::string_view heading) {
  for (const ReferenceSection& section : SectionsOf(MakeCrossReference(program))) {
    if (section.heading == heading) return section.rows;
  }
  return {};
}

TEST(CrossReference, OfAnEmptyProgramIsEmpty) {
  EXPECT_TRUE(SectionsOf(MakeCrossReference(NewProgram())).empty());
}

TEST(CrossReference, NamesTheLinesOfEachInputInTheOrderOfAxisAndNumber) {
  Program program = NewProgram();
  program.Axis.AxisName[1] = "Cutter";
  program.Prog[0] = {.Type = WI, .IONum = 2, .Drive = 1};
  program.Prog[3] = {.Type = II, .IONum = 2};
  program.Prog[4] = {.Type = FS, .IONum = 130};
  program.Prog[5] = {.Type = III, .InMask = 0b101, .DrvMask = 0b100};
  program.Prog[6] = {.Type = FE, .IONum = 2};
  EXPECT_EQ(Rows(program, "Inputs"),
            (Texts{"Axis 1: input 1: line 6", "Axis 1: input 3: lines 4, 6, 7",
                   "Axis 1: input X2: lines 5, 6", "Axis 2 (Cutter): input 3: line 1"}));
}

TEST(CrossReference, TheEncodersIndexIsAnInputOfItsOwn) {
  Program program = NewProgram();
  program.Prog[0] = {.Type = FS, .IONum = 8};
  program.Prog[1] = {.Type = SH, .IONum = 6};
  program.Prog[2] = {.Type = FSR, .IONum = 8};
  EXPECT_EQ(Rows(program, "Inputs"),
            (Texts{"Axis 1: input X0: line 3", "Axis 1: encoder index: lines 1, 2"}));
}

TEST(CrossReference, ALineThatAsksTheTerminalUsesNoInputAndNoAxis) {
  for (const int type : {WI, II}) {
    Program program = NewProgram();
    program.Prog[0] = {.Type = static_cast<std::int16_t>(type), .CountIsMMI = true};
    EXPECT_EQ(Rows(program, "Inputs"), Texts{}) << type;
    EXPECT_EQ(Rows(program, "Axes"), Texts{}) << type;
  }
  Program program = NewProgram();
  program.Prog[0] = {.Type = FE, .CountIsMMI = true};
  EXPECT_EQ(Rows(program, "Inputs"), Texts{});
  EXPECT_EQ(Rows(program, "Axes"), Texts{"Axis 1: line 1"}) << "the axis follows the knob";
}

TEST(CrossReference, TheHubsOwnInputsAndOutputsAreNoAxis) {
  Program program = NewProgram();
  program.HubIndex = HubQuad;
  program.Prog[0] = {.Type = WI, .IONum = 3, .Drive = kHubQuadIO};
  program.Prog[1] = {.Type = SO, .IONum = 0, .Drive = kHubQuadIO};
  program.Prog[2] = {.Type = WII, .InMask = 8, .Drive = kHubQuadIO};
  EXPECT_EQ(Rows(program, "Inputs"), Texts{"Hub: input 4: lines 1, 3"});
  EXPECT_EQ(Rows(program, "Outputs"), Texts{"Hub: output 1: line 2"});
  EXPECT_EQ(Rows(program, "Axes"), Texts{});
}

TEST(CrossReference, NamesTheLinesOfEachOutput) {
  Program program = NewProgram();
  program.Axis.DriveModel[2] = 10;
  program.Prog[0] = {.Type = SO, .IONum = 1};
  program.Prog[1] = {.Type = FLSO, .IONum = 1};
  program.Prog[2] = {.Type = SO, .IONum = 128};
  program.Prog[3] = {.Type = SO, .IONum = 0, .Drive = 2};
  EXPECT_EQ(Rows(program, "Outputs"), (Texts{"Axis 1: output 2: lines 1, 2", "Axis 1: output Y1: line 3",
                                             "Axis 3: output Y1: line 4"}));
}

TEST(CrossReference, NamesTheLinesOfEachVariableAndThoseThatFillIt) {
  Program program = NewProgram();
  program.Prog[0] = {.Type = MMI, .SubType = GetDistance, .DistVar = 0};
  program.Prog[1] = {.Type = MMI, .SubType = GetSpeed, .DistVar = 25};
  program.Prog[2] = {.Type = LP, .DistVar = 15};
  program.Prog[3] = {.Type = FL, .DistVar = 0, .SpeedVar = 25, .DistIsMMI = true, .SpeedIsMMI = true};
  program.Prog[4] = {.Type = FLCS, .Dist2Var = 1, .Speed2Var = 26, .Dist2IsMMI = true, .Speed2IsMMI = true};
  program.Prog[5] = {.Type = RP, .DistVar = 35, .CountIsMMI = true};
  program.Prog[6] = {.Type = SS, .SubType = ChangeSpeed, .SpeedVar = 25, .SpeedIsMMI = true};
  program.Prog[7] = {.Type = SS, .SubType = StopAxis, .SpeedVar = 25, .SpeedIsMMI = true};
  program.Prog[8] = {.Type = MMI, .SubType = DisplayOnly, .DistVar = 3};
  program.Prog[9] = {.Type = FL, .DistVar = 99, .DistIsMMI = true};
  EXPECT_EQ(Rows(program, "Variables"),
            (Texts{"Dist1: lines 1, 4; filled by line 1", "Dist2: line 5", "Posn1: line 3; filled by line 3",
                   "Speed1: lines 2, 4, 7; filled by line 2", "Speed2: line 5", "Count1: line 6"}));
}

TEST(CrossReference, VariablesStandInTheirOwnOrder) {
  Program program = NewProgram();
  for (int variable = 0; variable < kMMIVariables; ++variable) {
    program.Prog[kMMIVariables - variable] = {.Type = LP, .DistVar = static_cast<std::int16_t>(variable)};
  }
  const auto variables = MakeCrossReference(program).variables;
  ASSERT_EQ(variables.size(), std::size_t{kMMIVariables});
  for (int variable = 0; variable < kMMIVariables; ++variable) {
    EXPECT_EQ(variables[variable].name, MMIVarName(variable));
  }
}

TEST(CrossReference, NamesTheLinesOfEachAxis) {
  Program program = NewProgram();
  program.Axis.AxisName[7] = "Lift";
  program.Prog[0] = {.Type = FL, .Drive = 7};
  program.Prog[1] = {
      .Type = MMI, .SubType = WaitEnter, .JogLRDrive = 7, .JogUDDrive = 2, .JogLR = true, .JogUD = true};
  program.Prog[2] = {.Type = SS, .SubType = StopAll, .Drive = 3};
  program.Prog[3] = {.Type = SS, .SubType = StopAxis, .Drive = 3};
  program.Prog[4] = {.Type = GT, .Drive = 5};
  EXPECT_EQ(Rows(program, "Axes"), (Texts{"Axis 3: line 2", "Axis 4: line 4", "Axis 8 (Lift): lines 1, 2"}));
}

TEST(CrossReference, ALineThatPrintsNothingUsesNothing) {
  for (const int type : {-1, +NO, +MMImenu, kTypes, 1000}) {
    Program program = NewProgram();
    program.Prog[0].Type = static_cast<std::int16_t>(type);
    EXPECT_TRUE(SectionsOf(MakeCrossReference(program)).empty()) << type;
  }
}

TEST(CrossReference, TellsWhoJumpsWhere) {
  Program program = NewProgram();
  program.LimitList = BranchToLine;
  program.LimitBranch = 50;
  program.Prog[0] = {.Type = GT, .LineNum = 9};
  program.Prog[1] = {.Type = CL, .LineNum = 19};
  program.Prog[2] = {.Type = II, .LineNum = 29};
  program.Prog[3] = {.Type = III, .LineNum = 29};
  program.Prog[4] = {.Type = IM, .LineNum = 29};
  program.Prog[5] = {.Type = FSS, .LineNum = 39};
  program.Prog[6] = {.Type = MMI, .LineNum = 4, .SubType = BranchYesNo};
  program.Prog[7] = {.Type = MMI, .LineNum = 4, .SubType = Menu};
  program.Prog[7].MenuKey[2] = program.Prog[7].MenuKey[8] = true;
  program.Prog[7].MenuLine[2] = 1;
  program.Prog[7].MenuLine[8] = 199;
  program.Prog[8] = {.Type = RP};
  program.Prog[9] = {.Type = ER};
  program.Prog[10] = {.Type = RL, .LineNum = 8};
  program.Prog[11] = {.Type = ER};
  program.Prog[12] = {.Type = FS, .LineNum = 3};
  ScanLoops(program);
  EXPECT_EQ(Rows(program, "Jumps"),
            (Texts{"A limit switch goes to line 50", "Line 1 goes to line 10", "Line 2 calls line 20",
                   "Line 3 branches to line 30", "Line 4 branches to line 30", "Line 5 branches to line 30",
                   "Line 6 goes, beyond its safety distance, to line 40", "Line 7 branches to line 5",
                   "Line 8 goes, on key 2, to line 2", "Line 8 goes, on key 8, to line 200",
                   "Line 10 repeats from line 9", "Line 11 resets the loop on line 9"}));
}

TEST(CrossReference, ALimitSwitchLeadsNowhereUnlessItIsToldTo) {
  for (const int action : {+HaltProgram, +ContinueProgram, 7}) {
    Program program = NewProgram();
    program.LimitList = static_cast<std::int16_t>(action);
    EXPECT_EQ(Rows(program, "Jumps"), Texts{}) << action;
  }
}

TEST(CrossReference, EveryKindThatNamesALineIsThere) {
  for (int type = 0; type < kTypes; ++type) {
    Program program = NewProgram();
    program.Prog[0] = {.Type = static_cast<std::int16_t>(type), .LineNum = 7};
    const bool names = KindOf(type).names_line || KindOf(type).lead != Lead::Next;
    EXPECT_EQ(Rows(program, "Jumps").size(), names ? 1U : 0U) << Mnemonic(type);
  }
}

TEST(CrossReference, NumbersFromAnywhereAreTakenAsTheyAre) {
  for (const std::int16_t number :
       {std::int16_t{-32768}, std::int16_t{-1}, std::int16_t{200}, std::int16_t{32767}}) {
    for (int type = -1; type <= kTypes; ++type) {
      Program program = NewProgram();
      program.LimitList = BranchToLine;
      program.LimitBranch = 1e30;
      program.Prog[199] = {.Type = static_cast<std::int16_t>(type),
                           .LineNum = number,
                           .IONum = number,
                           .SubType = number,
                           .DistVar = number,
                           .InMask = number,
                           .DrvMask = number,
                           .Drive = number};
      EXPECT_FALSE(Rows(program, "Jumps").empty());
    }
  }
}

}  // namespace
}  // namespace tavlo
