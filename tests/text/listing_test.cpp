// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/listing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/new_program.h"
#include "text/one_text.h"
#include "text/shown_listing.h"

namespace tavlo {
namespace {

using testing::NewProgram;
using testing::OneText;
using Texts = std::vector<std::string>;

TEST(Listing, BeginsWithItsHeading) {
  EXPECT_EQ(MakeListing(NewProgram(), "untitled").heading,
            (Texts{"Tavlo Hub Program Listing", "", "Brakken Drives, Inc.",
                   "Programming Software Version: 1.29.1", "Filename:  untitled"}));
  EXPECT_EQ(MakeListing(NewProgram(), "/home/a/Cutter 2.TVH").heading[4], "Filename:  /home/a/Cutter 2.TVH");
  EXPECT_EQ(MakeListing(NewProgram(), "").hardware_heading, "Hardware:  ");
}

TEST(Listing, AnEmptyProgramHasTheHeadingAndTheHardwareOnly) {
  const Listing listing = MakeListing(NewProgram(), "untitled");
  EXPECT_TRUE(listing.lines.empty());
  EXPECT_EQ(
      listing.hardware,
      (Texts{
          "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.",
          "  Axis 2(Axis 2):  Oskel-C, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.",
          "  Axis 3(Axis 3):  Oskel-B, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.",
          "  Axis 4(Axis 4):  Tarn-A, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.",
          "  Axis 5(Axis 5):  Tarn-B, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.",
          "  Axis 6(Axis 6):  Tarn-C, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.",
          "  Axis 7(Axis 7):  Zenu-D, 20000steps/rev, 1A. Units:  rev (8000 steps/rev).  Limits: closed."}));
  EXPECT_EQ(AsText(listing).substr(0, 26), "Tavlo Hub Program Listing\n");
}

TEST(Listing, AHubQuadListsFourAxesAtMost) {
  Program program = NewProgram();
  program.HubIndex = HubQuad;
  EXPECT_EQ(MakeListing(program, "").hardware.size(), 4U);
  program.Axis.DriveModel[1] = 0;
  const Texts hardware = MakeListing(program, "").hardware;
  ASSERT_EQ(hardware.size(), 3U);
  EXPECT_TRUE(hardware[1].starts_with("  Axis 3("))
      << "an axis without a drive is left out, its number is not";
}

TEST(Listing, TheHardwareOfAnAxisIsToldAsItIsSetUp) {
  struct {
    void (*set)(AxisConfig&);
    std::string_view text;
  } const cases[] = {
      {[](AxisConfig& a) { a.DriveCurrent[0] = 2.75F; },
       "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 2.75A. Units:  rev (20000 steps/rev).  Limits: closed."},
      {[](AxisConfig& a) { a.DriveCurrent[0] = 0.5F; },
       "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 0.5A. Units:  rev (20000 steps/rev).  Limits: closed."},
      {[](AxisConfig& a) { a.UseUnits[0] = false; },
       "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 1A. Units:  steps.  Limits: closed."},
      {[](AxisConfig& a) { a.UnitName[0] = "mm", a.StepsPerUnit[0] = 120, a.AxisName[0] = "Feeder"; },
       "  Axis 1(Feeder):  Oskel-A, 20000steps/rev, 1A. Units:  mm (120 steps/mm).  Limits: closed."},
      {[](AxisConfig& a) { a.LimitKind[0] = 1, a.StepResCode[0] = 16; },
       "  Axis 1(Axis 1):  Oskel-A, 8000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: open."},
      {[](AxisConfig& a) { a.LimitKind[0] = 2; },
       "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: not used."},
      {[](AxisConfig& a) { a.LimitKind[0] = 3; },
       "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: "}};
  for (const auto& c : cases) {
    Program program = NewProgram();
    c.set(program.Axis);
    EXPECT_EQ(MakeListing(program, "").hardware[0], c.text);
  }
}

TEST(Listing, ACurrentIsToldOfTheModelsThatHaveOne) {
  for (int model = 1; model <= 51; ++model) {
    Program program = NewProgram();
    program.Axis.DriveModel[0] = static_cast<std::int16_t>(model);
    const std::string text = MakeListing(program, "").hardware[0];
    EXPECT_NE(text.find(":  " + std::string(ModelName(model)) + ", "), std::string::npos) << text;
    EXPECT_EQ(text.find("1A. ") != std::string::npos, ShowsTxtCurrent(model)) << text;
  }
}

/// The columns at which the lines of these types are listed, one after the other; -1 for none.
std::vector<int> IndentsOf(const std::vector<int>& types) {
  Program program = NewProgram();
  for (std::size_t i = 0; i < types.size(); ++i) program.Prog[i].Type = static_cast<std::int16_t>(types[i]);
  std::vector<int> indents(types.size(), -1);
  for (const ListedLine& line : MakeListing(program, "").lines) indents[line.line - 1] = line.rows[0].indent;
  return indents;
}

TEST(Listing, TheBodyOfARepeatStandsTwoColumnsRightAndItsEndLinesUpWithIt) {
  EXPECT_EQ(IndentsOf({GT, RP, GT, ER, GT}), (std::vector{0, 0, 2, 0, 0}));
  EXPECT_EQ(IndentsOf({RP, RP, GT, ER, RP, GT, ER, ER, GT}), (std::vector{0, 2, 4, 2, 2, 4, 2, 0, 0}));
  EXPECT_EQ(IndentsOf({RP, NO, GT}), (std::vector{0, -1, 2}));
}

TEST(Listing, AnEndRepeatWithoutARepeatStaysAtTheLeft) {
  EXPECT_EQ(IndentsOf({ER, ER, GT, RP, GT}), (std::vector{0, 0, 0, 0, 2}));
}

TEST(Listing, RepeatsOnAllLinesGoOnToTheRight) {
  EXPECT_EQ(IndentsOf(std::vector<int>(kLines, RP)).back(), 398);
}

TEST(Listing, EachLineHasItsNumberAndAnEmptyOneTakesNoRow) {
  Program program = NewProgram();
  program.Prog[2].Type = FS;
  program.Prog[199].Type = GT;
  const Listing listing = MakeListing(program, "");
  ASSERT_EQ(listing.lines.size(), 2U);
  EXPECT_EQ(listing.lines[0].line, 3);
  EXPECT_EQ(listing.lines[0].rows.size(), 2U);
  EXPECT_EQ(listing.lines[1].line, 200);
  EXPECT_EQ(listing.lines[1].rows[0].number, 200);
}

TEST(ListingAsText, HasARowForEachThatIsPrintedInItsOrder) {
  Program program = NewProgram();
  program.HubIndex = HubQuad;
  for (int axis = 1; axis < kAxes; ++axis) program.Axis.DriveModel[axis] = 0;
  program.Prog[0].Type = RP;
  program.Prog[1].Type = FS;
  program.Prog[1].Accel = 50;
  program.Prog[2].Type = ER;
  EXPECT_EQ(
      AsText(MakeListing(program, "untitled")),
      "Tavlo Hub Program Listing\n\nBrakken Drives, Inc.\nProgramming Software Version: 1.29.1\n"
      "Filename:  untitled\nHardware:  \n"
      "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.\n"
      " 1 Repeat 10 times\n"
      " 2 Axis 1: Feed to Sensor(cw) 1.0 rev, 3.0 rps, A=50.0 rev/s/s, D=100.0 rev/s/s\n"
      "          To input 1 low\n"
      " 3 End Repeat\n");
}

TEST(ListingAsText, ReadsTextsAsTheOperatorTypedThemAndFileNamesAsTheyAre) {
  Program program = NewProgram();
  program.Prog[0].Type = CM;
  program.Prog[0].Text = "5 \xB5m\x1b[2J\n";
  program.Axis.AxisName[0] = "Fr\xE4ser";
  const std::string text = AsText(MakeListing(program, "/schr\xC3\xA4g.TVH"));
  EXPECT_NE(text.find("Filename:  /schr\xC3\xA4g.TVH\n"), std::string::npos) << text;
  EXPECT_NE(text.find("Axis 1(Fr\xC3\xA4ser):"), std::string::npos) << text;
  EXPECT_NE(text.find("  Comment: \"5 \xC2\xB5m\\x1b[2J\\x0a\"\n"), std::string::npos) << text;
}

TEST(ListingOnPaper, KeepsTheRowsOfALineTogetherBesideItsNumber) {
  Program program = NewProgram();
  program.Prog[0].Type = RP;
  program.Prog[11].Type = FSR;
  const PaperDocument document = OnPaper(MakeListing(program, "a.TVH"), "a.TVH");
  EXPECT_EQ(document.title, "Tavlo Hub Program Listing");
  EXPECT_EQ(document.file_name, "a.TVH");
  const PaperBlock& line = document.blocks.back();
  ASSERT_EQ(line.size(), 3U);
  EXPECT_EQ(line[0].number, "12");
  EXPECT_EQ(line[0].indent, 2);
  EXPECT_EQ(line[1].number, "");
  EXPECT_EQ(line[1].indent, 6) << "a few columns right of the head's text";
  EXPECT_EQ(line[2].indent, 6);
}

TEST(ListingOnPaper, HasEveryTextOfTheListing) {
  Program program = NewProgram();
  program.Prog[4].Type = FSS;
  const auto reference = SectionsOf(MakeCrossReference(program));
  std::string on_paper;
  for (const PaperBlock& block : OnPaper(MakeListing(program, "x"), "x", reference).blocks) {
    for (const PaperRow& row : block) on_paper += row.text + '\n';
  }
  for (const char* text :
       {"Tavlo Hub Program Listing\n", "Brakken Drives, Inc.\n", "Programming Software Version: 1.29.1\n",
        "Filename:  x\n", "Hardware:  \n", "Axis 7(Axis 7):  Zenu-D", "Axis 1: Feed to Sensor(cw)",
        "To input 1 low\n", "If move distance exceeds", "Inputs\n", "Axis 1: input 1: line 5\n", "Jumps\n"}) {
    EXPECT_NE(on_paper.find(text), std::string::npos) << text;
  }
}

TEST(ListingOnPaper, AHeadingKeepsToWhatItHeads) {
  Program program = NewProgram();
  program.Prog[0].Type = FS;
  const auto reference = SectionsOf(MakeCrossReference(program));
  for (const PaperBlock& block : OnPaper(MakeListing(program, "x"), "x", reference).blocks) {
    for (std::size_t i = 0; i < block.size(); ++i) {
      if (block[i].style == PaperStyle::Heading) {
        EXPECT_LT(i + 1, block.size()) << block[i].text;
      }
    }
  }
}

}  // namespace
}  // namespace tavlo
