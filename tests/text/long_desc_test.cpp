// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/long_desc.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "model/kinds.h"
#include "text/one_text.h"

namespace tavlo {
namespace {

using testing::OneText;
using testing::Untouched;
using Fill = void (*)(Instruction&);
using Texts = std::vector<std::string>;

Texts TextsOf(const std::vector<LongRow>& rows) {
  Texts texts;
  for (const LongRow& row : rows) texts.push_back(row.text);
  return texts;
}

Texts TextsOf(const OneText& one) {
  return TextsOf(PrintLine(one.program, 0, 0));
}

struct LongCase {
  int type;
  Fill fill;
  Texts texts;
};

void ExpectLongTexts(const std::vector<LongCase>& cases) {
  for (const LongCase& c : cases) {
    OneText one(c.type);
    c.fill(one.line());
    EXPECT_EQ(TextsOf(one), c.texts) << Mnemonic(c.type);
  }
}

constexpr std::string_view kMove = "(cw) 2.0 rev, 2.0 rps, A=100.0 rev/s/s, D=100.0 rev/s/s";
std::string Move(std::string_view verb) {
  return "Axis 1: " + std::string(verb) + std::string(kMove);
}

TEST(PrintLine, EveryTypeInItsPlainForm) {
  const std::vector<LongCase> cases = {
      {FL, Untouched, {Move("Feed to Length")}},
      {FR, Untouched, {Move("Feed & Return"), "Return speed=3.000 rev/sec, Return delay=0.01 sec"}},
      {FS, Untouched, {Move("Feed to Sensor"), "To input 1 low"}},
      {FSR,
       Untouched,
       {Move("Feed to Sensor & Return"), "Return speed=3.000rev/sec, Return delay=0.01 sec.",
        "  To input 1 low"}},
      {WT, Untouched, {"Wait Time .01 seconds"}},
      {WI, Untouched, {"Wait for Input 1 low"}},
      {GT, Untouched, {"Go To Line 1 "}},
      {RP, Untouched, {"Repeat 10 times"}},
      {ER, Untouched, {"End Repeat"}},
      {SO, Untouched, {"Axis 1: Set Output 1 low"}},
      {II, Untouched, {"If Input 1 low go to line 1 "}},
      {NO, Untouched, {}},
      {SH, Untouched, {Move("Seek Home"), "To input 1 low"}},
      {CM, [](Instruction& l) { l.Text = "Cut & go"; }, {"  Comment: \"Cut & go\""}},
      {MMI, [](Instruction& l) { l.Text = "Hello"; }, {"MMI:  (display text only)", "\"Hello\""}},
      {FP, Untouched, {"Axis 1: Feed to Abs Position 2.0 rev, 2.0 rps, A=100.0 rev/s/s, D=100.0 rev/s/s"}},
      {ED, Untouched, {"Axis 1: Disable motor (motor turns freely)"}},
      {SP, Untouched, {"Axis 1: Set abs position =  40000 "}},
      {FE, Untouched, {"Follow knob until Input 0 low,  40000 /count."}},
      {CC, Untouched, {"Axis 1: Change motor current to 1.00 A (0% idle)"}},
      {III, Untouched, {"Axis 1: Illegal Multi-If Input"}},
      {FLSO,
       Untouched,
       {"Axis 1: Feed to Length(cw) 2.0 rev",
        ", 2.0 rps, A=100.0 rev/s/s, D=100.0 rev/s/s  Set Output 1 low at end of move."}},
      {FLCS,
       Untouched,
       {"Axis 1: Feed to Length(cw) 2.0 rev",
        ", 2.0 rps.A=100.0 rev/s/s, D=100.0 rev/s/s. at .5 rev.  Change to .5 rps"}},
      {WII, Untouched, {"Axis 1: Illegal Multi-Wait Input"}},
      {FSS,
       Untouched,
       {Move("Feed to Sensor"), "To input 1 low",
        "If move distance exceeds safety limit of .5 rev stop motor and go to line 1 "}},
      {RL, Untouched, {"Reset repeat loop on line 1"}},
      {MMImenu, Untouched, {}},
      {LP, [](Instruction& l) { l.DistVar = 15; }, {"Axis 1: Save abs position to Posn1"}},
      {CL, Untouched, {"Call subroutine on line 1"}},
      {RT, Untouched, {"Return from subroutine"}},
      {IM, Untouched, {"Axis 1: if moving go to line  1 "}},
      {SS,
       [](Instruction& l) { l.SubType = 3; },
       {"Axis 1: Start cw, 2.0 rps, A=100.0 rev/s/s, D=100.0 rev/s/s"}}};
  ExpectLongTexts(cases);
  ASSERT_EQ(cases.size(), std::size_t{kTypes});
  for (int type = 0; type < kTypes; ++type) EXPECT_EQ(cases[type].type, type);
}

TEST(PrintLine, ATypeThatThereIsNotPrintsNothing) {
  for (const int type : {-1, 32, 100, 32767}) EXPECT_EQ(TextsOf(OneText(type)), Texts{}) << type;
}

TEST(PrintLine, TheExamples) {
  Program program = OneText(FL).program;
  const auto printed = [&program](int indent, int line) {
    Texts texts;
    for (const LongRow& row : PrintLine(program, indent, line)) texts.push_back(AsPrinted(row));
    return texts;
  };
  program.Prog[2] = program.Prog[3] = program.Prog[0];
  program.Prog[3].Type = FS;
  program.Prog[3].IONum = 1;
  program.Prog[4].Type = GT;
  EXPECT_EQ(printed(0, 2), (Texts{" 3 " + Move("Feed to Length")}));
  EXPECT_EQ(printed(0, 3), (Texts{" 4 " + Move("Feed to Sensor"), "        To input 2 low"}));
  EXPECT_EQ(printed(0, 4), (Texts{" 5 Go To Line 1 "}));
}

TEST(PrintLine, TheFirstRowBearsTheNumberAndAllKeepTheIndent) {
  OneText one(FSR);
  one.program.Prog[41] = one.line();
  const auto rows = PrintLine(one.program, 6, 41);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].number, 42);
  EXPECT_EQ(rows[1].number, std::nullopt);
  EXPECT_EQ(rows[2].number, std::nullopt);
  for (const LongRow& row : rows) EXPECT_EQ(row.indent, 6);
}

TEST(AsPrinted, GoesToTheTabAndLeavesABlankBehindANumberThatReachesAsFar) {
  struct {
    std::optional<int> number;
    int indent;
    std::string_view printed;
  } const cases[] = {// Columns 2, 1 and 0, all of them passed.
                     {1, 0, " 1 x"},
                     {9, 0, " 9 x"},
                     {10, 0, " 10 x"},
                     {99, 0, " 99 x"},
                     {100, 0, " 100 x"},
                     {200, 0, " 200 x"},
                     // The number reaches column 3, the tab is in 4.
                     {1, 2, " 1 x"},
                     {10, 2, " 10 x"},
                     {100, 2, " 100 x"},
                     {1, 4, " 1   x"},
                     {10, 4, " 10 x"},
                     {100, 4, " 100 x"},
                     {1, 6, " 1     x"},
                     {10, 6, " 10   x"},
                     {100, 6, " 100 x"},
                     {100, 10, " 100     x"},
                     {std::nullopt, 0, "        x"},
                     {std::nullopt, 2, "          x"}};
  for (const auto& c : cases) {
    EXPECT_EQ(AsPrinted({c.number, c.indent, "x"}), c.printed) << c.number.value_or(0) << " at " << c.indent;
  }
}

TEST(PrintLine, DirectionsAreClockwiseAtZeroAlone) {
  for (const int type : {FL, FR, FS, FSR, SH, FLSO, FLCS, FSS}) {
    for (const std::int16_t dir : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}, std::int16_t{-1}}) {
      OneText one(type);
      one.line().Dir = dir;
      const std::string text = TextsOf(one)[0];
      EXPECT_NE(text.find(dir == 0 ? "(cw) 2.0" : "(ccw) 2.0"), std::string::npos) << text;
    }
  }
  ExpectLongTexts({{FP,
                    [](Instruction& l) { l.Dir = 1; },
                    {"Axis 1: Feed to Abs Position -2.0 rev, 2.0 rps, A=100.0 rev/s/s, D=100.0 rev/s/s"}},
                   {SP, [](Instruction& l) { l.Dir = 1; }, {"Axis 1: Set abs position = -40000 "}},
                   {SP, [](Instruction& l) { l.Dir = 1, l.Dist = 0; }, {"Axis 1: Set abs position =  0 "}},
                   {SS,
                    [](Instruction& l) { l.SubType = 3, l.Dir = 1; },
                    {"Axis 1: Start ccw, 2.0 rps, A=100.0 rev/s/s, D=100.0 rev/s/s"}}});
}

TEST(PrintLine, DistancesAndSpeedsComeFromVariables) {
  ExpectLongTexts(
      {{FL,
        [](Instruction& l) { l.DistIsMMI = l.SpeedIsMMI = true; },
        {"Axis 1: Feed to Length(cw) distance = MMI(Dist1), V = MMI(Speed1), A=100.0 rev/s/s, D=100.0 "
         "rev/s/s"}},
       {FP,
        [](Instruction& l) { l.DistIsMMI = true, l.DistVar = 20, l.Dir = 1; },
        {"Axis 1: Feed to Abs Position -distance = MMI(Posn6), 2.0 rps, A=100.0 rev/s/s, D=100.0 "
         "rev/s/s"}},
       {SS,
        [](Instruction& l) { l.SubType = 1, l.SpeedIsMMI = true, l.SpeedVar = 34; },
        {"Axis 1: Change speed to, V = MMI(Speed10)"}}});
}

TEST(PrintLine, UserUnitsNameTheUnitAndItsFirstLetter) {
  OneText one(FL);
  one.program.Axis.UnitName[0] = "mm";
  one.program.Axis.StepsPerUnit[0] = 3000;
  EXPECT_EQ(TextsOf(one),
            (Texts{"Axis 1: Feed to Length(cw) 13.33 mm, 13.33 mps, A=666.7 mm/s/s, D=666.7 mm/s/s"}));
  one.program.Axis.UnitName[0] = "";
  EXPECT_EQ(TextsOf(one), (Texts{"Axis 1: Feed to Length(cw) 13.33 , 13.33 ps, A=666.7 /s/s, D=666.7 /s/s"}));
}

TEST(PrintLine, AnAccelerationPrintsByItsPicture) {
  struct {
    int steps_per_unit;
    std::string_view accel;
  } const cases[] = {{20000, "A=100.0 "}, {10000, "A=200.0 "}, {30000, "A=66.67 "},
                     {9999, "A=200.0 "},  {1000, "A=2000.0 "}, {999, "A=2002 "}};
  for (const auto& c : cases) {
    OneText one(FL);
    one.program.Axis.StepsPerUnit[0] = c.steps_per_unit;
    EXPECT_NE(TextsOf(one)[0].find(c.accel), std::string::npos) << TextsOf(one)[0];
  }
}

TEST(PrintLine, WithoutUserUnitsStepsAreGroupedAndSpeedsAreRevolutions) {
  struct {
    int type;
    Texts texts;
  } const cases[] = {
      {FL, {"Axis 1: Feed to Length(cw) 1,240,000 steps, V=2.000 rev/sec, A=100 rev/s/s, D=50 rev/s/s"}},
      {FLSO,
       {"Axis 1: Feed to Length(cw) 1,240,000 steps",
        ", V=2.000 rev/sec, A=100 rev/s/s, D=50 rev/s/s  Set Output 1 low at 999 steps."}},
      {FLCS,
       {"Axis 1: Feed to Length(cw) 1,240,000 steps",
        ", V=2.000 rev/sec.A=100 rev/s/s, D=50 rev/s/s. at 999 steps.  Change to 0.125 rev/sec"}},
      {FSS,
       {"Axis 1: Feed to Sensor(cw) 1,240,000 steps, V=2.000 rev/sec, A=100 rev/s/s, D=50 rev/s/s",
        "To input 1 low",
        "If move distance exceeds safety limit of 10,000 steps stop motor and go to line 1 "}}};
  for (const auto& c : cases) {
    OneText one(c.type);
    one.program.Axis.UseUnits[0] = false;
    one.line().Dist = 1240000;
    one.line().Dist2 = 999;
    one.line().Decel = 50;
    one.line().Speed2 = 0.125F;
    one.line().Speed2IsMMI = c.type == FLSO;
    EXPECT_EQ(TextsOf(one), c.texts);
  }
}

TEST(PrintLine, AReturnPrintsItsSpeedInRevolutionsWhateverTheUnits) {
  ExpectLongTexts({{FR,
                    [](Instruction& l) { l.RetSpeed = 0.5F, l.Time = 150; },
                    {Move("Feed & Return"), "Return speed=0.500 rev/sec, Return delay=0.15 sec"}},
                   {FSR,
                    [](Instruction& l) { l.RetSpeed = 12.3456F, l.Time = 0, l.State = 0; },
                    {Move("Feed to Sensor & Return"), "Return speed=12.3456rev/sec, Return delay=0 sec.",
                     "  To input 1 high"}}});
}

TEST(PrintLine, TheEncodersIndexIsInput8OfAFeedAndInput6OfASearchForHome) {
  struct {
    int type;
    std::size_t row;
    int input;
    std::string_view text;
  } const cases[] = {{FS, 1, 8, "To encoder index  low"},  {FS, 1, 6, "To input 7 low"},
                     {FSS, 1, 8, "To encoder index  low"}, {FSS, 1, 6, "To input 7 low"},
                     {FSR, 2, 8, "  To input X0 low"},     {FSR, 2, 6, "  To input 7 low"},
                     {SH, 1, 6, "To encoder index  low"},  {SH, 1, 8, "To input X0 low"}};
  for (const auto& c : cases) {
    OneText one(c.type);
    one.line().IONum = static_cast<std::int16_t>(c.input);
    EXPECT_EQ(TextsOf(one)[c.row], c.text) << Mnemonic(c.type) << " on " << c.input;
  }
}

TEST(PrintLine, InputsHaveTheirNameAndLevel) {
  constexpr std::string_view kLevels[] = {" high", " low", " rising edge", " falling edge"};
  for (int state = -1; state <= 4; ++state) {
    const std::string level(state >= 0 && state < 4 ? kLevels[state] : "");
    for (const int model : {1, 10, 28}) {
      const std::string name = model == 1 ? "4" : "X4";
      for (const int type : {FS, FSR, FSS, SH, WI}) {
        OneText one(type);
        one.Model(model);
        one.line().IONum = 3;
        one.line().State = static_cast<std::int16_t>(state);
        const Texts texts = TextsOf(one);
        const std::string& text = texts[type == FSR ? 2 : type == WI ? 0 : 1];
        EXPECT_TRUE(text.ends_with((type == WI ? "Input " : "To input ") + name + level)) << text;
      }
    }
  }
}

TEST(PrintLine, AnIfReadsLowInAllButOneState) {
  for (int state = -1; state <= 4; ++state) {
    OneText one(II);
    one.line().State = static_cast<std::int16_t>(state);
    one.line().IONum = 130;
    one.line().LineNum = 8;
    EXPECT_EQ(TextsOf(one),
              (Texts{state == 0 ? "If Input X2 high go to line 9 " : "If Input X2 low go to line 9 "}));
  }
}

TEST(PrintLine, OutputsByNumberAndDrive) {
  struct {
    int model;
    int output;
    std::string_view name;
  } const cases[] = {{1, 0, "1"},   {1, 3, "4"},   {1, 127, "128"}, {1, 128, "Y1"}, {1, 130, "Y3"},
                     {10, 0, "Y1"}, {28, 2, "Y3"}, {10, 128, "Y1"}, {11, 1, "2"},   {1, -6, "-5"}};
  for (const auto& c : cases) {
    for (const int type : {SO, FLSO}) {
      OneText one(type);
      one.Model(c.model);
      one.line().IONum = static_cast<std::int16_t>(c.output);
      const std::string wanted = "Set Output " + std::string(c.name) + " low";
      EXPECT_NE(TextsOf(one).back().find(wanted), std::string::npos) << TextsOf(one).back();
    }
  }
}

TEST(PrintLine, ActionsOfOutputsAndAStateThatThereIsNotEndsTheRow) {
  struct {
    int state;
    std::string_view set;
    std::string_view feed;
  } const cases[] = {{0, "high", " high at end of move."},
                     {1, "low", " low at end of move."},
                     {2, "high pulse 250 msec", " high pulse 250 msec at end of move."},
                     {3, "low pulse 250 msec", " low pulse 250 msec at end of move."},
                     {4, "", ""},
                     {-1, "", ""}};
  for (const auto& c : cases) {
    OneText one(SO);
    one.line().State = static_cast<std::int16_t>(c.state);
    one.line().Time = 250;
    EXPECT_EQ(TextsOf(one), (Texts{"Axis 1: Set Output 1 " + std::string(c.set)}));
    one.line().Type = FLSO;
    EXPECT_TRUE(TextsOf(one)[1].ends_with("  Set Output 1" + std::string(c.feed))) << TextsOf(one)[1];
  }
  OneText one(SO);
  one.line().State = 2;
  one.line().Time = -5;
  EXPECT_EQ(TextsOf(one), (Texts{"Axis 1: Set Output 1 high pulse -5 msec"}));
}

TEST(PrintLine, AnOutputActsAtADistanceIfTheLineSaysSo) {
  struct {
    bool during;
    bool from_variable;
    std::string_view ending;
  } const cases[] = {{false, false, " low at end of move."},
                     {false, true, " low at end of move."},
                     {true, false, " low at .5 rev."},
                     {true, true, " low at at MMI(Dist2)."}};
  for (const auto& c : cases) {
    OneText one(FLSO);
    one.line().Speed2IsMMI = c.during;
    one.line().Dist2IsMMI = c.from_variable;
    EXPECT_TRUE(TextsOf(one)[1].ends_with(c.ending)) << TextsOf(one)[1];
  }
}

TEST(PrintLine, AChangeOfSpeedPrintsItsClausesInTheirOrder) {
  struct {
    bool first;
    bool at;
    bool second;
    std::string_view text;
  } const cases[] = {
      {true, false, false,
       ",  V = MMI(Speed1).A=100.0 rev/s/s, D=100.0 rev/s/s. at .5 rev.  Change to .5 rps"},
      {false, true, false, ", 2.0 rps.A=100.0 rev/s/s, D=100.0 rev/s/s. at at MMI(Dist2).  Change to .5 rps"},
      {false, false, true, ", 2.0 rps.A=100.0 rev/s/s, D=100.0 rev/s/s. at .5 rev.  Change to MMI(Speed2)"},
      {true, true, true,
       ",  V = MMI(Speed1).A=100.0 rev/s/s, D=100.0 rev/s/s. at at MMI(Dist2).  Change to MMI(Speed2)"}};
  for (const auto& c : cases) {
    OneText one(FLCS);
    one.line().SpeedIsMMI = c.first;
    one.line().Dist2IsMMI = c.at;
    one.line().Speed2IsMMI = c.second;
    EXPECT_EQ(TextsOf(one)[1], c.text);
  }
}

TEST(PrintLine, TheTwoMovesWithASecondClauseCanBeAskedForAlone) {
  OneText one(FLSO);
  EXPECT_EQ(PrintFLSO(one.program, 4, 0), PrintLine(one.program, 4, 0));
  const auto as_change = PrintFLCS(one.program, 4, 0);
  one.line().Type = FLCS;
  EXPECT_EQ(as_change, PrintLine(one.program, 4, 0));
}

TEST(PrintLine, ASafetyDistanceIsNeverAVariable) {
  OneText one(FSS);
  one.line().DistIsMMI = one.line().Dist2IsMMI = true;
  one.line().SafetyDist = 30000;
  one.line().LineNum = 199;
  EXPECT_EQ(TextsOf(one)[2],
            "If move distance exceeds safety limit of 1.5 rev stop motor and go to line 200 ");
}

TEST(PrintLine, LinesThatAskTheOperatorTerminal) {
  ExpectLongTexts(
      {{WI, [](Instruction& l) { l.CountIsMMI = true, l.Text = "Load"; }, {"Wait for MMI ENTER: \"Load\""}},
       {WI,
        [](Instruction& l) { l.CountIsMMI = l.JogOn = true, l.Text = "Load"; },
        {"Wait for MMI ENTER: \"Load\"", "Allow jogging on MMI arrow keys."}},
       {WI, [](Instruction& l) { l.CountIsMMI = l.JogLR = l.JogUD = true; }, {"Wait for MMI ENTER: \"\""}},
       {WI, [](Instruction& l) { l.JogOn = true; }, {"Wait for Input 1 low"}},
       {II, [](Instruction& l) { l.CountIsMMI = true, l.LineNum = 4; }, {"If MMI YES, go to line 5 "}},
       {RP, [](Instruction& l) { l.CountIsMMI = true, l.DistVar = 35; }, {"Repeat (MMI Count1)"}},
       {RP, [](Instruction& l) { l.SpeedIsMMI = true; }, {"Repeat 10 times, display count"}},
       {RP,
        [](Instruction& l) { l.CountIsMMI = l.SpeedIsMMI = true, l.DistVar = 49; },
        {"Repeat (MMI Count15), display count"}}});
}

TEST(PrintLine, AKnobIsFollowedUntilEnterOrAnInputByItsDistance) {
  constexpr std::string_view kLevels[] = {"high", "low", "rising edge", "falling edge"};
  for (int state = 0; state < 4; ++state) {
    OneText one(FE);
    one.line().State = static_cast<std::int16_t>(state);
    one.line().IONum = 2;
    one.line().Dist = 16;
    one.line().Count = 99;
    EXPECT_EQ(TextsOf(one),
              (Texts{"Follow knob until Input 2 " + std::string(kLevels[state]) + ",  16 /count."}));
  }
  ExpectLongTexts({{FE,
                    [](Instruction& l) { l.CountIsMMI = true, l.Dist = 16; },
                    {"Follow knob until MMI ENTER.  16 /count."}},
                   {FE, [](Instruction& l) { l.State = 4; }, {"Follow knob until Input 0 "}}});
}

TEST(PrintLine, EachPromptHasItsForm) {
  const Texts limits = {"\"Hi\"", "Upper limit = 50.0.  Lower limit = 1.0."};
  const Texts forms = {"MMI: Dist3(steps) = entry * 20000",
                       "MMI: Dist3(rev/sec) = entry * 1",
                       "MMI: Dist3(counts) = entry",
                       "MMI:  (display text only)",
                       "MMI:  (wait for enter)",
                       "MMI:  (branch on yes to line 8)",
                       "MMI:  (menu), 1 = Line 10, 2 = Line 20, 3 = Line 30, 4 = Line 40"};
  for (int sub = 0; sub < static_cast<int>(forms.size()); ++sub) {
    OneText one(MMI);
    one.line().SubType = static_cast<std::int16_t>(sub);
    one.line().DistVar = 2;
    one.line().LineNum = 7;
    one.line().Text = "Hi";
    Texts wanted = {forms[sub], "\"Hi\""};
    if (sub <= GetCount) wanted.push_back(limits[1]);
    EXPECT_EQ(TextsOf(one), wanted);
  }
}

TEST(PrintLine, AnEnteredValueIsScaledByTheAxis) {
  OneText one(MMI);
  one.program.Axis.StepsPerUnit[0] = 3000;
  one.line().SubType = GetDistance;
  EXPECT_EQ(TextsOf(one)[0], "MMI: Dist1(steps) = entry * 3000");
  one.line().SubType = GetSpeed;
  EXPECT_EQ(TextsOf(one)[0], "MMI: Dist1(rev/sec) = entry * 0.15");
  one.program.Axis.StepResCode[0] = 16;
  one.program.Axis.StepsPerRev[0] = 0;
  EXPECT_EQ(TextsOf(one)[0], "MMI: Dist1(rev/sec) = entry * 0");
}

TEST(PrintLine, LimitsPrintTheirFractionWithoutZerosBeforeIt) {
  OneText one(MMI);
  one.line().SubType = GetCount;
  one.line().UpperInt = 100;
  one.line().UpperFrac = 5000;
  one.line().LowerInt = -3;
  one.line().LowerFrac = 25;
  EXPECT_EQ(TextsOf(one)[2], "Upper limit = 100.5000.  Lower limit = -3.25.");
}

TEST(PrintLine, APromptThatWaitsAllowsJoggingOnEitherPairOfKeys) {
  for (const auto& [left_right, up_down] :
       {std::pair(false, false), std::pair(true, false), std::pair(false, true), std::pair(true, true)}) {
    for (std::int16_t sub = 0; sub <= Menu; ++sub) {
      OneText one(MMI);
      one.line().SubType = sub;
      one.line().JogLR = left_right;
      one.line().JogUD = up_down;
      one.line().JogOn = true;
      const bool told = TextsOf(one).back() == "Allow jogging on MMI arrow keys.";
      EXPECT_EQ(told, sub == WaitEnter && (left_right || up_down)) << sub;
    }
  }
}

TEST(PrintLine, AMenuNamesTheKeysInUse) {
  OneText one(MMI);
  one.line().SubType = Menu;
  for (int key = 1; key <= 8; ++key) one.line().MenuKey[key] = key == 2 || key == 8;
  one.line().MenuLine[2] = 199;
  EXPECT_EQ(TextsOf(one)[0], "MMI:  (menu), 2 = Line 200, 8 = Line 80");
  one.line().MenuKey = {};
  one.line().MenuKey[0] = true;
  EXPECT_EQ(TextsOf(one)[0], "MMI:  (menu)");
}

TEST(PrintLine, ASubTypeThatThereIsNotAddsNothingAndEndsItsRow) {
  for (const std::int16_t sub : {std::int16_t{-1}, std::int16_t{7}, std::int16_t{100}}) {
    OneText one(MMI);
    one.line().SubType = sub;
    one.line().Text = "Hi";
    EXPECT_EQ(TextsOf(one), (Texts{"MMI: ", "\"Hi\""})) << sub;
    one.line().Type = SS;
    EXPECT_EQ(TextsOf(one), (Texts{""})) << sub;
  }
}

TEST(PrintLine, StartOrStopBySubType) {
  ExpectLongTexts({{SS, [](Instruction& l) { l.SubType = 2; }, {"Axis 1: Stop"}},
                   {SS, [](Instruction& l) { l.SubType = 1; }, {"Axis 1: Change speed to, 2.0 rps"}},
                   {SS, [](Instruction& l) { l.SubType = 0; }, {"Stop all motion"}}});
}

TEST(PrintLine, CurrentsAndTheMotor) {
  ExpectLongTexts(
      {{ED, [](Instruction& l) { l.MotorOn = true; }, {"Axis 1: Resume normal motor current"}},
       {CC,
        [](Instruction& l) { l.Current = 5.25F, l.IdlePct = 3; },
        {"Axis 1: Change motor current to 5.25 A (100% idle)"}},
       {CC, [](Instruction& l) { l.IdlePct = 4; }, {"Axis 1: Change motor current to 1.00 A ( idle)"}}});
}

TEST(PrintLine, NumbersBeyondWhatThereIsPrintAsTheyAre) {
  ExpectLongTexts({{GT, [](Instruction& l) { l.LineNum = -5; }, {"Go To Line -4 "}},
                   {GT, [](Instruction& l) { l.LineNum = 32767; }, {"Go To Line 32768 "}},
                   {RP, [](Instruction& l) { l.Count = -1; }, {"Repeat -1 times"}},
                   {WT, [](Instruction& l) { l.Time = 30000; }, {"Wait Time 30 seconds"}},
                   {WT, [](Instruction& l) { l.Time = -5; }, {"Wait Time -.005 seconds"}},
                   {LP, [](Instruction& l) { l.DistVar = 50; }, {"Axis 1: Save abs position to "}}});
}

struct LongMultiRow {
  int in_mask;
  int in_state;
  int drv_mask;
  int drv_state;
  bool wait_and;
  std::string_view if_text;
  std::string_view wait_text;
};
constexpr LongMultiRow kLongMulti[] = {
    {0, 255, 0, 255, true, "Illegal Multi-If Input", "Illegal Multi-Wait Input"},
    {1, 1, 0, 0, true, "If input 1 high goto 6", "Wait for input 1 high."},
    {5, 0, 0, 0, true, "If input 1 and 3 low goto 6", "Wait for input 1 and 3 low."},
    {5, 0, 0, 0, false, "If input 1 or 3 low goto 6", "Wait for input 1 or 3 low."},
    {7, 5, 0, 0, true, "If input 1 and 3 high and 2 low goto 6", "Wait for input 1 and 3 high and 2 low."},
    {7, 5, 0, 0, false, "If input 1 or 3 high or 2 low goto 6", "Wait for input 1 or 3 high or 2 low."},
    {0, 0, 7, 7, false, "If input X0,X1,X2 high goto 6", "Wait for input X0,X1,X2 high."},
    {3, 3, 3, 3, false, "If input 1 or 2,X0,X1 high goto 6", "Wait for input 1 or 2,X0,X1 high."},
    {1, 1, 3, 2, true, "If input 1,X1 high and X0 low goto 6", "Wait for input 1,X1 high and X0 low."}};

TEST(SeveralInputsInFull, MainInputsAreJoinedByAWordAndTheDrivesOwnByAComma) {
  for (const LongMultiRow& row : kLongMulti) {
    OneText one(III);
    Instruction& line = one.line();
    line.InMask = static_cast<std::int16_t>(row.in_mask);
    line.InState = static_cast<std::int16_t>(row.in_state);
    line.DrvMask = static_cast<std::int16_t>(row.drv_mask);
    line.DrvState = static_cast<std::int16_t>(row.drv_state);
    line.WaitAND = row.wait_and;
    line.LineNum = 5;
    EXPECT_EQ(MultiIfLong(one.program, 0), row.if_text);
    EXPECT_EQ(MultiWaitLong(one.program, 0), row.wait_text);
    EXPECT_EQ(TextsOf(one), (Texts{"Axis 1: " + std::string(row.if_text)}));
    line.Type = WII;
    EXPECT_EQ(TextsOf(one), (Texts{"Axis 1: " + std::string(row.wait_text)}));
  }
}

TEST(PrintLine, TheOperatorsNameOfTheAxisStandsBeforeTheText) {
  for (const int type : {FL, FR, FS, FSR, SO, SH, FP, ED, SP, CC, III, FLSO, FLCS, WII, FSS, LP, IM, SS}) {
    OneText one(type);
    one.program.Axis.AxisName[0] = "Feeder";
    one.line().SubType = StopAxis;
    EXPECT_TRUE(TextsOf(one)[0].starts_with("Feeder: ")) << Mnemonic(type);
  }
}

TEST(PrintLine, AnyRecordPrintsAndNeverReadsOutOfRange) {
  std::mt19937 random(11);
  constexpr std::int16_t kIntegers[] = {-32768, -1, 0, 1, 2, 3, 4, 6, 7, 8, 49, 50, 127, 128, 200, 32767};
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
    line.SafetyDist = whole(), line.Accel = whole(), line.Decel = whole();
    line.UpperInt = whole(), line.UpperFrac = whole(), line.LowerInt = whole(), line.LowerFrac = whole();
    for (bool Instruction::*flag :
         {&Instruction::DistIsMMI, &Instruction::SpeedIsMMI, &Instruction::CountIsMMI,
          &Instruction::Dist2IsMMI, &Instruction::Speed2IsMMI}) {
      line.*flag = random() % 2 == 0;
    }
    line.Speed = random() % 4 == 0 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(whole());
    line.RetSpeed = line.Speed2 = random() % 4 == 0 ? std::numeric_limits<float>::infinity() : -1.0F;
    one.program.Axis.UseUnits[0] = random() % 2 == 0;
    one.program.Axis.StepsPerUnit[0] = random() % 3 == 0 ? 0 : whole();
    one.program.Axis.StepResCode[0] = integer();
    one.program.Axis.UnitName[0] = std::string(random() % 3, '\xff');
    for (const LongRow& row : PrintLine(one.program, static_cast<int>(random() % 50), 0)) {
      EXPECT_LT(AsPrinted(row).size(), 2000U);
    }
  }
}

}  // namespace
}  // namespace tavlo
