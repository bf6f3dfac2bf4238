// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <memory>

#include "forms/form_bench.h"
#include "forms/if_moving.h"
#include "forms/learn_pos.h"
#include "forms/line_target.h"
#include "forms/repeat.h"
#include "forms/set_posn.h"

namespace tavlo::testing {
namespace {

struct Call : LineTarget {
  Call() : LineTarget(CL) {}
};

TEST(LineTarget, WritesItsKindAndTheLine) {
  FormBench<Call> d;
  d.Line(0).LineNum = 1000;
  d.Open();
  EXPECT_EQ(d.Text("linenum"), "2") << "never itself";
  d.Enter("linenum", "250");
  EXPECT_EQ(d.Text("linenum"), "200");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, CL);
  EXPECT_EQ(d.Line().LineNum, 199);
}

TEST(IfMoving, WritesItsLineAndItsAxis) {
  FormBench<IfMoving> d;
  d.Line() = {.Type = IM, .LineNum = 9, .Drive = 3};
  d.Open();
  EXPECT_EQ(d.Text("linenum"), "10");
  EXPECT_EQ(d.List("Drive").index, 3);
  d.Spin("Spin1", 1);
  d.Choose("Drive", 7);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().LineNum, 10);
  EXPECT_EQ(d.Line().Drive, 7);
}

TEST(LearnPos, WritesTheVariableAndItsAxis) {
  FormBench<LearnPos> d;
  d.Line() = {.Type = LP, .DistVar = 4, .Drive = 2};
  d.Open();
  EXPECT_EQ(d.List("varname").list.size(), 50U);
  EXPECT_EQ(d.List("varname").list[4], "Dist5");
  EXPECT_EQ(d.List("varname").index, 4);
  EXPECT_TRUE(d.Visible("lblvarname"));
  d.Choose("varname", 49);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().DistVar, 49);
  EXPECT_EQ(d.Line().Drive, 2);
  d.Line().DistVar = 77;
  d.Open();
  EXPECT_EQ(d.List("varname").index, 0) << "there is no such variable";
}

TEST(SetPosn, WritesAPositionWithItsSide) {
  FormBench<SetPosn> d;
  d.Line() = {.Type = SP, .Dist = 500, .Dir = 1};
  d.Open();
  EXPECT_EQ(d.Text("disttext"), "-500");
  EXPECT_EQ(d.Caption("distunit"), "Steps");
  d.Enter("disttext", "0");
  EXPECT_EQ(d.Text("disttext"), "0");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 0);
  EXPECT_EQ(d.Line().Dir, 0);
  d.Open();
  d.Enter("disttext", "-16000001");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 16000000);
  EXPECT_EQ(d.Line().Dir, 1);
}

TEST(SetPosn, OnAnotherAxisTheNumberStays) {
  FormBench<SetPosn> d;
  InInches(d.program, 1, 2000);
  d.Line() = {.Type = SP, .Dist = 500, .Dir = 1};
  d.Open();
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Text("disttext"), "-500.0");
  EXPECT_EQ(d.Caption("distunit"), "inch");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Dist, 1000000);
}

TEST(Repeat, ACountOf70000Stores65535) {
  const struct {
    const char* typed;
    std::int32_t stored;
  } rows[] = {{"70000", 65535}, {"65535", 65535}, {"0", 1},   {"-4", 1},       {"", 1},
              {"often", 1},     {"2.5", 2},       {"3.5", 4}, {"1E999", 65535}};
  for (const auto& row : rows) {
    FormBench<Repeat> d;
    d.Open();
    d.Enter("nloopsbox", row.typed);
    EXPECT_EQ(d.Text("nloopsbox"), std::to_string(row.stored)) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Count, row.stored) << row.typed;
    EXPECT_EQ(d.Line().Type, RP);
  }
}

TEST(Repeat, ACountThatNobodyTouchedIsForcedOnlyOutsideItsRange) {
  const struct {
    std::int32_t before;
    std::int32_t after;
  } rows[] = {{0, 1}, {1, 1}, {40000, 40000}, {65535, 65535}, {65536, 65535}, {-1, 1}};
  for (const auto& row : rows) {
    FormBench<Repeat> d;
    d.Line().Count = row.before;
    d.Open();
    EXPECT_EQ(d.Text("nloopsbox"), std::to_string(row.before));
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Count, row.after);
  }
}

TEST(Repeat, AVariableDimsTheCountAndShowsItsName) {
  FormBench<Repeat> d;
  d.Line() = {.Type = RP, .Count = 5, .DistVar = 40};
  d.Open();
  EXPECT_FALSE(d.Visible("varname"));
  EXPECT_FALSE(d.Visible("lblvarname"));
  d.Click("getmmi");
  EXPECT_FALSE(d.Enabled("nloopsbox"));
  EXPECT_TRUE(d.Visible("varname"));
  d.Choose("varname", 41);
  EXPECT_TRUE(d.OK());
  EXPECT_TRUE(d.Line().CountIsMMI);
  EXPECT_EQ(d.Line().DistVar, 41);
  d.Open();
  d.Click("getmmi");
  EXPECT_TRUE(d.Enabled("nloopsbox"));
  EXPECT_TRUE(d.OK());
  EXPECT_FALSE(d.Line().CountIsMMI);
  EXPECT_EQ(d.Line().DistVar, 41) << "the number of the variable stays";
}

TEST(Repeat, ItsCheckBoxesWriteTheirFlags) {
  FormBench<Repeat> d;
  d.Line() = {.Type = RP, .Count = 5};
  d.Open();
  EXPECT_TRUE(d.Checked("ChkWait")) << "the opposite of going on";
  for (const char* box : {"DispCount", "CountUp", "ChkWait"}) d.Click(box);
  EXPECT_TRUE(d.OK());
  EXPECT_TRUE(d.Line().SpeedIsMMI);
  EXPECT_EQ(d.Line().Dir, 1);
  EXPECT_TRUE(d.Line().Proceed);
  d.Open();
  EXPECT_TRUE(d.Checked("DispCount") && d.Checked("CountUp") && !d.Checked("ChkWait"));
}

TEST(SmallForms, OpeningAndConfirmingChangesNothing) {
  const auto expect = [](auto bench, const Instruction& line) {
    bench->Line(5) = line;
    bench->Open(5);
    EXPECT_TRUE(bench->OK());
    EXPECT_EQ(bench->Line(5), line);
  };
  expect(std::make_unique<FormBench<Call>>(), {.Type = CL, .LineNum = 33, .Drive = 7});
  expect(std::make_unique<FormBench<IfMoving>>(), {.Type = IM, .LineNum = 33, .Drive = 7});
  expect(std::make_unique<FormBench<LearnPos>>(), {.Type = LP, .Dist = 8, .DistVar = 49, .Drive = 7});
  expect(std::make_unique<FormBench<SetPosn>>(), {.Type = SP, .Dist = 12345, .Dir = 1, .Drive = 7});
  expect(std::make_unique<FormBench<Repeat>>(), {.Type = RP,
                                                 .Dir = 1,
                                                 .Count = 65535,
                                                 .DistVar = 35,
                                                 .SpeedIsMMI = true,
                                                 .CountIsMMI = true,
                                                 .Proceed = true});
}

}  // namespace
}  // namespace tavlo::testing
