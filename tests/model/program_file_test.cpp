// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program_file.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "model/hand_file.h"
#include "support/new_program.h"

namespace tavlo {
namespace {

using testing::HandFile;
using testing::LoadBody;
using testing::NewProgram;

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", start)) {
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  EXPECT_EQ(start, text.size()) << "the last record ends in CR LF";
  return lines;
}

bool LoadText(const std::string& text, Program& program) {
  ItemReader items(text);
  std::string version;
  items.Read(version);
  return LoadHubProg(items, ParseRevision(version), program);
}

TEST(ProgramFile, TheFirstEighteenLinesOfANewUntouchedProgram) {
  const std::vector<std::string> expected = {
      "1.29.1",
      " 8 ",
      "0,11",
      "20000,10000,10000",
      "3,.5,3",
      "0,100,100",
      "1,10,0,0,10",
      "\"\"",
      "3,50,0,1,0",
      "0,25,1,26",
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#",
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#",
      "#FALSE#,0,0,#TRUE#",
      "#FALSE#,1,0",
      "0,9,19,29,39,49,59,69,79",
      "#FALSE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#",
      "0,#FALSE#,1,100,#FALSE#,#FALSE#,1,100,#FALSE#,1,100",
      "0,1,#FALSE#"};
  const auto lines = LinesOf(WriteHubProg(NewProgram(), 0));
  ASSERT_GE(lines.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(lines[i], expected[i]) << "line " << i + 1;
}

TEST(ProgramFile, TheRecordsBehindTheLines) {
  Program program = NewProgram();
  program.LimitList = 1;
  program.LimitBranch = 12;
  const auto lines = LinesOf(WriteHubProg(program, 3));
  ASSERT_EQ(lines.size(), 2U + 200 * 16 + 8 * 2 + 1 + 8 + 1 + 1);
  const std::size_t axes = 2 + 200 * 16;
  EXPECT_EQ(lines[axes - 16], "199,11");
  EXPECT_EQ(lines[axes], "1,1,2,8,20000,\"rev\",#TRUE#,8000,0");
  EXPECT_EQ(lines[axes + 1], "1,2");
  EXPECT_EQ(lines[axes + 12], "8,1,2,8,8000,\"rev\",#TRUE#,8000,0");
  EXPECT_EQ(lines[axes + 14], "0,1,2,8,20000,\"rev\",#TRUE#,8000,0");
  EXPECT_EQ(lines[axes + 16], "1,11");
  EXPECT_EQ(lines[axes + 17], "\"Axis 1\"");
  EXPECT_EQ(lines[axes + 24], "\"Axis 8\"");
  EXPECT_EQ(lines[axes + 25], "3");
  EXPECT_EQ(lines[axes + 26], "#FALSE#,#TRUE#");
}

TEST(ProgramFile, EveryFieldStandsInItsRecord) {
  Program program = NewProgram();
  program.HubIndex = HubQuad;
  Instruction& line = program.Prog[0];
  line = Instruction{};
  line.Type = 14;
  line.Dist = 1, line.Dist2 = 2, line.SafetyDist = 3;
  line.Speed = 0.25F, line.Speed2 = -1.25F, line.RetSpeed = 1E+07F;
  line.Dir = 1, line.Accel = 4, line.Decel = 5;
  line.State = 6, line.Time = 7, line.LineNum = 8, line.IONum = 9, line.Count = 10;
  line.Text = "Hi, there";
  line.SubType = 11, line.UpperInt = 12, line.UpperFrac = 13, line.LowerInt = 14, line.LowerFrac = 15;
  line.DistVar = 16, line.SpeedVar = 17, line.Dist2Var = 18, line.Speed2Var = 19;
  line.SpeedIsMMI = line.CountIsMMI = true;
  line.Wrap1 = line.Blank3 = true;
  line.Reserved3 = true, line.InState = 20, line.InMask = 21;
  line.MotorOn = true, line.Current = 2.5F, line.IdlePct = 22;
  for (int i = 0; i < 9; ++i) line.MenuLine[i] = static_cast<std::int16_t>(30 + i);
  line.MenuKey[0] = line.MenuKey[8] = true;
  line.Drive = 23, line.Proceed = true, line.JogSpeed = 1.5F, line.JogAccel = 24, line.JogOn = true;
  line.JogLRSpeed = 2.5F, line.JogLRAccel = 25, line.JogUD = true, line.JogUDSpeed = 3.5F,
  line.JogUDAccel = 26;
  line.JogLRDrive = 27, line.JogUDDrive = 28, line.WaitThis = true;
  line.Reserved1 = 99, line.DrvMask = 98, line.DrvState = 97, line.LoopIndex = 96;
  const std::vector<std::string> expected = {
      " 24 ",
      "0,14",
      "1,2,3",
      ".25,-1.25,1E+07",
      "1,4,5",
      "6,7,8,9,10",
      "\"Hi, there\"",
      "11,12,13,14,15",
      "16,17,18,19",
      "#FALSE#,#TRUE#,#FALSE#,#FALSE#,#TRUE#",
      "#FALSE#,#TRUE#,#FALSE#,#FALSE#,#TRUE#,#FALSE#",
      "#TRUE#,20,21,#FALSE#",
      "#TRUE#,2.5,22",
      "30,31,32,33,34,35,36,37,38",
      "#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#TRUE#",
      "23,#TRUE#,1.5,24,#TRUE#,#FALSE#,2.5,25,#TRUE#,3.5,26",
      "27,28,#TRUE#"};
  const auto lines = LinesOf(WriteHubProg(program, 0));
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(lines[i + 1], expected[i]) << "line " << i + 2;
}

TEST(ProgramFile, TheHandMadeFileOfAnUntouchedProgramIsWhatTheWriterWrites) {
  Program program = NewProgram();
  for (int axis = 0; axis < kAxes; ++axis) {
    program.Axis.DriveModel[axis] = 1;
    program.Axis.StepsPerUnit[axis] = 20000;
  }
  EXPECT_EQ(WriteHubProg(program, 0), "1.29.1\r\n" + HandFile().Body());
}

TEST(ProgramFile, SavingWithNoOptComOnLeavesOutThePortRecordAndTheFileReadsAsDamaged) {
  const std::string text = WriteHubProg(NewProgram(), std::nullopt);
  EXPECT_EQ(LinesOf(text).size(), 2U + 200 * 16 + 8 * 2 + 1 + 8 + 1);
  Program program = NewProgram();
  EXPECT_FALSE(LoadText(text, program));
  EXPECT_TRUE(program.Axis.SameUnits) << "the second flag is read as the first";
}

TEST(ProgramFile, TheHubCodeSelectsTheModel) {
  struct {
    std::string code;
    int index;
  } const cases[] = {{"1", 0}, {" 8 ", 0}, {" 24 ", 1}, {"7", 0}, {"0", 0}, {"-24", 0}, {"32767", 0}};
  for (const auto& c : cases) {
    HandFile file;
    file.hub = c.code;
    Program program = NewProgram();
    program.HubIndex = c.index == 0 ? HubQuad : HubOcto;
    EXPECT_TRUE(LoadBody(file, program)) << c.code;
    EXPECT_EQ(program.HubIndex, c.index) << c.code;
  }
}

TEST(ProgramFile, TheLineIndexInAFileIsIgnored) {
  std::string body = HandFile().Body();
  const std::size_t at = body.find("\r\n7,11\r\n");
  ASSERT_NE(at, std::string::npos);
  body.replace(at, 8, "\r\n-150,4\r\n");
  Program program = NewProgram();
  ItemReader items(body);
  EXPECT_TRUE(LoadHubProg(items, 1.2901F, program));
  EXPECT_EQ(program.Prog[7].Type, 4);
}

TEST(ProgramFile, ASetOutputLineWithTime2LoadsAs5) {
  HandFile file;
  const struct {
    int line;
    std::string type;
    std::string time;
    int loaded;
  } cases[] = {{0, "9", "2", 5},  {1, "21", "4", 5}, {2, "9", "5", 5},
               {3, "9", "-1", 5}, {4, "4", "2", 2},  {5, "21", "6", 6}};
  for (const auto& c : cases) {
    file.lines[c.line].type = c.type;
    file.lines[c.line].state = "1," + c.time + ",0,0,10";
  }
  Program program = NewProgram();
  EXPECT_TRUE(LoadBody(file, program));
  for (const auto& c : cases) EXPECT_EQ(program.Prog[c.line].Time, c.loaded) << c.line;
}

TEST(ProgramFile, ACommentOf40CharactersLoadsCutTo27) {
  HandFile file;
  const std::string text = "0123456789012345678901234567890123456789";
  file.lines[0].type = "13";
  file.lines[1].type = "14";
  file.lines[0].text = file.lines[1].text = "\"" + text + "\"";
  file.lines[2].type = "13";
  file.lines[2].text = "\"" + text.substr(0, 27) + "\"";
  Program program = NewProgram();
  EXPECT_TRUE(LoadBody(file, program));
  EXPECT_EQ(program.Prog[0].Text, text.substr(0, 27));
  EXPECT_EQ(program.Prog[1].Text, text);
  EXPECT_EQ(program.Prog[2].Text, text.substr(0, 27));
}

TEST(ProgramFile, ADriveCurrentOf9OnModel7IsBroughtDownTo1Point2) {
  HandFile file;
  file.axes[0].settings = "7,9,2,8,20000,\"rev\",#TRUE#,8000,0";
  file.axes[1].settings = "40,9,2,8,20000,\"rev\",#TRUE#,8000,0";
  file.axes[2].settings = "40,10.5,2,8,20000,\"rev\",#TRUE#,8000,0";
  file.axes[3].settings = "-300,9,2,8,20000,\"rev\",#TRUE#,8000,0";
  Program program = NewProgram();
  EXPECT_TRUE(LoadBody(file, program));
  EXPECT_EQ(program.Axis.DriveCurrent[0], 1.2F);
  EXPECT_EQ(program.Axis.DriveCurrent[1], 9.0F);
  EXPECT_EQ(program.Axis.DriveCurrent[2], 10.0F);
  EXPECT_EQ(program.Axis.DriveCurrent[3], 2.0F);
}

TEST(ProgramFile, UseUnitsBecomesTrueWhateverTheFileSaid) {
  HandFile file;
  file.axes[2].settings = "1,1,2,8,20000,\"rev\",#FALSE#,8000,0";
  Program program = NewProgram();
  program.Axis.UseUnits.fill(false);
  EXPECT_TRUE(LoadBody(file, program));
  for (int axis = 0; axis < kAxes; ++axis) EXPECT_TRUE(program.Axis.UseUnits[axis]);
}

TEST(ProgramFile, AxisSettingsAndLimitBranchAreRead) {
  HandFile file;
  file.axes[5].settings = "12,3.5,1,16,4000,\"mm\",#TRUE#,12345,2";
  file.axes[5].currents = "6.5,12.25";
  file.names[5] = "\"Feeder\"";
  file.limit = "1,41";
  file.same = "#TRUE#,#FALSE#";
  Program program = NewProgram();
  EXPECT_TRUE(LoadBody(file, program));
  EXPECT_EQ(program.Axis.DriveModel[5], 12);
  EXPECT_EQ(program.Axis.DriveCurrent[5], 3.5F);
  EXPECT_EQ(program.Axis.IdleCode[5], 1);
  EXPECT_EQ(program.Axis.StepResCode[5], 16);
  EXPECT_EQ(program.Axis.StepsPerUnit[5], 4000);
  EXPECT_EQ(program.Axis.UnitName[5], "mm");
  EXPECT_EQ(program.Axis.StepsPerRev[5], 12345);
  EXPECT_EQ(program.Axis.LimitKind[5], 2);
  EXPECT_EQ(program.Axis.ContCurrent[5], 6.5F);
  EXPECT_EQ(program.Axis.PeakCurrent[5], 12.25F);
  EXPECT_EQ(program.Axis.AxisName[5], "Feeder");
  EXPECT_EQ(program.LimitList, 1);
  EXPECT_EQ(program.LimitBranch, 42);
  EXPECT_TRUE(program.Axis.SameUnits);
  EXPECT_FALSE(program.Axis.SameLimits);
}

TEST(ProgramFile, AnIndexThatTheLimitListDoesNotHaveIsAnErrorAndTheListStays) {
  for (const std::string index : {"-1", "3", "32767"}) {
    HandFile file;
    file.limit = index + ",41";
    Program program = NewProgram();
    program.LimitList = ContinueProgram;
    EXPECT_FALSE(LoadBody(file, program)) << index;
    EXPECT_EQ(program.LimitList, ContinueProgram);
    EXPECT_EQ(program.LimitBranch, 42);
  }
}

TEST(ProgramFile, AnyNumberOfALimitBranchIsTaken) {
  for (const auto& [item, value] :
       {std::pair("4.5", 5.5), std::pair("-8", -7.0), std::pair("1E+300", 1e300)}) {
    HandFile file;
    file.limit = std::string("1,") + item;
    Program program = NewProgram();
    EXPECT_TRUE(LoadBody(file, program));
    EXPECT_EQ(program.LimitBranch, value);
    for (const int line : {0, 199, 200}) EXPECT_FALSE(IsLimitTarget(program, line));
  }
}

TEST(ProgramFile, WhatStandsInNoFileKeepsItsValue) {
  Program program = NewProgram();
  Instruction& line = program.Prog[3];
  line.DrvMask = 5, line.DrvState = 6, line.LoopIndex = 7, line.Reserved1 = 8, line.Reserved2 = false;
  program.Axis.RunCurrent[1] = 1.25F;
  program.Axis.AccelCurrent[1] = 1.5F;
  program.Axis.IdleCurrent[1] = 1.75F;
  program.Axis.SameSpare = true;
  EXPECT_TRUE(LoadBody(HandFile(), program));
  EXPECT_EQ(line.DrvMask, 5);
  EXPECT_EQ(line.DrvState, 6);
  EXPECT_EQ(line.LoopIndex, 7);
  EXPECT_EQ(line.Reserved1, 8);
  EXPECT_FALSE(line.Reserved2);
  EXPECT_EQ(program.Axis.RunCurrent[1], 1.25F);
  EXPECT_EQ(program.Axis.AccelCurrent[1], 1.5F);
  EXPECT_EQ(program.Axis.IdleCurrent[1], 1.75F);
  EXPECT_TRUE(program.Axis.SameSpare);
}

TEST(ProgramFile, ABadItemIsToldAndItsFieldAloneKeepsItsValue) {
  HandFile file;
  file.lines[20].distances = "11,twelve,13";
  Program program = NewProgram();
  EXPECT_FALSE(LoadBody(file, program));
  EXPECT_EQ(program.Prog[20].Dist, 11);
  EXPECT_EQ(program.Prog[20].Dist2, 10000);
  EXPECT_EQ(program.Prog[20].SafetyDist, 13);
  EXPECT_EQ(program.Prog[199].MenuLine[8], 79);
}

TEST(ProgramFile, AFileWithMoreItemsThanItsRevisionCallsForIsReadWithoutComplaint) {
  Program program = NewProgram();
  const std::string body = HandFile().Body() + "1,2,3\r\n\"more\"\r\n";
  ItemReader items(body);
  EXPECT_TRUE(LoadHubProg(items, 1.2901F, program));
}

TEST(ProgramFile, AFileThatEndsAnywhereIsDamagedAndVisitsTheWholeTable) {
  const std::string body = HandFile().Body();
  std::mt19937 random(4);
  for (int i = 0; i < 60; ++i) {
    const std::string cut = body.substr(0, random() % (body.size() - 8));
    Program program = NewProgram();
    program.Axis.UseUnits.fill(false);
    ItemReader items(cut);
    EXPECT_FALSE(LoadHubProg(items, 1.2901F, program)) << cut.size();
    EXPECT_TRUE(program.Axis.UseUnits[7]);
  }
}

TEST(ProgramFile, ARandomValidProgramComesBackFromItsFileByteForByte) {
  std::mt19937 random(5);
  const auto number = [&random](int low, int high) {
    return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
  };
  for (int run = 0; run < 30; ++run) {
    Program program = NewProgram();
    program.HubIndex = static_cast<std::int16_t>(number(0, 1));
    program.LimitList = static_cast<std::int16_t>(number(0, 2));
    program.LimitBranch = number(1, 200);
    for (int i = 0; i < kLines; ++i) {
      Instruction& line = program.Prog[i];
      line.Type = static_cast<std::int16_t>(number(0, 31));
      line.Dist = number(1, 16000000), line.Dist2 = number(1, 16000000),
      line.SafetyDist = number(0, 16000000);
      line.Speed = static_cast<float>(number(1, 40000)) / 400, line.Speed2 = static_cast<float>(random()) / 7;
      line.Dir = static_cast<std::int16_t>(number(0, 1));
      line.Time = number(5, 30000), line.Count = number(1, 32767),
      line.LineNum = static_cast<std::int16_t>(number(0, 199));
      for (int c = number(0, 27); c > 0; --c) line.Text += static_cast<char>(number(1, 255));
      line.Text = MakeQuotesSingle(line.Text);
      line.DistIsMMI = number(0, 1) == 1, line.MenuKey[number(0, 8)] = true, line.JogUD = number(0, 1) == 1;
      line.MenuLine[number(0, 8)] = static_cast<std::int16_t>(number(0, 199));
      line.WaitThis = number(0, 1) == 1, line.Reserved3 = number(0, 1) == 1;
      line.JogUDAccel = number(1, 3000), line.Current = static_cast<float>(number(1, 100)) / 10;
    }
    program.Axis.AxisName[number(0, 7)] = "Lift, \xe9";
    program.Axis.SameUnits = number(0, 1) == 1;
    const std::string text = WriteHubProg(program, number(0, 7));
    Program loaded = NewProgram();
    ASSERT_TRUE(LoadText(text, loaded));
    EXPECT_EQ(loaded.Prog, program.Prog);
    EXPECT_EQ(loaded.Axis, program.Axis);
    EXPECT_EQ(loaded.HubIndex, program.HubIndex);
    EXPECT_EQ(loaded.LimitList, program.LimitList);
    EXPECT_EQ(loaded.LimitBranch, program.LimitBranch);
  }
}

}  // namespace
}  // namespace tavlo
