// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/legacy_import.h"

#include <gtest/gtest.h>

#include <functional>

#include "model/old_file.h"
#include "model/program_file.h"

namespace tavlo::testing {
namespace {

constexpr const char* kMove141 =
    "20000,3,100,90,1,700,1.5,500,2.5,7,9,1,25,4,11,12,#TRUE#,#FALSE#,#TRUE#,"
    "13,14,#TRUE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,#FALSE#,\"old\",5,4,#TRUE#,#FALSE#";

Program Import(const std::string& text, const char* revision, bool good = true) {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  ItemReader items(text);
  EXPECT_EQ(LoadOskelProg(items, ParseRevision(revision), program), good);
  return program;
}

TEST(LegacyImport, AFileOfRevision11FillsLines0To28AndItsDriveCodeIsTakenAs5) {
  const std::string text = OldFile("", 29, {0, kMove29}, {{3, {13, "\"a comment\""}}}, "255,100,200,2.5,80");
  const Program program = Import(text, "1.1");
  EXPECT_EQ(program.Prog[28].Type, FL);
  EXPECT_EQ(program.Prog[29].Type, NO);
  EXPECT_EQ(program.Prog[3].Text, "a comment");
  EXPECT_FLOAT_EQ(program.Axis.DriveCurrent[0], 3.5F);
  const Instruction& line = program.Prog[0];
  EXPECT_EQ(line.Dist, 20000);
  EXPECT_EQ(line.Speed, 3.0F);
  EXPECT_EQ(line.Accel, 100);
  EXPECT_EQ(line.Decel, 90);
  EXPECT_EQ(line.Dir, 1);
  EXPECT_EQ(line.SafetyDist, 500);
  EXPECT_EQ(line.RetSpeed, 2.5F);
  EXPECT_EQ(line.IONum, 7);
  EXPECT_EQ(line.LineNum, 9);
  EXPECT_EQ(line.Time, 25);
  EXPECT_EQ(line.Count, 4);
  EXPECT_EQ(line.JogSpeed, 2.5F);
  EXPECT_EQ(line.JogAccel, 80);
  EXPECT_EQ(program.Axis.LimitKind[0], 1) << "200 is 128 + 72";
  EXPECT_EQ(program.Axis.StepResCode[0], 72 & 15);
  EXPECT_EQ(program.Axis.IdleCode[0], 0);
}

TEST(LegacyImport, RevisionExactly12GoesByThe100LineLayoutWithItsDriveCode) {
  const std::string text = OldFile("1", 100, {0, kMove12}, {}, "51,0,8,1,100");
  const Program program = Import(text, "1.2");
  EXPECT_EQ(program.Prog[99].Type, FL);
  EXPECT_EQ(program.Prog[100].Type, NO);
  EXPECT_FLOAT_EQ(program.Axis.DriveCurrent[0], 51 / 255.0F * 5.5F);
  const Instruction& line = program.Prog[50];
  EXPECT_EQ(line.DistVar, 11);
  EXPECT_EQ(line.SpeedVar, 12);
  EXPECT_TRUE(line.DistIsMMI);
  EXPECT_FALSE(line.SpeedIsMMI);
  EXPECT_TRUE(line.CountIsMMI);
  EXPECT_TRUE(line.Wrap1);
  EXPECT_TRUE(line.Wrap2);
  EXPECT_EQ(line.Text, "old");
}

TEST(LegacyImport, RevisionExactly14GoesByTheItemsBeforeItAnd141ByIts) {
  const std::string unit = "\r\n500,\"mm\",#FALSE#";
  const Program before = Import(OldFile("1", 100, {0, kMove12}, {}, "51,0,8,1,100" + unit), "1.4");
  EXPECT_EQ(before.Axis.StepsPerUnit[0], 500);
  EXPECT_EQ(before.Axis.UnitName[0], "mm");
  EXPECT_TRUE(before.Axis.UseUnits[0]) << "whatever the file said";
  EXPECT_EQ(before.Axis.StepsPerRev[0], 8000);
  const Program after =
      Import(OldFile("1", 100, {0, kMove141}, {}, "51,0,8,1,100" + unit + "\r\n4096"), "1.41");
  EXPECT_EQ(after.Axis.StepsPerRev[0], 4096);
  EXPECT_EQ(after.Prog[7].Dist2, 700);
  EXPECT_EQ(after.Prog[7].Speed2, 1.5F);
  EXPECT_EQ(after.Prog[7].Dist2Var, 13);
  EXPECT_TRUE(after.Prog[7].Dist2IsMMI);
  EXPECT_EQ(after.Prog[7].InMask, 5);
  EXPECT_EQ(after.Prog[7].InState, 4);
  EXPECT_TRUE(after.Prog[7].Reserved3);
  EXPECT_FALSE(after.Prog[7].WaitAND);
}

TEST(LegacyImport, TheUnitRecordIsThereFromTheRevisionAbove128On) {
  const std::string plain = OldFile("1", 100, {0, kMove12}, {}, "51,0,8,1,100");
  EXPECT_EQ(Import(plain, "1.28").Axis.UnitName[0], "rev");
  EXPECT_EQ(Import(plain + "500,\"mm\",#TRUE#\r\n", "1.29").Axis.UnitName[0], "mm");
}

TEST(LegacyImport, AHandWheelLineArrivesAsACommentWithItsOtherFieldsLeft) {
  const Program program =
      Import(OldFile("1", 100, {0, kMove12}, {{4, {18, kMove12}}}, "51,0,8,1,100"), "1.2");
  EXPECT_EQ(program.Prog[4].Type, CM);
  EXPECT_EQ(program.Prog[4].Text, "Deleted Hand Wheel instruction");
  EXPECT_EQ(program.Prog[4].Dist, 20000);
}

TEST(LegacyImport, ASetOutputLineWithTime3HasTime5AndACurrentLineTakesItsFieldsFromTimeAndCount) {
  std::string output = kMove12;
  output.replace(output.find(",25,"), 4, ",3,");
  const Program program =
      Import(OldFile("1", 100, {0, kMove12}, {{0, {9, output}}, {1, {19, kMove12}}}, "51,0,8,1,100"), "1.2");
  EXPECT_EQ(program.Prog[0].Time, 5);
  EXPECT_EQ(program.Prog[1].Current, 25.0F);
  EXPECT_EQ(program.Prog[1].IdlePct, 4);
}

TEST(LegacyImport, AnyImportedLineHasDrive0WhateverAxisItHeldBefore) {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  for (Instruction& line : program.Prog) line.Drive = 5;
  const std::string text = OldFile("1", 100, {0, kMove12}, {}, "51,0,8,1,100");
  ItemReader items(text);
  EXPECT_TRUE(LoadOskelProg(items, ParseRevision("1.2"), program));
  for (int line = 0; line < 100; ++line) EXPECT_EQ(program.Prog[line].Drive, 0);
}

TEST(LegacyImport, APromptOfTheMenuRevisionsBringsItsKeys) {
  const std::string head = "9,6,1,50,0,1,0,3,";
  const std::string menu = head +
                           "1,2,3,4,5,6,7,8,#TRUE#,#FALSE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,\"pick\",#TRUE#,"
                           "#TRUE#,#FALSE#,#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#TRUE#";
  const std::string settings = "51,0,8,1,100\r\n500,\"mm\",#TRUE#\r\n4096";
  const Program program = Import(OldFile("1", 100, {0, kMove141}, {{2, {14, menu}}}, settings), "1.45");
  const Instruction& line = program.Prog[2];
  EXPECT_EQ(line.SubType, Menu);
  EXPECT_EQ(line.MenuLine[8], 8);
  EXPECT_TRUE(line.Wrap3);
  EXPECT_TRUE(line.Blank1);
  EXPECT_EQ(line.Text, "pick");
  EXPECT_TRUE(line.MenuKey[1]);
  EXPECT_FALSE(line.MenuKey[2]);
  EXPECT_TRUE(line.MenuKey[8]);
  const Program newest =
      Import(OldFile("1", 100, {0, kMove141}, {{2, {14, menu + ",1"}}}, settings), "1.5.1");
  EXPECT_EQ(newest.Prog[2].Dir, 1);
}

/// Imports the file onto the hardware given.
AxisConfig AxesAfter(AxisConfig axes, const std::string& text, const char* revision, bool good) {
  Program program;
  program.Axis = axes;
  InitProg(program);
  ItemReader items(text);
  EXPECT_EQ(LoadOskelProg(items, ParseRevision(revision), program), good);
  return program.Axis;
}

TEST(LegacyImport, TheCurrentOfEveryAxisIsHeldToTheHighestOfItsModelHoweverTheImportEnds) {
  const std::string whole = OldFile("2", 100, {0, kMove12}, {}, "255,0,8,1,100");
  const std::string damaged = OldFile("2", 100, {0, kMove12}, {}, "255,0,8,1,x");
  for (const bool good : {true, false}) {
    AxisConfig axes;
    InitHardware(axes);
    for (int axis = 0; axis < kAxes; ++axis) {
      axes.DriveModel[axis] = static_cast<std::int16_t>(axis + 1);
      axes.DriveCurrent[axis] = 100;
    }
    axes.DriveCurrent[3] = 0.5F;
    const AxisConfig after = AxesAfter(axes, good ? whole : damaged, "1.2", good);
    EXPECT_EQ(after.DriveCurrent[0], 5.5F) << "7 A of the file's drive, 5.5 A of the axis's";
    EXPECT_EQ(after.DriveCurrent[1], 7.0F);
    EXPECT_EQ(after.DriveCurrent[2], 5.5F);
    EXPECT_EQ(after.DriveCurrent[3], 0.5F) << "a lower one stays";
    EXPECT_EQ(after.DriveCurrent[4], 3.5F);
    EXPECT_EQ(after.DriveCurrent[5], 4.5F);
    EXPECT_EQ(after.DriveCurrent[6], 1.2F);
    EXPECT_EQ(after.DriveCurrent[7], 7.0F);
  }
}

TEST(LegacyImport, ANumberTooLargeForItsFieldIsABadItem) {
  // Of a motor line the count becomes a percentage, whose field is smaller.
  for (const char* count : {"32768", "65540", "-32769", "2147483647", "2147483648", "1E999"}) {
    std::string motor = kMove12;
    motor.replace(motor.find(",25,4,"), 6, std::string(",25,") + count + ",");
    const std::string text = OldFile("1", 100, {0, kMove12}, {{1, {19, motor}}}, "51,0,8,1,100");
    Import(text, "1.2", false);
  }
  for (const char* count : {"32767", "-32768"}) {
    std::string motor = kMove12;
    motor.replace(motor.find(",25,4,"), 6, std::string(",25,") + count + ",");
    const std::string text = OldFile("1", 100, {0, kMove12}, {{1, {19, motor}}}, "51,0,8,1,100");
    EXPECT_EQ(Import(text, "1.2").Prog[1].IdlePct, std::stoi(count));
  }
  for (const char* settings : {"1E39,0,8,1,100", "51,32768,8,1,100", "51,0,32768,1,100", "51,0,8,1E999,100",
                               "51,0,8,1,2147483648"}) {
    Import(OldFile("1", 100, {0, kMove12}, {}, settings), "1.2", false);
  }
}

TEST(LegacyImport, AShortFileEndsInAReadErrorWithEveryLineEmptyAndTheHardwareAsRead) {
  std::string text = OldFile("1", 100, {0, kMove12}, {}, "51,0,8,1,100");
  text.resize(text.size() / 2);
  const Program program = Import(text, "1.2", false);
  for (const Instruction& line : program.Prog) EXPECT_EQ(line.Type, NO);
}

}  // namespace
}  // namespace tavlo::testing
