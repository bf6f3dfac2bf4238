// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

#include "text/one_text.h"

namespace tavlo {
namespace {

using testing::OneText;

TEST(InputName, ByNumberAndDrive) {
  OneText one(NO);
  const auto name = [&one](int n, int model) {
    one.Model(model);
    return InputName(one.program, n, 0);
  };
  EXPECT_EQ(name(0, 1), "1");
  EXPECT_EQ(name(7, 1), "8");
  for (const int model : {10, 12, 16, 26, 14, 15, 18, 28}) EXPECT_EQ(name(0, model), "X1") << model;
  for (const int model : {1, 10}) {
    EXPECT_EQ(name(8, model), "X0");
    EXPECT_EQ(name(15, model), "X7");
    EXPECT_EQ(name(127, model), "X119");
    EXPECT_EQ(name(128, model), "X0");
    EXPECT_EQ(name(135, model), "X7");
  }
}

struct MultiRow {
  int in_mask;
  int in_state;
  int drv_mask;
  int drv_state;
  bool wait_and;
  std::string_view if_text;
  std::string_view wait_text;
};
constexpr MultiRow kMulti[] = {
    {0, 0, 0, 0, true, "Illegal Multi-If Input", "Illegal Multi-Wait Input"},
    {0, 255, 0, 255, true, "Illegal Multi-If Input", "Illegal Multi-Wait Input"},
    {1, 1, 0, 0, true, "Axis 1:If input 1 high goto 6", "Axis 1:Wait input 1 high"},
    {5, 0, 0, 0, true, "Axis 1:If input 1,3 low goto 6", "Axis 1:Wait input 1,3 low"},
    {7, 5, 0, 0, true, "Axis 1:If input 1,3 high and 2 low goto 6", "Axis 1:Wait input 1,3 high and 2 low"},
    {7, 5, 0, 0, false, "Axis 1:If input 1,3 high or 2 low goto 6", "Axis 1:Wait input 1,3 high or 2 low"},
    {1, 1, 3, 2, true, "Axis 1:If input 1,X1 high and X0 low goto 6",
     "Axis 1:Wait input 1,X1 high and X0 low"},
    {0, 0, 128, 128, true, "Axis 1:If input X7 high goto 6", "Axis 1:Wait input X7 high"},
    {128, 0, 0, 0, true, "Axis 1:If input 8 low goto 6", "Axis 1:Wait input 8 low"},
};

TEST(SeveralInputs, HighsAndLowsByMaskAndState) {
  for (const MultiRow& row : kMulti) {
    for (const int type : {III, WII}) {
      OneText one(type);
      Instruction& line = one.line();
      line.InMask = static_cast<std::int16_t>(row.in_mask),
      line.InState = static_cast<std::int16_t>(row.in_state);
      line.DrvMask = static_cast<std::int16_t>(row.drv_mask),
      line.DrvState = static_cast<std::int16_t>(row.drv_state);
      line.WaitAND = row.wait_and;
      line.LineNum = 5;
      EXPECT_EQ(one.Text(), type == III ? row.if_text : row.wait_text);
      EXPECT_EQ(MultiIfShort(one.program, 0), row.if_text);
      EXPECT_EQ(MultiWaitShort(one.program, 0), row.wait_text);
    }
  }
}

TEST(SeveralInputs, TheDrivesOwnInputsStandBehindTheOthers) {
  OneText one(WII);
  one.line().InMask = one.line().InState = 3;
  one.line().DrvMask = one.line().DrvState = 3;
  EXPECT_EQ(one.Text(), "Axis 1:Wait input 1,2,X0,X1 high");
}

TEST(SeveralInputs, OnTheHubsOwnInputs) {
  OneText one(III);
  one.program.HubIndex = HubQuad;
  one.line().Drive = 4;
  one.line().InMask = 2;
  one.line().LineNum = 0;
  EXPECT_EQ(one.Text(), "Hub:If input 2 low goto 1");
  one.line().Type = WII;
  EXPECT_EQ(one.Text(), "Hub:Wait input 2 low");
}

TEST(SeveralInputs, PlainAndProgrammableDrivesNameTheirInputsX) {
  OneText one(WII);
  one.Model(10);
  one.line().InMask = one.line().InState = 3;
  EXPECT_EQ(one.Text(), "Axis 1:Wait input X1,X2 high");
}

TEST(DoubleAmps, DoublesEachAmpersand) {
  EXPECT_EQ(DoubleAmps("a & b"), "a && b");
  EXPECT_EQ(DoubleAmps("&&"), "&&&&");
  EXPECT_EQ(DoubleAmps(""), "");
}

TEST(ShownCaption, ShowsTwoAmpersandsAsOne) {
  EXPECT_EQ(ShownCaption("Cut && go"), "Cut & go");
  EXPECT_EQ(ShownCaption("&&&&"), "&&");
  EXPECT_EQ(ShownCaption(""), "");
}

TEST(IdleText, FourOptions) {
  EXPECT_EQ(IdleText(0), "0%");
  EXPECT_EQ(IdleText(1), "25%");
  EXPECT_EQ(IdleText(2), "50%");
  EXPECT_EQ(IdleText(3), "100%");
}

double TenEach(std::string_view text) {
  return 10.0 * static_cast<double>(text.size());
}

TEST(FitText, ATextTooWideForItsRowLosesCharactersFromTheEndTheClosingQuoteFirst) {
  const std::string text = "MMI: \"Hello\"";
  EXPECT_EQ(FitText(text, 120, TenEach), text);
  EXPECT_EQ(FitText(text, 119, TenEach), "MMI: \"Hello");
  EXPECT_EQ(FitText(text, 55, TenEach), "MMI: ");
  EXPECT_EQ(FitText(text, 0, TenEach), "");
  EXPECT_EQ(FitText(text, -4, TenEach), "");
  EXPECT_EQ(FitText("", -4, TenEach), "");
}

TEST(ShortDesc, AnyRecordHasATextAndNeverReadsOutOfRange) {
  std::mt19937 random(7);
  constexpr std::int16_t kIntegers[] = {-32768, -1, 0,   1,   4,   7,   8,    9,
                                        49,     50, 127, 128, 199, 200, 1000, 32767};
  const auto integer = [&] { return kIntegers[random() % std::size(kIntegers)]; };
  const auto whole = [&] { return static_cast<std::int32_t>(random()); };
  for (int run = 0; run < 20000; ++run) {
    OneText one(static_cast<int>(random() % 40) - 3);
    Instruction& line = one.line();
    line.Drive = integer(), line.State = integer(), line.IONum = integer(), line.LineNum = integer();
    line.SubType = integer(), line.DistVar = integer(), line.SpeedVar = integer(), line.Dist2Var = integer();
    line.Speed2Var = integer(), line.IdlePct = integer(), line.Dir = integer();
    line.InMask = integer(), line.InState = integer(), line.DrvMask = integer(), line.DrvState = integer();
    line.Dist = whole(), line.Dist2 = whole(), line.Time = whole(), line.Count = whole();
    line.DistIsMMI = random() % 2 == 0, line.SpeedIsMMI = random() % 2 == 0,
    line.CountIsMMI = random() % 2 == 0;
    line.Speed2IsMMI = random() % 2 == 0;
    line.Speed = random() % 4 == 0 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(whole());
    line.Current = random() % 4 == 0 ? std::numeric_limits<float>::infinity() : -1.0F;
    one.program.HubIndex = integer();
    one.program.Axis.UseUnits[0] = random() % 2 == 0;
    one.program.Axis.StepsPerUnit[0] = random() % 3 == 0 ? 0 : whole();
    one.program.Axis.StepResCode[0] = integer();
    one.program.Axis.UnitName[0] = std::string(random() % 3, '\xff');
    EXPECT_LT(one.Text().size(), 2000U);
  }
}

}  // namespace
}  // namespace tavlo
