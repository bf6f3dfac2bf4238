// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/companion.h"

namespace tavlo::testing {
namespace {

using Show = Companion;

TEST_F(Show, PrintsNumberTabAndTextOfEachLineInUse) {
  Line(1).Type = FL;
  Line(3).Type = WT;
  Line(3).Time = 500;
  Line(200).Type = GT;
  EXPECT_EQ(Tavlo({"show", File()}),
            (Outcome{0, "1\tAxis 1:CW 1.0 rev, 3.0 rps\n3\tWait 0.5 seconds\n200\tGo to line 1\n", ""}));
}

TEST_F(Show, AProgramWithoutLinesPrintsNothing) {
  EXPECT_EQ(Tavlo({"show", File()}), (Outcome{0, "", ""}));
  EXPECT_EQ(Tavlo({"show", File(), "--json"}), (Outcome{0, "{\"lines\":[]}\n", ""}));
}

TEST_F(Show, JsonGivesLineTypeAndText) {
  Line(1).Type = WT;
  Line(1).Time = 500;
  Line(2).Type = FLSO;
  Line(2).Drive = 1;
  const Outcome outcome = Tavlo({"show", File(), "--json"});
  EXPECT_EQ(outcome.code, 0);
  const std::string start =
      "{\"lines\":[{\"line\":1,\"type\":\"WT\",\"text\":\"Wait 0.5 seconds\"},{\"line\":2,";
  EXPECT_EQ(outcome.out.substr(0, start.size()), start);
  EXPECT_NE(outcome.out.find("\"type\":\"FLSO\",\"text\":\"Axis 2"), std::string::npos) << outcome.out;
}

TEST_F(Show, TextsReadAsTheOperatorTypedThem) {
  Line(1).Type = CM;
  Line(1).Text = "Drill & tap, 5 \xB5m";
  const std::string file = File();
  EXPECT_EQ(Tavlo({"show", file}), (Outcome{0, "1\tDrill & tap, 5 \xC2\xB5m\n", ""}));
  EXPECT_EQ(
      Tavlo({"show", file, "--json"}),
      (Outcome{0, "{\"lines\":[{\"line\":1,\"type\":\"CM\",\"text\":\"Drill & tap, 5 \xC2\xB5m\"}]}\n", ""}));
}

TEST_F(Show, AControlCharacterNeverReachesTheTerminal) {
  Line(1).Type = CM;
  Line(1).Text =
      "a\x1b[2Jb\x9b"
      "c\r\nd";
  EXPECT_EQ(Tavlo({"show", File()}), (Outcome{0, "1\ta\\x1b[2Jb\\x9bc\\x0d\\x0ad\n", ""}));
}

TEST_F(Show, AFileThatCannotBeOpenedIsToldWithItsReason) {
  const std::string missing = folder.Path("missing.TVH");
  EXPECT_EQ(
      Tavlo({"show", missing}),
      (Outcome{4, "", "Error: could not open file.\ntavlo: " + missing + ": No such file or directory\n"}));
  EXPECT_EQ(Tavlo({"show", folder.Path()}),
            (Outcome{4, "", "Error: could not open file.\ntavlo: " + folder.Path() + ": Is a directory\n"}));
}

TEST_F(Show, ADamagedFileIsToldWithItsName) {
  for (const char* contents : {"1.29.1\r\n", "1.29.1\r\n 8 \r\n", "0", "1.29.1\r\n\xff\xfe,,,\"\""}) {
    const std::string file = folder.Write("schr\xC3\xA4g.TVH", contents);
    EXPECT_EQ(Tavlo({"show", file}),
              (Outcome{4, "", "Can't read file " + file + ".  File may be damaged.\n"}));
  }
}

}  // namespace
}  // namespace tavlo::testing
