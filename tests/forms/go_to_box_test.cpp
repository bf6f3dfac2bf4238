// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/go_to_box.h"

#include "forms/form_bench.h"

namespace tavlo::testing {
namespace {

using GoToBench = FormBench<GoToBox>;

TEST(GoToBox, ShowsTheTargetAsTheOperatorCountsAndStoresItLessOne) {
  GoToBench d;
  d.Line(3).Type = GT;
  d.Line(3).LineNum = 41;
  d.Open(3);
  EXPECT_EQ(d.Text("linenum"), "42");
  d.Enter("linenum", "17");
  EXPECT_EQ(d.Line(3).LineNum, 41) << "only OK writes";
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(3).LineNum, 16);
  EXPECT_EQ(d.Line(3).Type, GT);
}

TEST(GoToBox, ForcesTheNumberIntoOneToTwoHundred) {
  const struct {
    const char* typed;
    const char* shown;
  } rows[] = {{"0", "1"},  {"1", "1"},       {"200", "200"},  {"201", "200"},   {"-5", "1"},
              {"", "1"},   {"abc", "1"},     {"12abc", "12"}, {"2.5", "2"},     {"3.5", "4"},
              {" 7", "7"}, {"1E999", "200"}, {"0.5", "1"},    {"200.4", "200"}, {"99999999999", "200"}};
  for (const auto& row : rows) {
    GoToBench d;
    d.Open();
    d.Enter("linenum", row.typed);
    EXPECT_EQ(d.Text("linenum"), row.shown) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(std::to_string(d.Line().LineNum + 1), row.shown) << row.typed;
  }
}

TEST(GoToBox, TellsNoMoreOfATextFromAFileThanAnybodyWouldRead) {
  GoToBench d;
  d.Line(11) = {.Type = CM, .Text = std::string(10u << 20, 'x')};
  d.Line(3).LineNum = 11;
  d.Open(3);
  EXPECT_EQ(d.Caption("linetext"), std::string(500, 'x'));
}

TEST(GoToBox, TellsTheTextOfTheLineThatTheNumberMeansAsItIsTyped) {
  GoToBench d;
  d.Line(11) = {.Type = CM, .Text = "cut & stack"};
  d.Line(16) = {.Type = GT, .LineNum = 3};
  d.Line(199) = {.Type = CM, .Text = "the end"};
  d.Line(3).LineNum = 11;
  d.Open(3);
  EXPECT_EQ(d.Caption("linetext"), "cut & stack");
  const struct {
    const char* typed;
    const char* text;
  } rows[] = {{"17", "Go to line 4"}, {"1", "(empty line)"}, {"12", "cut & stack"},
              {"999", "the end"},     {"", "(empty line)"},  {"x", "(empty line)"}};
  for (const auto& row : rows) {
    d.Type("linenum", row.typed);
    EXPECT_EQ(d.Caption("linetext"), row.text) << row.typed;
    EXPECT_EQ(d.Text("linenum"), row.typed) << "it is still being typed";
  }
  d.Type("linenum", "11");
  d.Spin("Spin1", 1);
  EXPECT_EQ(d.Caption("linetext"), "cut & stack");
}

TEST(GoToBox, SpinsByOneWithinTheEnds) {
  GoToBench d;
  d.Line(5).LineNum = 1;
  d.Open(5);
  d.Spin("Spin1", -1);
  d.Spin("Spin1", -1);
  EXPECT_EQ(d.Text("linenum"), "1");
  d.Spin("Spin1", 1);
  EXPECT_EQ(d.Text("linenum"), "2");
  d.Type("linenum", "199");
  d.Spin("Spin1", 1);
  d.Spin("Spin1", 1);
  EXPECT_EQ(d.Text("linenum"), "200") << "from what was typed";
}

TEST(GoToBox, ATargetThatWasNeverSetIsTheFirstLineButNeverTheLineItself) {
  for (const int unset : {1000, -1, 200, 32767, -32768}) {
    GoToBench d;
    d.Line(0).LineNum = d.Line(9).LineNum = static_cast<std::int16_t>(unset);
    d.Open(9);
    EXPECT_EQ(d.Text("linenum"), "1") << unset;
    d.Open(0);
    EXPECT_EQ(d.Text("linenum"), "2") << unset;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line(0).LineNum, 1);
  }
}

TEST(GoToBox, WaitsForMovesUnlessItProceeds) {
  for (const bool proceeds : {false, true}) {
    GoToBench d;
    d.Line().Proceed = proceeds;
    d.Open();
    EXPECT_EQ(d.Checked("ChkWait"), !proceeds);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Proceed, proceeds);
    d.Open();
    d.Click("ChkWait");
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Proceed, !proceeds);
  }
}

TEST(GoToBox, OpeningAndConfirmingChangesNothing) {
  GoToBench d;
  d.Line(7) = {.Type = GT, .Dist = 12, .LineNum = 33, .Drive = 6, .Proceed = true, .WaitThis = true};
  const Instruction before = d.Line(7);
  d.Open(7);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(7), before);
}

TEST(GoToBox, CancelGivesTheLineBackAsItWas) {
  GoToBench d;
  d.Line(7) = {.Type = GT, .LineNum = 33};
  const Instruction before = d.Line(7);
  d.Open(7);
  d.Enter("linenum", "5");
  d.Click("ChkWait");
  d.form.Cancel();
  EXPECT_EQ(d.Line(7), before);
  d.Open(7);
  EXPECT_EQ(d.Text("linenum"), "34") << "nothing of an earlier use is left";
}

}  // namespace
}  // namespace tavlo::testing
