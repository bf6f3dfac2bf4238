// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <string>

#include "model/hand_file.h"
#include "model/program_file.h"
#include "support/new_program.h"

namespace tavlo {
namespace {

using testing::HandFile;
using testing::HubRevision;
using testing::kHubRevisions;
using testing::LoadBody;
using testing::NewProgram;

TEST(VersionText, RevisionStandsBehindUnlessItIsZero) {
  EXPECT_EQ(VersionTextOf(kVersion), "1.29.1");
  EXPECT_EQ(VersionTextOf({1, 29, 0}), "1.29");
  EXPECT_EQ(VersionTextOf({1, 21, 12}), "1.21.12");
}

TEST(ParseRevision, ReadsAVersionTextAsANumber) {
  struct {
    std::string_view text;
    float revision;
  } const cases[] = {{"1.29.1", 1.2901F},  {"1.29", 1.29F},  {"1.2", 1.2F}, {"1.21.6", 1.2106F},
                     {"1.21.12", 1.2112F}, {"1.0", 1.0F},    {"0", 0.0F},   {"1", 1.0F},
                     {"1.14", 1.14F},      {"1.29.0", 1.29F}};
  for (const auto& c : cases) EXPECT_EQ(ParseRevision(c.text), c.revision) << c.text;
}

TEST(ParseRevision, APointAsTheThirdCharacterIsSeen) {
  EXPECT_EQ(ParseRevision("10.5"), 1005.0F);
}

TEST(ParseRevision, AnyTextGivesANumber) {
  for (const std::string_view text :
       {"", ".", "...", "abc", "1.29.", "\xff\xff\xff.\xff", "999999999999999999.9"}) {
    const float revision = ParseRevision(text);
    EXPECT_EQ(revision, revision) << text;
  }
}

TEST(FileRevision, LinesOfRevisions0And1HaveEightMenuItemsAndTheNinthKeepsTheValueFromBeforeTheLoad) {
  for (const float revision : {0.0F, 1.0F}) {
    HandFile file;
    file.menu_items = 8;
    file.last_items = 0;
    file.axis_currents = file.port_record = file.same_record = false;
    file.lines[9].menu_lines[7] = "170";
    file.lines[9].menu_keys[7] = "#TRUE#";
    Program program = NewProgram();
    program.Prog[9].MenuLine[8] = 123;
    program.Prog[9].MenuKey[8] = true;
    EXPECT_TRUE(LoadBody(file, program, revision));
    EXPECT_EQ(program.Prog[9].MenuLine[7], 170);
    EXPECT_TRUE(program.Prog[9].MenuKey[7]);
    EXPECT_EQ(program.Prog[9].MenuLine[8], 123);
    EXPECT_TRUE(program.Prog[9].MenuKey[8]);
  }
}

TEST(FileRevision, LinesBetween0And1HaveNineMenuItems) {
  HandFile file;
  file.last_items = 0;
  file.axis_currents = file.port_record = file.same_record = false;
  file.lines[9].menu_lines[8] = "170";
  Program program = NewProgram();
  EXPECT_TRUE(LoadBody(file, program, 0.5F));
  EXPECT_EQ(program.Prog[9].MenuLine[8], 170);
}

TEST(FileRevision, ALineOfAnOlderFileThatSeeksHomeOnInput6LoadsWithInput128) {
  for (const auto& [text, repaired] : {std::pair("1.22", true), std::pair("1.22.9", true),
                                       std::pair("1.23", false), std::pair("1.29.1", false)}) {
    HandFile file;
    const auto line = [&file](int index, const std::string& type, const std::string& input) {
      file.lines[index].type = type;
      file.lines[index].state = "1,10,0," + input + ",10";
    };
    line(0, "12", "6");
    line(1, "2", "8");
    line(2, "12", "8");
    line(3, "2", "6");
    line(4, "24", "8");
    line(5, "3", "8");
    Program program = NewProgram();
    EXPECT_TRUE(LoadBody(file, program, ParseRevision(text)));
    EXPECT_EQ(program.Prog[0].IONum, repaired ? 128 : 6) << text;
    EXPECT_EQ(program.Prog[1].IONum, repaired ? 128 : 8) << text;
    EXPECT_EQ(program.Prog[2].IONum, 8);
    EXPECT_EQ(program.Prog[3].IONum, 6);
    EXPECT_EQ(program.Prog[4].IONum, 8);
    EXPECT_EQ(program.Prog[5].IONum, 8);
  }
}

TEST(FileRevision, EachRevisionHasItsRecordsBoundariesIncluded) {
  for (const HubRevision& row : kHubRevisions) {
    if (row.menu_items < 9) continue;
    SCOPED_TRACE(row.version);
    HandFile file;
    file.As(row);
    file.same = "#TRUE#,#FALSE#";
    for (auto& line : file.lines) line.last = {"3", "5", "#TRUE#"};
    for (auto& axis : file.axes) axis.currents = "4,8";
    Program program = NewProgram();
    for (Instruction& line : program.Prog) line.WaitThis = true;
    EXPECT_TRUE(LoadBody(file, program, ParseRevision(row.version)));
    EXPECT_EQ(program.Prog[199].JogLRDrive, row.last_items > 0 ? 3 : 0);
    EXPECT_EQ(program.Prog[199].JogUDDrive, row.last_items > 0 ? 5 : 1);
    EXPECT_EQ(program.Prog[199].WaitThis, row.last_items != 2) << "false only where the record has two items";
    EXPECT_EQ(program.Axis.ContCurrent[7], row.axis_currents ? 4.0F : 1.0F);
    EXPECT_EQ(program.Axis.PeakCurrent[7], row.axis_currents ? 8.0F : 2.0F);
    EXPECT_EQ(program.Axis.SameUnits, row.same_record);
    EXPECT_EQ(program.Axis.SameLimits, !row.same_record);
    EXPECT_EQ(program.Axis.AxisName[7], "Axis 8");
  }
}

TEST(FileRevision, AFileWithOneRecordTooFewForItsRevisionIsDamaged) {
  struct {
    std::string_view version;
    std::string_view without;
  } const cases[] = {
      {"1.12", "last"}, {"1.19", "wait"}, {"1.21.6", "currents"}, {"1.15", "port"}, {"1.18", "same"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.version);
    HandFile file;
    for (const HubRevision& row : kHubRevisions) {
      if (row.version == c.version) file.As(row);
    }
    Program whole = NewProgram();
    EXPECT_TRUE(LoadBody(file, whole, ParseRevision(c.version)));
    if (c.without == "last") file.last_items = 0;
    if (c.without == "wait") file.last_items = 2;
    if (c.without == "currents") file.axis_currents = false;
    if (c.without == "port") file.port_record = false;
    if (c.without == "same") file.same_record = false;
    Program program = NewProgram();
    EXPECT_FALSE(LoadBody(file, program, ParseRevision(c.version)));
  }
}

TEST(FileRevision, AFileOfRevisionExactly117HasItsLastRecordLeftUnreadAndItsTwoFlagsKeepTheirOldValues) {
  HandFile file;
  file.last_items = 2;
  file.axis_currents = false;
  file.same = "#TRUE#,#FALSE#";
  Program program = NewProgram();
  EXPECT_TRUE(LoadBody(file, program, ParseRevision("1.17")));
  EXPECT_FALSE(program.Axis.SameUnits);
  EXPECT_TRUE(program.Axis.SameLimits);
}

TEST(FileRevision, AFileOfRevisionExactly114HasItsPortRecordLeftUnread) {
  HandFile file;
  file.last_items = 2;
  file.axis_currents = file.same_record = false;
  file.port = "no number";
  Program program = NewProgram();
  EXPECT_TRUE(LoadBody(file, program, ParseRevision("1.14")));
}

TEST(FileRevision, ARevisionThatIsNoNumberIsStillReadToAnEnd) {
  for (const float revision : {-5.0F, 1e30F, -1e30F}) {
    Program program = NewProgram();
    (void)LoadBody(HandFile(), program, revision);
    EXPECT_EQ(program.Prog[0].Dist, 20000);
  }
}

}  // namespace
}  // namespace tavlo
