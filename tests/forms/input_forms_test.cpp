// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/form_bench.h"
#include "forms/if_input.h"
#include "forms/wait_input.h"

namespace tavlo::testing {
namespace {

Instruction ATest(std::int16_t type) {
  return {.Type = type,
          .State = 2,
          .LineNum = 41,
          .IONum = 2,
          .InState = 0x05,
          .InMask = 0x0d,
          .DrvState = 0x02,
          .DrvMask = 0x82,
          .WaitAND = true,
          .JogSpeed = 1.5F,
          .JogAccel = 70,
          .JogOn = true};
}

template <class WhichForm, std::int16_t single, std::int16_t multiple>
struct InputBench : FormBench<WhichForm> {
  static constexpr std::int16_t kSingle = single;
  static constexpr std::int16_t kMultiple = multiple;
  explicit InputBench(std::int16_t type = single) { this->Line() = ATest(type); }
  void OfModel(int model, int axis = 0) {
    this->program.Axis.DriveModel[axis] = static_cast<std::int16_t>(model);
  }
  /// Each row of several inputs: h, l, or - for "Don't care"; none where it is hidden.
  [[nodiscard]] std::string Rows() {
    std::string rows;
    for (int row = 1; row <= 16; ++row) {
      const std::string name = "OptSum" + std::to_string(row);
      if (!this->Visible(name + "(0)")) continue;
      rows += this->Chosen(name + "(0)") ? 'h' : this->Chosen(name + "(1)") ? 'l' : '-';
      EXPECT_EQ(this->Chosen(name + "(2)"), rows.back() == '-');
      EXPECT_TRUE(this->Visible("LblInputNo(" + std::to_string(row - 1) + ")"));
    }
    return rows;
  }
};
struct WaitInputBench : InputBench<WaitInput, WI, WII> {
  using InputBench::InputBench;
  static constexpr const char* kTitle = "Wait Input";
};
struct IfBench : InputBench<IfInput, II, III> {
  using InputBench::InputBench;
  static constexpr const char* kTitle = "If Input";
};

template <class Bench>
class EveryInputForm : public ::testing::Test {};
using InputBenches = ::testing::Types<WaitInputBench, IfBench>;
TYPED_TEST_SUITE(EveryInputForm, InputBenches);

TYPED_TEST(EveryInputForm, OpeningAndConfirmingChangesNothing) {
  for (const bool inches : {false, true}) {
    for (const std::int16_t type : {TypeParam::kSingle, TypeParam::kMultiple}) {
      for (const int model : {1, 10, 17, 20}) {
        TypeParam d(type);
        d.OfModel(model);
        if (inches) InInches(d.program, 0, 1999);
        const Instruction before = d.Line();
        d.Open();
        d.form.Enter();
        EXPECT_TRUE(d.OK());
        EXPECT_EQ(d.Line(), before) << model;
        EXPECT_TRUE(d.boxes.shown.empty());
      }
    }
  }
}

TYPED_TEST(EveryInputForm, ModesWriteTheirKindAndTheirFieldsAlone) {
  TypeParam d;
  d.Open();
  EXPECT_TRUE(d.Chosen("OptSingle"));
  EXPECT_FALSE(d.Visible("FrameSum"));
  EXPECT_TRUE(d.Enabled("OptIn(0)"));
  EXPECT_TRUE(d.Enabled("OptState(0)"));
  d.Click("OptIn(1)");
  d.Click("OptSum");
  EXPECT_TRUE(d.Visible("FrameSum"));
  EXPECT_FALSE(d.Enabled("OptIn(0)"));
  EXPECT_FALSE(d.Enabled("OptState(0)"));
  d.Click("OptSum2(1)");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, TypeParam::kMultiple);
  EXPECT_EQ(d.Line().IONum, 2) << "as it was";
  EXPECT_EQ(d.Line().InMask, 0x0f);
  d.Open();
  EXPECT_TRUE(d.Chosen("OptSum"));
  d.Click("OptSum1(2)");
  d.Click("OptSingle");
  d.Click("OptIn(3)");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, TypeParam::kSingle);
  EXPECT_EQ(d.Line().IONum, 3);
  EXPECT_EQ(d.Line().InMask, 0x0f) << "as it was";
}

TYPED_TEST(EveryInputForm, EveryInputOfABlockIsWritten) {
  for (const int input : {0, 1, 2, 3, 4, 5, 6, 7, 128, 129, 130, 131, 132, 133}) {
    TypeParam d;
    d.OfModel(25);
    d.Open();
    d.Click("OptIn(" + std::to_string(input) + ")");
    d.Click("OptState(1)");
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().IONum, input);
    EXPECT_EQ(d.Line().State, 1);
    d.Open();
    EXPECT_TRUE(d.Chosen("OptIn(" + std::to_string(input) + ")"));
  }
}

TYPED_TEST(EveryInputForm, TheEighthInputOfModel10IsHiddenAndFallsBackToTheFirst) {
  TypeParam d;
  d.OfModel(10);
  d.Line().IONum = 7;
  d.Open();
  EXPECT_FALSE(d.Visible("OptIn(7)"));
  EXPECT_TRUE(d.Visible("OptIn(6)"));
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().IONum, 0);
}

TYPED_TEST(EveryInputForm, WhatTheAxisDoesNotOfferFallsBackToTheFirst) {
  const struct {
    int model;
    int input;
    int limits;
  } rows[] = {{1, 128, 2},  {8, 128, 2}, {48, 128, 2}, {36, 4, 2},  {44, 7, 2},
              {20, 136, 2}, {1, -1, 2},  {1, 6, 0},    {20, 134, 1}};
  for (const auto& row : rows) {
    TypeParam d;
    d.OfModel(row.model);
    d.program.Axis.LimitKind[0] = static_cast<std::int16_t>(row.limits);
    d.Line().IONum = static_cast<std::int16_t>(row.input);
    d.Open();
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().IONum, 0) << row.model << ", " << row.input;
  }
}

TYPED_TEST(EveryInputForm, OnModel17TheLimitsAreInTheFurtherBlock) {
  TypeParam d;
  d.OfModel(17);
  d.Open();
  for (const char* free : {"OptIn(6)", "OptIn(7)", "OptIn(133)"}) EXPECT_TRUE(d.Enabled(free)) << free;
  for (const char* limit : {"OptIn(134)", "OptIn(135)"}) {
    EXPECT_TRUE(d.Visible(limit)) << limit;
    EXPECT_FALSE(d.Enabled(limit)) << limit;
  }
  EXPECT_EQ(d.Caption("LblInputNo(14)"), "X6/ccwlim");
  EXPECT_EQ(d.Caption("LblInputNo(6)"), "7");
}

TYPED_TEST(EveryInputForm, ShowsOnlyTheRowsThatTheDriveHas) {
  const struct {
    int model;
    std::size_t rows;
    const char* first;
  } rows[] = {{1, 8, "1"},   {10, 7, "1/cwjog"}, {17, 16, "1"}, {20, 16, "1"},
              {36, 4, "1"},  {45, 4, "1"},       {48, 8, "1"},  {8, 8, "1"},
              {30, 16, "1"}, {28, 7, "1/cwjog"}, {13, 16, "1"}, {29, 16, "1"}};
  for (const auto& row : rows) {
    TypeParam d(TypeParam::kMultiple);
    d.OfModel(row.model);
    d.Open();
    EXPECT_EQ(d.Rows().size(), row.rows) << row.model;
    EXPECT_EQ(d.Caption("LblInputNo(0)"), row.first) << row.model;
  }
}

TYPED_TEST(EveryInputForm, RowsReadTheMasksAndWriteThem) {
  TypeParam d(TypeParam::kMultiple);
  d.OfModel(20);
  d.Open();
  EXPECT_EQ(d.Rows(), "h-hl-----h-----l");
  EXPECT_TRUE(d.Chosen("OptAND"));
  EXPECT_EQ(d.Caption("LogicDesc"), "IN1 hi and IN3 hi and IN4 lo and X1 hi and X7 lo");
  d.Click("OptOR");
  EXPECT_FALSE(d.Chosen("OptAND"));
  EXPECT_EQ(d.Caption("LogicDesc"), "IN1 hi or IN3 hi or IN4 lo or X1 hi or X7 lo");
  d.Click("OptSum1(1)");
  d.Click("OptSum8(0)");
  d.Click("OptSum9(1)");
  d.Click("OptSum16(2)");
  EXPECT_EQ(d.Rows(), "l-hl---hlh------");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().InMask, 0x8d);
  EXPECT_EQ(d.Line().InState, 0x84);
  EXPECT_EQ(d.Line().DrvMask, 0x03);
  EXPECT_EQ(d.Line().DrvState, 0x02);
  EXPECT_FALSE(d.Line().WaitAND);
}

TYPED_TEST(EveryInputForm, RowsThatTheDriveDoesNotHaveArePassedOver) {
  TypeParam d(TypeParam::kMultiple);
  d.OfModel(36);
  d.Line().InMask = 0xff;
  d.Line().InState = 0xaa;
  d.Open();
  EXPECT_EQ(d.Caption("LogicDesc"), "IN1 lo and IN2 hi and IN3 lo and IN4 hi");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().InMask, 0x0f);
  EXPECT_EQ(d.Line().InState, 0x0a);
  EXPECT_EQ(d.Line().DrvMask, 0x82) << "stays, as there is no further block";
  EXPECT_EQ(d.Line().DrvState, 0x02);
}

TYPED_TEST(EveryInputForm, RowsOfAnInputThatComesBackAreAsTheyWere) {
  TypeParam d(TypeParam::kMultiple);
  d.OfModel(20);
  d.OfModel(36, 1);
  d.Open();
  const std::string rows = d.Rows();
  d.Choose("Drive", 1);
  EXPECT_EQ(d.Rows(), "h-hl");
  d.Choose("Drive", 0);
  EXPECT_EQ(d.Rows(), rows);
}

TYPED_TEST(EveryInputForm, EveryRowAtDontCareIsRefused) {
  for (const int model : {1, 20}) {
    TypeParam d(TypeParam::kMultiple);
    d.OfModel(model);
    const Instruction before = d.Line();
    d.Open();
    for (int row = 1; row <= 16; ++row) d.Click("OptSum" + std::to_string(row) + "(2)");
    EXPECT_EQ(d.Caption("LogicDesc"), " Please select at least one input to be HI or LO.");
    EXPECT_FALSE(d.OK());
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.boxes.shown[0].text, "You must select at least one input to be high or low.");
    EXPECT_EQ(d.boxes.shown[0].title, TypeParam::kTitle);
    EXPECT_TRUE(d.Chosen("OptSum")) << "stays as set";
    d.form.Cancel();
    EXPECT_EQ(d.Line(), before);
  }
}

TYPED_TEST(EveryInputForm, AChoiceAmongHiddenRowsIsNone) {
  TypeParam d(TypeParam::kMultiple);
  d.OfModel(36);
  d.Line().InMask = 0xf0;
  d.Open();
  EXPECT_FALSE(d.OK());
  EXPECT_EQ(d.boxes.shown.size(), 1U);
}

TYPED_TEST(EveryInputForm, OneInputOfTheFurtherBlockIsEnough) {
  TypeParam d(TypeParam::kMultiple);
  d.OfModel(29);
  d.Line().InMask = 0;
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().InMask, 0);
  EXPECT_EQ(d.Line().DrvMask, 0x82);
}

TYPED_TEST(EveryInputForm, GoingBackToOneInputKeepsTheRowsForALaterSwitch) {
  TypeParam d(TypeParam::kMultiple);
  d.Open();
  d.Click("OptSum5(1)");
  const std::string rows = d.Rows();
  d.Click("OptSingle");
  d.Click("OptSum");
  EXPECT_EQ(d.Rows(), rows);
}

TYPED_TEST(EveryInputForm, OnAnotherAxisAnInputThatItLacksGivesWayToTheFirst) {
  TypeParam d;
  d.OfModel(20);
  d.OfModel(10, 1);
  d.Line().IONum = 129;
  d.Open();
  d.Choose("Drive", 1);
  EXPECT_TRUE(d.Chosen("OptIn(0)"));
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().IONum, 0);
  EXPECT_EQ(d.Line().Drive, 1);
}

TYPED_TEST(EveryInputForm, TheSmallHubIsTheLastEntryOfItsList) {
  TypeParam d;
  d.program.HubIndex = HubQuad;
  d.OfModel(20, 4);
  d.Line().Drive = 4;
  d.Line().IONum = 3;
  d.Open();
  EXPECT_EQ(d.List("Drive").list.size(), 5U);
  EXPECT_EQ(d.List("Drive").list[4], "Hub");
  EXPECT_EQ(d.List("Drive").index, 4);
  EXPECT_TRUE(d.Visible("OptIn(3)"));
  EXPECT_FALSE(d.Visible("OptIn(4)"));
  EXPECT_FALSE(d.Visible("OptIn(128)")) << "whatever its slot says";
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Drive, 4);
  EXPECT_EQ(d.Line().IONum, 3);
  d.Open();
  d.Click("OptSum");
  EXPECT_EQ(d.Rows(), "h-hl");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().InMask, 0x0d);
  EXPECT_EQ(d.Line().DrvMask, 0x82);
}

TYPED_TEST(EveryInputForm, TheLargeHubHasNoEntryOfItsOwn) {
  TypeParam d;
  d.Line().Drive = 4;
  d.Open();
  EXPECT_EQ(d.List("Drive").list.size(), 8U);
  EXPECT_EQ(d.List("Drive").index, 4);
  EXPECT_TRUE(d.Visible("OptIn(7)"));
}

TEST(WaitInput, JogSettingsAreDimmedUntilJogsAreActive) {
  WaitInputBench d;
  d.Open();
  EXPECT_TRUE(d.Chosen("cw"));
  EXPECT_TRUE(d.Enabled("SpeedText"));
  EXPECT_EQ(d.Text("SpeedText"), "1.500");
  EXPECT_EQ(d.Caption("speedunit"), "Rev/sec");
  EXPECT_EQ(d.Text("AccelText"), "70");
  EXPECT_EQ(d.Caption("accelunit"), "Rev/sec/sec");
  d.Click("ccw");
  EXPECT_FALSE(d.Enabled("SpeedText"));
  EXPECT_FALSE(d.Enabled("AccelText"));
  EXPECT_TRUE(d.OK());
  EXPECT_FALSE(d.Line().JogOn);
  EXPECT_EQ(d.Line().JogSpeed, 1.5F);
  EXPECT_EQ(d.Line().JogAccel, 70);
}

TEST(WaitInput, JogSettingsAreForcedIntoRangeInTheUnitsOfTheAxis) {
  const struct {
    const char* box;
    const char* typed;
    const char* shown;
    float speed;
    std::int32_t accel;
  } rows[] = {{"SpeedText", "10", "10.0000", 1.0F, 70},      {"SpeedText", "0", "0.2500", 0.025F, 70},
              {"SpeedText", "1E9", "500.0000", 50.0F, 70},   {"SpeedText", "fast", "0.2500", 0.025F, 70},
              {"AccelText", "1000", "1000.0", 1.5F, 100},    {"AccelText", "", "10.0", 1.5F, 1},
              {"AccelText", "1E999", "30000.0", 1.5F, 3000}, {"AccelText", "104", "100.0", 1.5F, 10}};
  for (const auto& row : rows) {
    WaitInputBench d;
    InInches(d.program, 0, 2000);
    d.Open();
    EXPECT_EQ(d.Text("SpeedText"), "15.0000");
    EXPECT_EQ(d.Caption("speedunit"), "inch/sec");
    EXPECT_EQ(d.Caption("accelunit"), "inch/sec/sec");
    d.Enter(row.box, row.typed);
    EXPECT_EQ(d.Text(row.box), row.shown) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().JogSpeed, row.speed) << row.typed;
    EXPECT_EQ(d.Line().JogAccel, row.accel) << row.typed;
  }
}

TEST(WaitInput, JogSettingsGoThroughTheUnitsOfAnAxisThatDoesNotUseThem) {
  WaitInputBench d;
  d.program.Axis.StepsPerUnit[0] = 40000;
  d.Open();
  d.Enter("SpeedText", "3");
  d.Enter("AccelText", "50");
  EXPECT_EQ(d.Text("SpeedText"), "3.0000");
  EXPECT_EQ(d.Text("AccelText"), "100");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().JogSpeed, 6.0F);
  EXPECT_EQ(d.Line().JogAccel, 100) << "once, however often it is cleaned";
}

TEST(WaitInput, AJogSpeedEndsInRangeWhateverTheUnitsMakeOfIt) {
  const struct {
    std::int32_t steps_per_unit;
    const char* typed;
    float speed;
  } rows[] = {{40000, "40", 50}, {16000000, "0.1", 50}, {20000, "40", 40}, {1, "50", 0.025F}};
  for (const auto& row : rows) {
    WaitInputBench d;
    d.program.Axis.StepsPerUnit[0] = row.steps_per_unit;
    d.Open();
    d.Enter("SpeedText", row.typed);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().JogSpeed, row.speed) << row.steps_per_unit;
  }
}

TEST(WaitInput, StoredJogSettingsBeyondTheirEndsBecomeThoseEnds) {
  for (const bool own_units : {false, true}) {
    WaitInputBench d;
    d.program.Axis.StepsPerUnit[0] = 40000;
    d.program.Axis.UseUnits[0] = own_units;
    d.Line().JogSpeed = 400;
    d.Line().JogAccel = 0;
    d.Open();
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().JogSpeed, 50.0F);
    EXPECT_EQ(d.Line().JogAccel, 1);
  }
}

TEST(WaitInput, StoredJogSettingsOutOfRangeAreForcedAtOK) {
  WaitInputBench d;
  d.Line().JogSpeed = 0;
  d.Line().JogAccel = 4000;
  d.Line().JogOn = false;
  d.Open();
  EXPECT_EQ(d.Text("SpeedText"), "0.000");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().JogSpeed, 0.025F);
  EXPECT_EQ(d.Line().JogAccel, 3000);
}

TEST(WaitInput, JogsAreForcedOffWhereTheDriveHasNoInputsForThem) {
  for (int model = 0; model <= 50; ++model) {
    WaitInputBench d;
    d.OfModel(model);
    d.Open();
    EXPECT_EQ(d.Visible("FrameJog"), !FourInputModel(model)) << model;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().JogOn, !FourInputModel(model)) << model;
  }
  WaitInputBench d;
  d.program.HubIndex = HubQuad;
  d.Line().Drive = 4;
  d.Open();
  EXPECT_FALSE(d.Visible("FrameJog"));
  EXPECT_TRUE(d.OK());
  EXPECT_FALSE(d.Line().JogOn);
}

TEST(WaitInput, SaysThatTheInputWaitedForIsAJog) {
  const struct {
    int model;
    int input;
    const char* way;
  } rows[] = {{1, 4, "clockwise."},
              {1, 5, "counter-clockwise."},
              {10, 0, "clockwise."},
              {10, 1, "counter-clockwise."},
              {20, 129, "clockwise."},
              {20, 130, "counter-clockwise."},
              {17, 4, "clockwise."},
              {1, 0, ""},
              {20, 4, ""},
              {17, 129, ""},
              {36, 3, ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.model);
    WaitInputBench d;
    d.OfModel(row.model);
    d.Open();
    d.Click("OptIn(" + std::to_string(row.input) + ")");
    const bool jogs = *row.way != 0;
    EXPECT_EQ(d.Visible("lbljog"), jogs);
    if (!jogs) continue;
    EXPECT_EQ(d.Caption("lbljog"), std::string("The input waited for jogs the axis ") + row.way);
    d.Click("ccw");
    EXPECT_FALSE(d.Visible("lbljog")) << "jogs are off";
    d.Click("cw");
    d.Click("OptSum");
    EXPECT_FALSE(d.Visible("lbljog")) << "no one input is waited for";
  }
}

TEST(WaitInput, OfOneInputIsNoPromptAnyMore) {
  WaitInputBench d;
  d.Line().CountIsMMI = true;
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_FALSE(d.Line().CountIsMMI);
}

TEST(IfInput, WritesItsTargetInBothModes) {
  const struct {
    const char* typed;
    const char* shown;
    int target;
  } rows[] = {{"1", "1", 0}, {"200", "200", 199}, {"201", "200", 199}, {"0", "1", 0}, {"", "1", 0}};
  for (const std::int16_t type : {II, III}) {
    for (const auto& row : rows) {
      IfBench d(type);
      d.Open();
      EXPECT_EQ(d.Text("linenum"), "42");
      d.Enter("linenum", row.typed);
      EXPECT_EQ(d.Text("linenum"), row.shown);
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line().Type, type);
      EXPECT_EQ(d.Line().LineNum, row.target) << row.typed;
    }
  }
}

TEST(IfInput, LeavesTheJogsOfTheLineAlone) {
  IfBench d;
  d.Line().JogSpeed = 0;
  d.Line().CountIsMMI = true;
  d.OfModel(36);
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().JogSpeed, 0);
  EXPECT_TRUE(d.Line().JogOn);
  EXPECT_TRUE(d.Line().CountIsMMI);
}

}  // namespace
}  // namespace tavlo::testing
