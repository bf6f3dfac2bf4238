// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/short_desc.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "model/kinds.h"
#include "text/one_text.h"

namespace tavlo {
namespace {

using testing::OneText;
using testing::Untouched;
using Fill = void (*)(Instruction&);

struct TextRow {
  int type;
  Fill fill;
  std::string_view text;
};

void ExpectTexts(std::initializer_list<TextRow> rows) {
  for (const TextRow& row : rows) {
    OneText one(row.type);
    row.fill(one.line());
    EXPECT_EQ(one.Text(), row.text) << Mnemonic(row.type);
  }
}

TEST(ShortDesc, TheExamples) {
  ExpectTexts(
      {{FL, Untouched, "Axis 1:CW 2.0 rev, 2.0 rps"},
       {FL, [](Instruction& l) { l.DistIsMMI = l.SpeedIsMMI = true; }, "Axis 1:CW dist=Dist1, spd=Speed1"},
       {FR, [](Instruction& l) { l.Dir = 1; }, "Axis 1:CCW 2.0 rev, 2.0 rps, return"},
       {SO, [](Instruction& l) { l.IONum = 1, l.State = 2; }, "Axis 1:Set Output 2 high pulse 10 msec"},
       {RP, Untouched, "Repeat 10 times"},
       {CC, [](Instruction& l) { l.IdlePct = 1; }, "Axis 1:Change current to 1.00 A (25% idle)"}});
}

TEST(ShortDesc, EveryTypeInItsPlainForm) {
  const std::initializer_list<TextRow> rows = {
      {FL, Untouched, "Axis 1:CW 2.0 rev, 2.0 rps"},
      {FR, Untouched, "Axis 1:CW 2.0 rev, 2.0 rps, return"},
      {FS, Untouched, "Axis 1:CW to sensor 1 low"},
      {FSR, Untouched, "Axis 1:CW to sensor 1 low ,return"},
      {WT, Untouched, "Wait 0.01 seconds"},
      {WI, Untouched, "Axis 1:Wait for Input 1 low"},
      {GT, Untouched, "Go to line 1"},
      {RP, Untouched, "Repeat 10 times"},
      {ER, Untouched, "End Repeat Loop"},
      {SO, Untouched, "Axis 1:Set Output 1 low"},
      {II, Untouched, "Axis 1:If Input 1 low, go to line 1"},
      {NO, Untouched, ""},
      {SH, Untouched, "Axis 1:CW seek home 1 low, 2.0 rps"},
      {CM, [](Instruction& l) { l.Text = "Cut & go"; }, "Cut && go"},
      {MMI, [](Instruction& l) { l.Text = "Hello"; }, "MMI: \"Hello\""},
      {FP, Untouched, "Axis 1:Abs move to 2.0 rev, 2.0 rps"},
      {ED, Untouched, "Axis 1:Disable motor"},
      {SP, Untouched, "Axis 1:Set abs posn = 2.0 rev"},
      {CC, Untouched, "Axis 1:Change current to 1.00 A (0% idle)"},
      {III, Untouched, "Illegal Multi-If Input"},
      {FLSO, Untouched, "Axis 1:CW 2.0 rev, Out 1 low"},
      {FLCS, Untouched, "Axis 1:CW 2.0 rev, 2.0/.5 rps"},
      {WII, Untouched, "Illegal Multi-Wait Input"},
      {FSS, Untouched, "Axis 1:CW to sensor 1 low"},
      {RL, Untouched, "Reset repeat loop on line 1"},
      {LP, [](Instruction& l) { l.DistVar = 15; }, "Axis 1:Save abs position to Posn1"},
      {CL, Untouched, "Call subroutine on line 1"},
      {RT, Untouched, "Return from subroutine"},
      {IM, Untouched, "Axis 1: if moving go to line 1"},
      {SS, [](Instruction& l) { l.SubType = 3; }, "Start Axis 1 cw, 2.0 rps"}};
  ExpectTexts(rows);
  EXPECT_EQ(rows.size(), kTypes - 2U) << "each type but FE and the menu's hub code has a row in this table";
}

TEST(ShortDesc, FEAndTheMenusHubCodeAndAnyTypeThatThereIsNotLeaveTheTextAsItWas) {
  for (const int type : {18, 26, 32, 33, 100, 32767}) {
    EXPECT_FALSE(ShortDesc(OneText(type).program, 0).has_value()) << type;
  }
}

TEST(ShortDesc, CounterClockwiseIsAnyDirThatIsNotZero) {
  for (const std::int16_t dir : {std::int16_t{1}, std::int16_t{2}, std::int16_t{-1}}) {
    for (const auto& [type, text] :
         {std::pair(FL, "Axis 1:CCW 2.0 rev, 2.0 rps"), std::pair(FR, "Axis 1:CCW 2.0 rev, 2.0 rps, return"),
          std::pair(FS, "Axis 1:CCW to sensor 1 low"), std::pair(FSR, "Axis 1:CCW to sensor 1 low ,return"),
          std::pair(FSS, "Axis 1:CCW to sensor 1 low"), std::pair(SH, "Axis 1:CCW seek home 1 low, 2.0 rps"),
          std::pair(FLSO, "Axis 1:CCW 2.0 rev, Out 1 low"),
          std::pair(FLCS, "Axis 1:CCW 2.0 rev, 2.0/.5 rps")}) {
      OneText one(type);
      one.line().Dir = dir;
      EXPECT_EQ(one.Text(), text) << dir;
    }
  }
}

TEST(ShortDesc, PositionsShowTheirSign) {
  ExpectTexts({{FP, [](Instruction& l) { l.Dir = 1; }, "Axis 1:Abs move to -2.0 rev, 2.0 rps"},
               {FP, [](Instruction& l) { l.DistIsMMI = true, l.DistVar = 20; },
                "Axis 1:Abs move to posn=Posn6, 2.0 rps"},
               {SP, [](Instruction& l) { l.Dir = 1; }, "Axis 1:Set abs posn = -2.0 rev"},
               {SP, [](Instruction& l) { l.Dist = 0; }, "Axis 1:Set abs posn = .0 rev"}});
}

TEST(ShortDesc, SpeedsAndDistancesInUserUnits) {
  OneText one(FL);
  one.program.Axis.UnitName[0] = "mm";
  one.program.Axis.StepsPerUnit[0] = 3000;
  EXPECT_EQ(one.Text(), "Axis 1:CW 13.33 mm, 13.33 mps");
  one.program.Axis.UnitName[0] = "";
  EXPECT_EQ(one.Text(), "Axis 1:CW 13.33 , 13.33 ps");
}

TEST(ShortDesc, SpeedsAndDistancesInStepsWhereTheAxisUsesNoUnits) {
  OneText one(FL);
  one.program.Axis.UseUnits[0] = false;
  EXPECT_EQ(one.Text(), "Axis 1:CW 40000 steps, 2 rps");
  one.line().Speed = 0.5F;
  EXPECT_EQ(one.Text(), "Axis 1:CW 40000 steps, 1 rps");
}

TEST(ShortDesc, TwoSpeedsShareOneUnitAndANamedVariableStandsAlone) {
  struct {
    bool first;
    bool second;
    bool units;
    std::string_view text;
  } const cases[] = {{false, false, true, "Axis 1:CW 2.0 rev, 2.0/1.5 rps"},
                     {true, false, true, "Axis 1:CW 2.0 rev, spd=Speed1/1.5 rps"},
                     {false, true, true, "Axis 1:CW 2.0 rev, 2.0 rps/Speed2"},
                     {true, true, true, "Axis 1:CW 2.0 rev, spd=Speed1/Speed2"},
                     {false, false, false, "Axis 1:CW 40000 steps, 2/2 rps"},
                     {true, false, false, "Axis 1:CW 40000 steps, spd=Speed1/2 rps"},
                     {false, true, false, "Axis 1:CW 40000 steps, 2 rps/Speed2"}};
  for (const auto& c : cases) {
    OneText one(FLCS);
    one.line().Speed2 = 1.5F;
    one.line().SpeedIsMMI = c.first;
    one.line().Speed2IsMMI = c.second;
    one.program.Axis.UseUnits[0] = c.units;
    EXPECT_EQ(one.Text(), c.text);
  }
}

TEST(ShortDesc, FSOnDriveInput128ReadsX0High) {
  OneText one(FS);
  one.line().IONum = 128;
  one.line().State = 0;
  EXPECT_EQ(one.Text(), "Axis 1:CW to sensor X0 high");
}

struct InputRow {
  int type;
  std::string_view head;
};

TEST(ShortDesc, InputNamesByNumberAndDrive) {
  constexpr InputRow kRows[] = {{FS, "Axis 1:CW to sensor "},   {FSR, "Axis 1:CW to sensor "},
                                {FSS, "Axis 1:CW to sensor "},  {SH, "Axis 1:CW seek home "},
                                {WI, "Axis 1:Wait for Input "}, {II, "Axis 1:If Input "}};
  for (const InputRow& row : kRows) {
    const bool drive_first = row.type == WI || row.type == II;
    for (const int model : {1, 10, 12, 16, 26, 14, 15, 18, 28, 11, 20, 40}) {
      const bool plain = PlainModel(model) || ProgModel(model);
      for (const int input : {0, 7, 127, 128, 135}) {
        std::string name = std::to_string(input + 1);
        if (plain) name = "X" + name;
        if (input > 127 && !(plain && drive_first)) name = "X" + std::to_string(input - 128);
        OneText one(row.type);
        one.Model(model);
        one.line().IONum = static_cast<std::int16_t>(input);
        const std::string expected = std::string(row.head) + name + " low";
        EXPECT_EQ(one.Text().substr(0, expected.size()), expected) << Mnemonic(row.type) << " on " << model;
      }
    }
  }
}

TEST(ShortDesc, OutputNamesByNumberAndDrive) {
  for (const int type : {SO, FLSO}) {
    const std::string head = type == SO ? "Axis 1:Set Output " : "Axis 1:CW 2.0 rev, Out ";
    for (const int model : {1, 10, 28, 11}) {
      const bool plain = PlainModel(model) || ProgModel(model);
      for (const int output : {0, 3, 127, 128, 130}) {
        std::string name = (plain ? "Y" : "") + std::to_string(output + 1);
        if (output > 127) name = "Y" + std::to_string(output - 127);
        OneText one(type);
        one.Model(model);
        one.line().IONum = static_cast<std::int16_t>(output);
        EXPECT_EQ(one.Text(), head + name + " low") << output << " on " << model;
      }
    }
  }
}

TEST(ShortDesc, LevelsOfSensorsAndInputs) {
  struct {
    int state;
    std::string_view sensor;
    std::string_view input;
  } const cases[] = {{0, " high", " high"},
                     {1, " low", " low"},
                     {2, " rising", " rising edge"},
                     {3, " falling", " falling edge"},
                     {4, "", ""},
                     {-1, "", ""}};
  for (const auto& c : cases) {
    const auto text = [&c](int type) {
      OneText one(type);
      one.line().State = static_cast<std::int16_t>(c.state);
      return one.Text();
    };
    EXPECT_EQ(text(FS), "Axis 1:CW to sensor 1" + std::string(c.sensor));
    EXPECT_EQ(text(FSS), "Axis 1:CW to sensor 1" + std::string(c.sensor));
    EXPECT_EQ(text(FSR), "Axis 1:CW to sensor 1" + std::string(c.sensor) + " ,return");
    EXPECT_EQ(text(WI), "Axis 1:Wait for Input 1" + std::string(c.input));
    EXPECT_EQ(text(SH), "Axis 1:CW seek home 1" + std::string(c.input) + ", 2.0 rps");
    if (!c.input.empty()) {
      EXPECT_EQ(text(II), "Axis 1:If Input 1" + std::string(c.input) + ", go to line 1");
    }
  }
}

TEST(ShortDesc, ActionsOfOutputs) {
  struct {
    int state;
    std::string_view action;
  } const cases[] = {{0, " high"}, {1, " low"}, {2, " high pulse 500 msec"}, {3, " low pulse 500 msec"},
                     {4, ""},      {-1, ""}};
  for (const auto& c : cases) {
    OneText one(SO);
    one.line().State = static_cast<std::int16_t>(c.state);
    one.line().Time = 500;
    EXPECT_EQ(one.Text(), "Axis 1:Set Output 1" + std::string(c.action));
  }
}

TEST(ShortDesc, TheHubsOwnInputsAndOutputs) {
  struct {
    int type;
    std::string_view text;
  } const cases[] = {{WI, "Hub:Wait for Input 4 low"},
                     {SO, "Hub:Set Output 4 low"},
                     {II, "Hub:If Input 4 low, go to line 1"}};
  for (const auto& c : cases) {
    OneText one(c.type);
    one.program.HubIndex = HubQuad;
    one.program.Axis.DriveModel[4] = 10;
    one.line().Drive = 4;
    one.line().IONum = 3;
    EXPECT_EQ(one.Text(), c.text);
    one.program.HubIndex = HubOcto;
    EXPECT_EQ(one.Text().substr(0, 7), "Axis 5:");
  }
}

TEST(ShortDesc, TextsThatComeFromTheOperatorTerminal) {
  ExpectTexts(
      {{WI, [](Instruction& l) { l.CountIsMMI = true, l.Text = "Load"; }, "Wait for MMI ENTER (Load)"},
       {II, [](Instruction& l) { l.CountIsMMI = true, l.Text = "More?", l.LineNum = 4; },
        "If MMI=Yes, go to line 5 (More?)"},
       {RP, [](Instruction& l) { l.CountIsMMI = true, l.DistVar = 35; }, "Repeat (Count1)"},
       {RP, [](Instruction& l) { l.SpeedIsMMI = true; }, "Repeat 10 times, display count"},
       {RP, [](Instruction& l) { l.CountIsMMI = l.SpeedIsMMI = true, l.DistVar = 49; },
        "Repeat (Count15), display count"}});
}

TEST(ShortDesc, EachPromptHasItsForm) {
  constexpr std::string_view kForms[] = {
      "MMI(Dist3): \"Hi\"", "MMI(Dist3): \"Hi\"",          "MMI(Dist3): \"Hi\"",
      "MMI: \"Hi\"",        "MMI(wait for enter): \"Hi\"", "MMI(branch on yes to line 8): \"Hi\"",
      "MMI Menu: \"Hi\""};
  for (int sub = 0; sub <= 6; ++sub) {
    OneText one(MMI);
    one.line().SubType = static_cast<std::int16_t>(sub);
    one.line().DistVar = 2;
    one.line().LineNum = 7;
    one.line().Text = "Hi";
    EXPECT_EQ(one.Text(), kForms[sub]);
  }
}

TEST(ShortDesc, LineNumbersAreCountedAsTheOperatorCountsThem) {
  ExpectTexts({{GT, [](Instruction& l) { l.LineNum = 199; }, "Go to line 200"},
               {CL, [](Instruction& l) { l.LineNum = 9; }, "Call subroutine on line 10"},
               {RL, [](Instruction& l) { l.LineNum = 200; }, "Reset repeat loop on line 201"},
               {IM, [](Instruction& l) { l.LineNum = 32767; }, "Axis 1: if moving go to line 32768"}});
}

TEST(ShortDesc, WaitTimesAreDividedByAThousand) {
  ExpectTexts({{WT, [](Instruction& l) { l.Time = 1000; }, "Wait 1 seconds"},
               {WT, [](Instruction& l) { l.Time = 30000; }, "Wait 30 seconds"},
               {WT, [](Instruction& l) { l.Time = 1; }, "Wait 0.001 seconds"},
               {WT, [](Instruction& l) { l.Time = 12345; }, "Wait 12.345 seconds"}});
}

TEST(ShortDesc, CurrentsAndIdle) {
  ExpectTexts({{ED, [](Instruction& l) { l.MotorOn = true; }, "Axis 1:Resume normal current"},
               {CC, [](Instruction& l) { l.Current = 0.9F, l.IdlePct = 2; },
                "Axis 1:Change current to 0.90 A (50% idle)"},
               {CC, [](Instruction& l) { l.Current = 5.0F, l.IdlePct = 3; },
                "Axis 1:Change current to 5.00 A (100% idle)"},
               {CC, [](Instruction& l) { l.IdlePct = 4; }, "Axis 1:Change current to 1.00 A ( idle)"}});
  for (const int outside : {-1, 4, 100}) EXPECT_EQ(IdleText(outside), "");
}

TEST(ShortDesc, StartOrStopBySubType) {
  ExpectTexts(
      {{SS, [](Instruction& l) { l.SubType = 3, l.Dir = 1; }, "Start Axis 1 ccw, 2.0 rps"},
       {SS, [](Instruction& l) { l.SubType = 3, l.SpeedIsMMI = true; }, "Start Axis 1 cw, spd=Speed1"},
       {SS, [](Instruction& l) { l.SubType = 2; }, "Stop Axis 1"},
       {SS, [](Instruction& l) { l.SubType = 1; }, "Change speed of Axis 1, 2.0 rps"},
       {SS, [](Instruction& l) { l.SubType = 0; }, "Stop all motion"}});
}

TEST(ShortDesc, TheOperatorsNameOfTheAxisStandsInTheText) {
  OneText one(LP);
  one.program.Axis.AxisName[0] = "Feeder";
  EXPECT_EQ(one.Text(), "Feeder:Save abs position to Dist1");
}

}  // namespace
}  // namespace tavlo
