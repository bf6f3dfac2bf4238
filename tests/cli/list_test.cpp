// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/companion.h"
#include "support/failing_disk.h"

namespace tavlo::testing {
namespace {

using Json = nlohmann::json;

/// One axis, a wait on line 3 and a jump back on line 10.
struct List : Companion {
  List() {
    for (int axis = 1; axis < kAxes; ++axis) program.Axis.DriveModel[axis] = 0;
    Line(3) = {.Type = WI, .State = 0, .IONum = 1};
    Line(10) = {.Type = GT, .LineNum = 2};
  }
  [[nodiscard]] std::string HeadOf(const std::string& file) const {
    return "Tavlo Hub Program Listing\n\nBrakken Drives, Inc.\nProgramming Software Version: "
           "1.29.1\nFilename:  " +
           file + "\nHardware:  \n" + hardware + "\n";
  }
  [[nodiscard]] Json JsonOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"list", File(), "--json"});
    const Outcome outcome = Tavlo(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return Json::parse(outcome.out);
  }
  const std::string hardware =
      "  Axis 1(Axis 1):  Oskel-A, 20000steps/rev, 1A. Units:  rev (20000 steps/rev).  Limits: closed.";
};

TEST_F(List, PrintsHeadingHardwareAndLines) {
  const std::string file = File();
  EXPECT_EQ(Tavlo({"list", file}),
            (Outcome{0, HeadOf(file) + " 3 Wait for Input 2 high\n 10 Go To Line 3 \n", ""}));
}

TEST_F(List, AProgramWithoutLinesPrintsItsHeadingAndHardware) {
  Line(3).Type = Line(10).Type = NO;
  const std::string file = File();
  EXPECT_EQ(Tavlo({"list", file}), (Outcome{0, HeadOf(file), ""}));
  EXPECT_EQ(Tavlo({"list", file, "--xref"}), (Outcome{0, HeadOf(file), ""}))
      << "there is nothing to refer to";
}

TEST_F(List, AddsTheCrossReferenceOnRequest) {
  const std::string file = File();
  const Outcome outcome = Tavlo({"list", file, "--xref"});
  EXPECT_TRUE(
      outcome.out.ends_with(" 10 Go To Line 3 \n\nInputs\n  Axis 1: input 2: line 3\n\nAxes\n  Axis 1: line "
                            "3\n\nJumps\n  Line 10 goes to line 3\n"))
      << outcome.out;
}

TEST_F(List, JsonGivesHeadingHardwareAndWhatEachLinePrints) {
  const std::string file = File();
  Line(11).Type = FS;
  Line(11).Drive = 0;
  Line(11).Accel = 100;
  const Json json = JsonOf({});
  EXPECT_EQ(json["heading"], (Json{"Tavlo Hub Program Listing", "", "Brakken Drives, Inc.",
                                   "Programming Software Version: 1.29.1", "Filename:  " + file}));
  EXPECT_EQ(json["hardware"], Json::array({hardware}));
  ASSERT_EQ(json["lines"].size(), 3U);
  EXPECT_EQ(json["lines"][0], (Json{{"line", 3}, {"printed", {" 3 Wait for Input 2 high"}}}));
  EXPECT_EQ(json["lines"][1], (Json{{"line", 10}, {"printed", {" 10 Go To Line 3 "}}}));
  EXPECT_EQ(json["lines"][2]["line"], 11);
  ASSERT_EQ(json["lines"][2]["printed"].size(), 2U);
  EXPECT_EQ(json["lines"][2]["printed"][1], "        To input 1 low");
  EXPECT_FALSE(json.contains("xref"));
}

TEST_F(List, JsonGivesTheCrossReferenceOnRequest) {
  program.LimitList = BranchToLine;
  program.LimitBranch = 7;
  Line(4) = {.Type = MMI, .SubType = GetCount, .DistVar = 35};
  Line(5) = {.Type = SO, .IONum = 2};
  EXPECT_EQ(JsonOf({"--xref"})["xref"],
            (Json{{"inputs", Json::array({{{"name", "Axis 1: input 2"}, {"lines", {3}}}})},
                  {"outputs", Json::array({{{"name", "Axis 1: output 3"}, {"lines", {5}}}})},
                  {"variables", Json::array({{{"name", "Count1"}, {"lines", {4}}, {"filledBy", {4}}}})},
                  {"axes", Json::array({{{"name", "Axis 1"}, {"lines", {3, 5}}}})},
                  {"jumps", Json::array({{{"from", nullptr}, {"how", "goes to"}, {"to", 7}},
                                         {{"from", 10}, {"how", "goes to"}, {"to", 3}}})}}));
}

TEST_F(List, JsonOfAnEmptyProgramHasItsKeysAllTheSame) {
  Line(3).Type = Line(10).Type = NO;
  EXPECT_EQ(JsonOf({})["lines"], Json::array());
  EXPECT_EQ(JsonOf({"--xref"})["xref"], (Json{{"inputs", Json::array()},
                                              {"outputs", Json::array()},
                                              {"variables", Json::array()},
                                              {"axes", Json::array()},
                                              {"jumps", Json::array()}}));
}

TEST_F(List, TextsReadAsTheOperatorTypedThemAndNoneControlsTheTerminal) {
  Line(3).Type = CM;
  Line(3).Text = "5 \xB5m\x1b[2J";
  program.Axis.AxisName[0] = "Fr\xE4ser";
  const Outcome outcome = Tavlo({"list", File("schr\xC3\xA4g.TVH")});
  EXPECT_NE(outcome.out.find("schr\xC3\xA4g.TVH\n"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("Axis 1(Fr\xC3\xA4ser)"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("Comment: \"5 \xC2\xB5m\\x1b[2J\"\n"), std::string::npos) << outcome.out;
}

TEST_F(List, AFileThatCannotBeReadIsTold) {
  const std::string missing = folder.Path("missing.TVH");
  EXPECT_EQ(
      Tavlo({"list", missing}),
      (Outcome{4, "", "Error: could not open file.\ntavlo: " + missing + ": No such file or directory\n"}));
}

/// How many pages a PDF file has.
int PagesOf(const std::string& pdf) {
  int pages = 0;
  for (std::size_t at = pdf.find("/Type /Page\n"); at != std::string::npos;
       at = pdf.find("/Type /Page\n", at + 1)) {
    ++pages;
  }
  return pages;
}

TEST_F(List, WritesAPdfBesideTheText) {
  const std::string file = File();
  const std::string pdf = folder.Path("listing.pdf");
  EXPECT_EQ(Tavlo({"list", file, "--pdf", pdf}), Tavlo({"list", file}));
  const std::string bytes = folder.Read("listing.pdf");
  EXPECT_TRUE(bytes.starts_with("%PDF-1."));
  EXPECT_TRUE(bytes.ends_with("%%EOF\n"));
  EXPECT_EQ(PagesOf(bytes), 1);
}

TEST_F(List, ALongProgramTakesMorePages) {
  for (int line = 1; line <= kLines; ++line) Line(line) = {.Type = FSS};
  EXPECT_EQ(Tavlo({"list", File(), "--pdf", folder.Path("long.pdf")}).code, 0);
  EXPECT_GT(PagesOf(folder.Read("long.pdf")), 5);
}

TEST_F(List, ThePdfGoesToStandardOutputAlone) {
  const Outcome outcome = Tavlo({"list", File(), "--pdf", "-"});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_TRUE(outcome.out.starts_with("%PDF-1.")) << outcome.out.substr(0, 80);
  EXPECT_TRUE(outcome.out.ends_with("%%EOF\n"));
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(Tavlo({"list", File(), "--pdf", "-", "--json"}).code, 2);
}

TEST_F(List, ThePdfMustNotBeTheProgram) {
  const std::string file = File();
  const std::string before = folder.Read("program.TVH");
  EXPECT_EQ(Tavlo({"list", file, "--pdf", file}).code, 4);
  EXPECT_EQ(folder.Read("program.TVH"), before);
}

TEST_F(List, AFullDiskLeavesTheOldPdfAndIsTold) {
  const std::string pdf = folder.Path("listing.pdf");
  for (const DiskFaultRow& row : DiskFaultRows()) {
    SCOPED_TRACE(row.name);
    const std::string file = File();
    folder.Write("listing.pdf", "what is there");
    const FailingDisk failing(row.faults);
    EXPECT_EQ(Tavlo({"list", file, "--pdf", pdf}),
              (Outcome{4, "", "tavlo: cannot write " + pdf + ": " + row.reason + "\n"}));
    EXPECT_GT(FailingDisk::Failures(), 0);
    EXPECT_EQ(folder.Read("listing.pdf"), "what is there");
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()),
                          std::filesystem::directory_iterator()),
            2)
      << "nothing half-written is left";
}

}  // namespace
}  // namespace tavlo::testing
