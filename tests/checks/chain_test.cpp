// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "checks/chain.h"

#include <gtest/gtest.h>

#include <functional>

#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

/// A program in which every axis has a drive, on a hub of the newest firmware.
class Chain : public ::testing::Test {
 protected:
  Chain() {
    d.source.program.HubVersion = 1.38F;
    d.source.program.Axis.DriveModel.fill(11);
  }

  Instruction& Set(int line, std::int16_t type, int axis = 0) {
    d.Line(line).Type = type;
    d.Line(line).Drive = static_cast<std::int16_t>(axis);
    return d.Line(line);
  }
  CheckResult Run() {
    ScanLoops(d.source.program);
    return CheckProgram(d.desk.program(), d.desk.boxes);
  }
  void ExpectBoxes(const std::vector<ShownBox>& boxes) { EXPECT_EQ(d.boxes.shown, boxes) << Told(); }
  std::string Told() const {
    std::string all;
    for (const ShownBox& box : d.boxes.shown) all += "[" + box.title + "] " + box.text + "\n";
    return all;
  }

  FakeDesk d;
};

TEST_F(Chain, AnEmptyProgramPassesEveryCheck) {
  d.source.program.HubVersion = 1.0F;
  EXPECT_EQ(Run(), CheckResult::Passed);
  ExpectBoxes({});
}

struct FirmwareCase {
  float version;
  std::int16_t type;
  CheckResult result;
  const char* text;
};

TEST_F(Chain, TheFirmwareMustKnowIfMovingAndStartStopAndAnExactVersionIsEnough) {
  constexpr const char* kIfMoving =
      "You need hub firmware version 1.05 or later to use the If Moving instruction.  Please remove this "
      "instruction "
      "from your program or upgrade the firmware in your hub.";
  constexpr const char* kStartStop =
      "You need hub firmware version 1.06 or later to use the Start/Stop instruction.  Please remove this "
      "instruction from your program or upgrade the firmware in your hub.";
  const FirmwareCase kCases[] = {{1.04F, IM, CheckResult::Stopped, kIfMoving},
                                 {1.05F, IM, CheckResult::Passed, nullptr},
                                 {1.05F, SS, CheckResult::Stopped, kStartStop},
                                 {1.06F, SS, CheckResult::Passed, nullptr}};
  for (const auto& row : kCases) {
    d.boxes.shown.clear();
    d.source.program.HubVersion = row.version;
    Set(0, row.type);
    EXPECT_EQ(Run(), row.result);
    if (row.text == nullptr) {
      ExpectBoxes({});
    } else {
      ExpectBoxes({{row.text, "Old Firmware", Buttons::OK, Icon::None}});
    }
  }
}

TEST_F(Chain, OnAHubQuadTwoLinesBeyondTheFourthAxisGetTwoBoxesAndTheChainEndsAfterTheFirstProcedure) {
  d.source.program.HubIndex = HubQuad;
  Set(2, FL, 5);
  Set(6, LP, 4);
  Set(8, WI, 6);
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes({{"On line 3 you have an instruction that uses Axis 7.  The HubQuad only supports four axes.",
                "Can't Download", Buttons::OK, Icon::None},
               {"On line 7 you have an instruction that uses Axis 6.  The HubQuad only supports four axes.",
                "Can't Download", Buttons::OK, Icon::None}});
}

TEST_F(Chain, TheNameOfTheNextAxisIsTheEmptyNinthSlotForTheEighth) {
  d.source.program.HubIndex = HubQuad;
  Set(0, CC, 7);
  Run();
  ExpectBoxes({{"On line 1 you have an instruction that uses .  The HubQuad only supports four axes.",
                "Can't Download", Buttons::OK, Icon::None}});
}

TEST_F(Chain, OnAHubQuadInputFiveOfItsOwnDoesNotExist) {
  d.source.program.HubIndex = HubQuad;
  Set(0, II, 4).IONum = 3;
  Set(1, WI, 4).IONum = 4;
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes(
      {{"On line 2 of your program you have an instruction that uses input 5. The Hub Quad has only four "
        "on-board inputs.",
        "Can't download", Buttons::OK, Icon::None}});
}

TEST_F(Chain, OnAHubQuadInputsAndOutputsBeyondItsOwnSlotDoNotExist) {
  d.source.program.HubIndex = HubQuad;
  Set(4, SO, 5);
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes({{"On line 5 you have an instruction that uses Axis 7.  The HubQuad only supports four axes.",
                "Can't Download", Buttons::OK, Icon::None}});
}

TEST_F(Chain, OnAHubQuadTheMasksOfItsOwnInputsAreCutToFourWithoutAWordAndChangedStays) {
  d.source.program.HubIndex = HubQuad;
  Set(0, III, 4).InMask = 0xF3;
  d.Line(0).InState = 0xA1;
  Set(1, WII, 0).InMask = 0xF3;
  EXPECT_EQ(Run(), CheckResult::Passed);
  EXPECT_EQ(d.Line(0).InMask, 3);
  EXPECT_EQ(d.Line(0).InState, 1);
  EXPECT_EQ(d.Line(1).InMask, 0xF3);
  EXPECT_FALSE(d.source.Changed);
}

TEST_F(Chain, OutputFourOfADriveWithThreeIsRefusedOnBothHubsButNotOnTheQuadsOwnSlot) {
  d.source.program.Axis.DriveModel[0] = 1;
  Set(0, SO, 0).IONum = 3;
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes(
      {{"On line 1 of your program you have a Set Output instruction using Output 4.  Oskel drives have only "
        "3 outputs.",
        "Can't download", Buttons::OK, Icon::None}});
  d.boxes.shown.clear();
  d.source.program.HubIndex = HubQuad;
  d.Line(0).Drive = 4;
  EXPECT_EQ(Run(), CheckResult::Passed);
}

TEST_F(Chain, AVariableThatNoPromptFillsStopsAndTheLastFindingWins) {
  Set(0, FL).DistIsMMI = true;
  d.Line(0).DistVar = 3;
  Set(1, FP).SpeedIsMMI = true;
  d.Line(1).SpeedVar = 26;
  EXPECT_EQ(Run(), CheckResult::Stopped);
  EXPECT_TRUE(d.source.program.MMIused);
  ExpectBoxes(
      {{"You are using the MMI variable Speed2 in program line 2.  But there is no MMI Prompt instruction to "
        "put data into that variable.",
        "Can't Download", Buttons::OK, Icon::None}});
}

TEST_F(Chain, APromptOrALearnedPositionFillsAVariable) {
  Set(0, LP).DistVar = 15;
  Set(1, FP).DistIsMMI = true;
  d.Line(1).DistVar = 15;
  EXPECT_EQ(Run(), CheckResult::Passed);
}

TEST_F(Chain, ASpeedPromptAtARatioOfExactlyFortyPassesAndAboveItStops) {
  Set(0, MMI).SubType = GetSpeed;
  d.source.program.Axis.StepsPerUnit[0] = 500;
  d.source.program.Axis.UnitName[0] = "mm";
  EXPECT_EQ(Run(), CheckResult::Passed);
  d.source.program.Axis.StepsPerUnit[0] = 499;
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes(
      {{"You are using an MMI prompt on program line 1 to enter a speed for Axis 1.  This will result in a "
        "calculation error because the ratio of steps/rev to steps/mm is larger than 40.  Please reduce the "
        "steps/rev or choose a different unit definition for Axis 1.",
        "Can't Download", Buttons::OK, Icon::None}});
}

struct WarningCase {
  std::int16_t type;
  MMISub prompt;
  const char* text;
};

TEST_F(Chain, APromptOfAnotherKindIsAWarningThatCancelStopsAndOkPasses) {
  const WarningCase kCases[] = {{FL, GetSpeed,
                                 "Warning: You are using the MMI variable Dist1 in program line 1 as a "
                                 "distance.  But the MMI Prompt instruction "
                                 "on line 3 puts speed data into that variable."},
                                {RP, GetDistance,
                                 "Warning: You are using the MMI variable Dist1 in program line 1 as a "
                                 "repeat count.  But the MMI Prompt "
                                 "instruction on line 3 puts distance data into that variable."}};
  for (const auto& row : kCases) {
    Set(0, row.type).DistVar = 0;
    d.Line(0).DistIsMMI = row.type == FL;
    d.Line(0).CountIsMMI = row.type == RP;
    Set(1, row.type == RP ? std::int16_t{ER} : std::int16_t{NO});
    Set(2, MMI).SubType = row.prompt;
    d.boxes.shown.clear();
    d.boxes.setNextAnswer(Answer::Cancel);
    d.source.Changed = true;
    EXPECT_EQ(Run(), CheckResult::Stopped);
    EXPECT_TRUE(d.source.Changed);
    ExpectBoxes({{row.text, "Warning", Buttons::OKCancel, Icon::Question}});
    d.boxes.setNextAnswer(Answer::OK);
    EXPECT_EQ(Run(), CheckResult::Passed);
  }
}

TEST_F(Chain, AVariableUsedAsASpeedIsNamedSo) {
  Set(0, FSS).SpeedIsMMI = true;
  d.Line(0).SpeedVar = 0;
  Set(1, MMI).SubType = GetCount;
  d.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_EQ(Run(), CheckResult::Stopped);
  EXPECT_EQ(d.boxes.shown[0].text,
            "Warning: You are using the MMI variable Dist1 in program line 1 as a speed.  But the MMI Prompt "
            "instruction on line 2 puts repeat count data into that variable.");
}

TEST_F(Chain, ALineThatUsesADriveSetToNoneStops) {
  d.source.program.Axis.DriveModel[2] = 0;
  Set(7, ED, 2);
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes({{"The instruction on line 8 uses drive 3, but that drive model is set for \"none\".",
                "No drive found", Buttons::OK, Icon::None}});
}

TEST_F(Chain, AHubQuadsOwnSlotNeedsNoDriveForInputsAndOutputs) {
  d.source.program.HubIndex = HubQuad;
  d.source.program.Axis.DriveModel[4] = 0;
  for (const std::int16_t type : {WI, SO, II, III, WII}) {
    Set(0, type, 4).InMask = 1;
    EXPECT_EQ(Run(), CheckResult::Passed) << type << Told();
  }
}

TEST_F(Chain, CallsNeedAReturnAndReturnsACall) {
  Set(0, CL);
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes(
      {{"You have subroutine Calls in your program, but no Return instructions.  That is not allowed.",
        "Call without Return", Buttons::OK, Icon::None}});
  d.boxes.shown.clear();
  Set(0, RT);
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes(
      {{"You have Return instructions in your program, but no subroutine Calls.  That is not allowed.",
        "Return without Call", Buttons::OK, Icon::None}});
  d.boxes.shown.clear();
  Set(1, CL);
  EXPECT_EQ(Run(), CheckResult::Passed);
}

TEST_F(Chain, WithProceedOnAMoveACommentAWaitAndAMoveOnTheSameAxisTheMessageNamesTheFirstAndTheFourthLine) {
  Set(0, FL).Proceed = true;
  Set(1, CM);
  Set(2, WT);
  Set(3, FL);
  EXPECT_EQ(Run(), CheckResult::Stopped);
  ExpectBoxes(
      {{"You can't do 2 moves on \"Axis 1\" at the same time, but you seem to be attempting that on lines 1 "
        "and "
        "4. Perhaps you should change line 1 to the option \"Wait for end of move before executing the next "
        "instruction.\"",
        "Two moves on same axis", Buttons::OK, Icon::None}});
}

TEST_F(Chain, RepeatsAndEndRepeatsMustPairAndTheseFailuresTakeTheProgramForUnchanged) {
  Set(0, ER);
  EXPECT_EQ(Run(), CheckResult::StoppedClean);
  Set(0, RP);
  EXPECT_EQ(Run(), CheckResult::StoppedClean);
  Set(0, ER);
  Set(1, RP);
  EXPECT_EQ(Run(), CheckResult::StoppedClean) << "reversed, they pass the count and fail the order";
  ExpectBoxes(
      {{"Can't download.  You have more End Repeats than Repeats.", "Tavlo Composer", Buttons::OK,
        Icon::Exclamation},
       {"Can't download.  You have more Repeats than End Repeats.", "Tavlo Composer", Buttons::OK,
        Icon::Exclamation},
       {"Can't download.  You have and End Repeat at the beginning of a Repeat loop.  End Repeat goes at the "
        "end of the loop.",
        "End Repeat goes at End", Buttons::OK, Icon::Exclamation}});
}

struct LineCase {
  const char* name;
  std::function<void(FakeDesk&)> make;
  std::vector<int> lines;
};

TEST(CheckedLine, EveryCheckThatNamesALineGoesToItBeforeItsBoxComesUp) {
  const auto set = [](FakeDesk& desk, int line, std::int16_t type, int axis = 0) -> Instruction& {
    desk.Line(line).Type = type;
    desk.Line(line).Drive = static_cast<std::int16_t>(axis);
    return desk.Line(line);
  };
  const LineCase kCases[] = {
      {"no axis",
       [&](FakeDesk& f) {
         f.source.program.HubIndex = HubQuad;
         set(f, 20, FL, 5);
         set(f, 91, FL, 6);
       },
       {20, 91}},
      {"no such input",
       [&](FakeDesk& f) {
         f.source.program.HubIndex = HubQuad;
         set(f, 21, WI, kHubQuadIO).IONum = 4;
         set(f, 199, II, kHubQuadIO).IONum = 7;
       },
       {21, 199}},
      {"no such slot",
       [&](FakeDesk& f) {
         f.source.program.HubIndex = HubQuad;
         set(f, 22, SO, 5);
       },
       {22}},
      {"output 4",
       [&](FakeDesk& f) {
         f.source.program.Axis.DriveModel[0] = 1;
         set(f, 23, SO).IONum = 3;
         set(f, 24, SO).IONum = 3;
       },
       {23, 24}},
      {"no prompt", [&](FakeDesk& f) { set(f, 25, FL).DistIsMMI = true; }, {25}},
      {"ratio",
       [&](FakeDesk& f) {
         f.source.program.Axis.StepsPerUnit[0] = 1;
         set(f, 26, MMI).SubType = GetSpeed;
       },
       {26}},
      {"wrong prompt",
       [&](FakeDesk& f) {
         set(f, 27, FL).DistIsMMI = true;
         set(f, 28, MMI).SubType = GetCount;
       },
       {27}},
      {"no drive",
       [&](FakeDesk& f) {
         f.source.program.Axis.DriveModel[2] = 0;
         set(f, 29, ED, 2);
       },
       {29}},
      {"two moves",
       [&](FakeDesk& f) {
         set(f, 30, FL).Proceed = true;
         set(f, 31, FL);
       },
       {30}},
      {"calls", [&](FakeDesk& f) { set(f, 32, CL); }, {}},
      {"repeats", [&](FakeDesk& f) { set(f, 33, RP); }, {}},
  };
  for (const LineCase& row : kCases) {
    FakeDesk f;
    f.source.program.HubVersion = 1.38F;
    f.source.program.Axis.DriveModel.fill(11);
    row.make(f);
    f.boxes.on_box = [&](const ShownBox& box) {
      if (row.lines.empty()) return;
      ASSERT_FALSE(f.view.gone_to.empty()) << row.name;
      const std::string number = std::to_string(f.view.gone_to.back() + 1);
      const auto names = [&](std::string_view word) {
        return box.text.find(std::string(word) + number) != std::string::npos;
      };
      EXPECT_TRUE(names("line ") || names("lines ")) << row.name << ": " << box.text;
    };
    f.boxes.setNextAnswer(Answer::Cancel);
    ScanLoops(f.source.program);
    EXPECT_NE(CheckProgram(f.desk.program(), f.desk.boxes), CheckResult::Passed) << row.name;
    EXPECT_EQ(f.view.gone_to, row.lines) << row.name;
  }
}

struct OrderCase {
  /// Mends what the checks before this one stumble over.
  std::function<void(Program&)> mend;
  /// A part of the text of the first box.
  const char* told;
};

TEST_F(Chain, TheChecksComeInTheirOrder) {
  Program& program = d.source.program;
  program.HubIndex = HubQuad;
  program.HubVersion = 1.0F;
  program.Axis.DriveModel.fill(1);
  program.Axis.DriveModel[2] = 0;
  program.Axis.StepsPerUnit.fill(1);
  Set(0, IM, 5);
  Set(1, SS);
  Set(2, WI, 4).IONum = 4;
  Set(3, II, 6);
  Set(4, SO).IONum = 3;
  Set(5, FL).DistIsMMI = true;
  d.Line(5).DistVar = 7;
  Set(6, MMI).SubType = GetSpeed;
  Set(7, ED, 2);
  Set(8, CL);
  Set(10, FL, 1).Proceed = true;
  Set(11, FL, 1);
  Set(12, ER);
  const OrderCase kCases[] = {
      {[](Program&) {}, "If Moving"},
      {[](Program& p) { p.HubVersion = 1.05F; }, "Start/Stop"},
      {[](Program& p) { p.HubVersion = 1.06F; }, "On line 1 you have"},
      {[](Program& p) { p.Prog[0].Drive = 0; }, "uses input 5"},
      {[](Program& p) { p.Prog[2].IONum = 0; }, "On line 4 you have"},
      {[](Program& p) { p.Prog[3].Drive = 0; }, "Output 4"},
      {[](Program& p) { p.Prog[4].IONum = 0; }, "in program line 6.  But there is no MMI Prompt"},
      {[](Program& p) { p.Prog[6].DistVar = 7; }, "to enter a speed for Axis 1"},
      {[](Program& p) { p.Axis.StepsPerUnit.fill(10000); }, "Warning: "},
      {[](Program& p) { p.Prog[6].SubType = GetDistance; }, "uses drive 3"},
      {[](Program& p) { p.Axis.DriveModel[2] = 1; }, "no Return"},
      {[](Program& p) { p.Prog[8].Type = RT; }, "no subroutine Calls"},
      {[](Program& p) { p.Prog[8].Type = NO; }, "2 moves"},
      {[](Program& p) { p.Prog[10].Proceed = false; }, "more End Repeats"},
      {[](Program& p) { p.Prog[13].Type = RP; }, "You have and End Repeat"}};
  for (const OrderCase& row : kCases) {
    row.mend(program);
    d.boxes.shown.clear();
    d.boxes.setNextAnswer(Answer::Cancel);
    EXPECT_NE(Run(), CheckResult::Passed) << row.told;
    ASSERT_EQ(d.boxes.shown.size(), 1U) << row.told << '\n' << Told();
    EXPECT_NE(d.boxes.shown[0].text.find(row.told), std::string::npos) << Told();
  }
  program.Prog[12].Type = RP;
  program.Prog[13].Type = ER;
  EXPECT_EQ(Run(), CheckResult::Passed) << Told();
}

}  // namespace
}  // namespace tavlo::testing
