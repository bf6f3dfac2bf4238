// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/file_examination.h"

#include <gtest/gtest.h>

#include <random>

#include "model/hand_file.h"
#include "model/old_file.h"
#include "model/program_file.h"

namespace tavlo::testing {
namespace {

std::string NewFile() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  return WriteHubProg(program, 0);
}

std::string OldFileOf(const std::string& drive_code = "1") {
  return "1.2\r\n" + OldFile(drive_code, 100, {0, kMove12}, {}, "51,0,8,1,100");
}

std::string WithHub(const std::string& code) {
  HandFile file;
  file.hub = code;
  return "1.29.1\r\n" + file.Body();
}

TEST(FileExamination, AWholeFileOfItsKindHasNothingAgainstIt) {
  for (const auto& [text, kind] :
       {std::pair(NewFile(), FileKind::HubProg), std::pair(WithHub(" 24 "), FileKind::HubProg),
        std::pair(WithHub("1"), FileKind::HubProg), std::pair(OldFileOf(), FileKind::OskelProg)}) {
    const FileFindings found = Examine(text, kind);
    EXPECT_TRUE(found.whole && found.has_version && found.known_version);
    EXPECT_FALSE(found.other_kind || found.goes_on);
    EXPECT_FALSE(found.unknown_hub_code || found.unknown_drive_code);
    EXPECT_TRUE(found.unknown_models.empty());
  }
}

TEST(FileExamination, AWholeFileOfTheOtherKindIsFound) {
  const FileFindings own = Examine(NewFile(), FileKind::OskelProg);
  EXPECT_TRUE(!own.whole && own.other_kind);
  const FileFindings old = Examine(OldFileOf(), FileKind::HubProg);
  EXPECT_TRUE(!old.whole && old.other_kind);
}

TEST(FileExamination, ADamagedFileIsOfNeitherKindAndStillHasItsVersion) {
  for (const FileKind kind : {FileKind::HubProg, FileKind::OskelProg}) {
    for (const std::string& whole : {NewFile(), OldFileOf()}) {
      const FileFindings found = Examine(whole.substr(0, whole.size() - 40), kind);
      EXPECT_FALSE(found.whole || found.other_kind);
      EXPECT_TRUE(found.has_version);
    }
  }
}

TEST(FileExamination, AVersionIsOneToThreeNumbers) {
  for (const char* version : {"1.29.1", "1.29", "1.2", "1", "0", "1.0", "1.21.12", "\"1.14\"", " 1.12 "}) {
    const FileFindings found = Examine(std::string(version) + "\r\n", FileKind::HubProg);
    EXPECT_TRUE(found.has_version && found.known_version) << version;
  }
  for (const char* version : {"", "abc", "1.", ".5", "1..2", "1.2.3.4", "1E2", "-1", "+1", "1.29.1b", "1 .2",
                              "1.2 litres", "1234", "\x89PNG", "1.\xff"}) {
    const FileFindings found = Examine(std::string(version) + "\r\n", FileKind::HubProg);
    EXPECT_FALSE(found.has_version || found.known_version) << version;
  }
}

TEST(FileExamination, AVersionAboveTheNewestIsNotKnownButForTheEarlierProgrammers) {
  for (const char* version : {"1.29.2", "1.30", "1.3", "2", "2.0", "10.1", "999.999.999"}) {
    const FileFindings found = Examine(std::string(version) + "\r\n", FileKind::HubProg);
    EXPECT_TRUE(found.has_version) << version;
    EXPECT_FALSE(found.known_version) << version;
    EXPECT_EQ(found.version, version);
    EXPECT_TRUE(Examine(std::string(version) + "\r\n", FileKind::OskelProg).known_version) << version;
  }
}

TEST(FileExamination, AHubCodeThatNoHubHasIsFound) {
  for (const int code : {0, 2, 7, 9, 16, 25, -8, 32767}) {
    const FileFindings found = Examine(WithHub(" " + std::to_string(code) + " "), FileKind::HubProg);
    EXPECT_TRUE(found.whole);
    EXPECT_EQ(found.unknown_hub_code, code);
  }
}

TEST(FileExamination, ADriveModelThatThereIsNotIsFoundWithItsAxis) {
  HandFile file;
  file.axes[0].settings.replace(0, 1, "51");
  file.axes[6].settings.replace(0, 1, "50");
  file.axes[7].settings.replace(0, 1, "-1");
  const FileFindings found = Examine("1.29.1\r\n" + file.Body(), FileKind::HubProg);
  EXPECT_EQ(found.unknown_models, (std::vector<UnknownModel>{{0, 51}, {7, -1}}));
}

TEST(FileExamination, TheEarlierProgrammersDriveIsLookedAtWhereItIsNamed) {
  EXPECT_EQ(Examine(OldFileOf("77"), FileKind::OskelProg).unknown_drive_code, 77);
  EXPECT_EQ(Examine(OldFileOf("50"), FileKind::OskelProg).unknown_drive_code, std::nullopt);
  const std::string without = "1.1\r\n" + OldFile("", 29, {77, kMove29}, {}, "255,100,200,2.5,80");
  EXPECT_TRUE(Examine(without, FileKind::OskelProg).whole);
  EXPECT_EQ(Examine(without, FileKind::OskelProg).unknown_drive_code, std::nullopt);
}

TEST(FileExamination, WhatFollowsTheLastRecordIsFoundAndBlanksAreNothing) {
  for (const char* rest : {"1", "\"\"", ",", "\r\n\r\n0,11\r\n", "\xff"}) {
    EXPECT_TRUE(Examine(NewFile() + rest, FileKind::HubProg).goes_on) << rest;
    EXPECT_TRUE(Examine(OldFileOf() + rest, FileKind::OskelProg).goes_on) << rest;
  }
  for (const char* rest : {"", "\r\n", " \t\n\n", "\x1a"}) {
    EXPECT_FALSE(Examine(NewFile() + rest, FileKind::HubProg).goes_on) << rest;
    EXPECT_FALSE(Examine(OldFileOf() + rest, FileKind::OskelProg).goes_on) << rest;
  }
}

TEST(FileExamination, WhatLoadingChangesIsFoundWithItsLineOrAxis) {
  HandFile file;
  file.lines[0].type = "12";
  file.lines[0].state = "1,10,0,6,10";
  file.lines[3].type = "21";
  file.lines[3].state = "1,4,0,0,10";
  file.lines[199].type = "13";
  file.lines[199].text = '"' + std::string(28, 'c') + '"';
  file.axes[2].settings = "1,6,2,8,20000,\"rev\",#FALSE#,8000,0";
  const Repairs expected = {{Repair::DriveInput, 0},
                            {Repair::ShortPulse, 3},
                            {Repair::LongComment, 199},
                            {Repair::StepsOnly, 2},
                            {Repair::HighCurrent, 2}};
  EXPECT_EQ(Examine("1.22\r\n" + file.Body(), FileKind::HubProg).repairs, expected);
  const std::string old = "1.2\r\n" + OldFile("2", 100, {0, kMove12}, {{7, {18, kMove12}}}, "255,0,8,1,100");
  EXPECT_EQ(Examine(old, FileKind::OskelProg).repairs,
            (Repairs{{Repair::HighCurrent, 0}, {Repair::HandWheel, 7}}));
  EXPECT_EQ(Examine(OldFileOf(), FileKind::OskelProg).repairs, Repairs());
  EXPECT_EQ(Examine(NewFile(), FileKind::HubProg).repairs, Repairs());
}

TEST(FileExamination, TheRecordThatABoundaryRevisionLeavesUnreadIsItsOwn) {
  HandFile file;
  file.last_items = 2;
  file.axis_currents = false;
  file.same_record = false;
  const std::string with_port = "1.14\r\n" + file.Body();
  EXPECT_FALSE(Examine(with_port, FileKind::HubProg).goes_on);
  EXPECT_TRUE(Examine(with_port + "0\r\n", FileKind::HubProg).goes_on);
  file.same_record = true;
  const std::string with_flags = "1.17\r\n" + file.Body();
  EXPECT_FALSE(Examine(with_flags, FileKind::HubProg).goes_on);
  EXPECT_TRUE(Examine(with_flags + "0\r\n", FileKind::HubProg).goes_on);
  std::string with_units = OldFileOf() + "500,\"mm\",#TRUE#\r\n";
  with_units.replace(0, 3, "1.28");
  EXPECT_FALSE(Examine(with_units, FileKind::OskelProg).goes_on);
  EXPECT_TRUE(Examine(with_units + "0\r\n", FileKind::OskelProg).goes_on);
}

TEST(FileExamination, AnyBytesAreLookedThroughAndWhatIsFoundHangsTogether) {
  std::mt19937 random(8);
  const std::vector<std::string> wholes = {NewFile(), OldFileOf()};
  int whole = 0;
  for (int run = 0; run < 400; ++run) {
    std::string text = wholes[random() % 2];
    for (int edits = static_cast<int>(random() % 4); edits > 0; --edits) {
      const std::size_t at = random() % text.size();
      text[at] = random() % 2 == 0 ? "0123456789,.-"[random() % 13] : static_cast<char>(random());
    }
    const FileFindings own = Examine(text, FileKind::HubProg);
    const FileFindings old = Examine(text, FileKind::OskelProg);
    EXPECT_FALSE(own.whole && old.whole) << "no file is both";
    EXPECT_EQ(own.other_kind, old.whole);
    EXPECT_EQ(old.other_kind, own.whole);
    EXPECT_TRUE(own.has_version || !own.known_version);
    EXPECT_TRUE(own.whole || !(own.unknown_hub_code || !own.unknown_models.empty() || own.goes_on));
    whole += own.whole || old.whole ? 1 : 0;
  }
  EXPECT_GT(whole, 100);
  EXPECT_LT(whole, 400);
}

TEST(FileExamination, TheEndingOfANameStandsForAKind) {
  for (const char* name : {"a.TVH", "/p/a.tvh", ".tVh"}) EXPECT_EQ(KindByName(name), FileKind::HubProg);
  for (const char* name : {"", "TVH", "a.OSK", "a.txt", "a.TVH ", "a.TVH/b"}) {
    EXPECT_EQ(KindByName(name), FileKind::OskelProg) << name;
  }
}

}  // namespace
}  // namespace tavlo::testing
