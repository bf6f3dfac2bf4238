// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/kinds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

namespace tavlo {
namespace {

template <class Test>
std::vector<int> KindsThat(Test test) {
  std::vector<int> types;
  for (const Kind& kind : kKinds) {
    if (test(kind)) types.push_back(kind.type);
  }
  return types;
}

using Types = std::vector<int>;

struct TypeRow {
  int code;
  int enumerator;
  std::string_view mnemonic;
};
constexpr TypeRow kTypeRows[] = {{0, FL, "FL"},    {1, FR, "FR"},      {2, FS, "FS"},        {3, FSR, "FSR"},
                                 {4, WT, "WT"},    {5, WI, "WI"},      {6, GT, "GT"},        {7, RP, "RP"},
                                 {8, ER, "ER"},    {9, SO, "SO"},      {10, II, "II"},       {11, NO, "NO"},
                                 {12, SH, "SH"},   {13, CM, "CM"},     {14, MMI, "MMI"},     {15, FP, "FP"},
                                 {16, ED, "ED"},   {17, SP, "SP"},     {18, FE, "FE"},       {19, CC, "CC"},
                                 {20, III, "III"}, {21, FLSO, "FLSO"}, {22, FLCS, "FLCS"},   {23, WII, "WII"},
                                 {24, FSS, "FSS"}, {25, RL, "RL"},     {26, MMImenu, "MMI"}, {27, LP, "LP"},
                                 {28, CL, "CL"},   {29, RT, "RT"},     {30, IM, "IM"},       {31, SS, "SS"}};

TEST(Kinds, EveryCodeHasItsMnemonic) {
  int code = 0;
  for (const TypeRow& row : kTypeRows) {
    EXPECT_EQ(row.code, code);
    EXPECT_EQ(row.enumerator, row.code) << row.mnemonic;
    EXPECT_EQ(Mnemonic(row.code), row.mnemonic);
    ++code;
  }
  EXPECT_EQ(code, kTypes) << "a kind of line has no row in this table";
}

TEST(Kinds, ACodeOutsideTheTableHasNoMnemonic) {
  for (const int code : {-1, 32, 100, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(Mnemonic(code), "?");
  }
}

TEST(Kinds, MovesRunAnAxisToAnEndAndPassiveLinesRunBy) {
  EXPECT_EQ(KindsThat([](const Kind& k) { return IsMove(k.type); }),
            (Types{FL, FR, FS, FSR, SH, FP, FLSO, FLCS, FSS}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return IsPassive(k.type); }), (Types{WT, SO, NO, CM, MMI, IM}));
  for (const int type : {-2, -1, 32, 39, 1000}) EXPECT_FALSE(IsMove(type) || IsPassive(type)) << type;
}

TEST(Kinds, MovesJumpsTestsAndLoopsMayGoOn) {
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.may_go_on; }),
            (Types{FL, FR, FS, FSR, GT, RP, ER, II, SH, FP, FLSO, FLCS, FSS}));
}

TEST(Kinds, LinesLeadOnAsTheArrowsShow) {
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.lead == Lead::Jump; }), (Types{GT, CL}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.lead == Lead::Branch; }), (Types{II, III, FSS, IM}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.lead == Lead::LoopEnd; }), (Types{ER}));
}

TEST(Kinds, ALineThatTheOperatorNamedFollowsOthersStay) {
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.names_line; }), (Types{GT, II, III, RL, CL, IM}));
}

TEST(Kinds, OnlyTheYesNoFormOfAPromptBranches) {
  Instruction line;
  line.Type = MMI;
  for (std::int16_t sub = -1; sub <= Menu + 1; ++sub) {
    line.SubType = sub;
    EXPECT_EQ(LeadOf(line) == Lead::Branch, sub == BranchYesNo) << sub;
    EXPECT_EQ(NamesLine(line), sub == BranchYesNo) << sub;
    EXPECT_EQ(IsValuePrompt(line), sub >= GetDistance && sub <= GetCount) << sub;
  }
  line.Type = MMImenu;
  line.SubType = BranchYesNo;
  EXPECT_EQ(LeadOf(line), Lead::Next);
}

TEST(Kinds, OperandsComeFromVariablesOfTheirOwn) {
  struct {
    Types types;
    int operands;
  } const cases[] = {{{FL, FR, FS, FSR, FP, FSS}, OfDist + OfSpeed},
                     {{FLSO}, OfDist + OfSpeed + OfDist2},
                     {{FLCS}, OfDist + OfSpeed + OfDist2 + OfSpeed2},
                     {{RP}, OfCount}};
  Types all;
  for (const auto& c : cases) {
    for (const int type : c.types) EXPECT_EQ(KindOf(type).operands, c.operands) << Mnemonic(type);
    all.insert(all.end(), c.types.begin(), c.types.end());
  }
  std::ranges::sort(all);
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.operands != 0; }), all);
}

TEST(Kinds, AnOperandIsTakenFromAVariableWhereItsFlagSaysSoAndTheKindHasIt) {
  for (const OperandRow& row : kOperands) {
    Instruction line;
    line.Type = row.operand == OfCount ? RP : FLCS;
    EXPECT_FALSE(TakesFromVariable(line, row));
    line.*row.from_variable = true;
    EXPECT_TRUE(TakesFromVariable(line, row));
    line.Type = WT;
    EXPECT_FALSE(TakesFromVariable(line, row));
  }
}

TEST(Kinds, AxesAreNamedByAllButThoseThatNeedNone) {
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.axis == AxisUse::None; }),
            (Types{WT, GT, RP, ER, NO, CM, RL, CL, RT}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.axis == AxisUse::DriveOrHub; }),
            (Types{WI, SO, II, III, WII}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.axis == AxisUse::Prompt; }), (Types{MMI}));
  EXPECT_EQ(KindOf(99).axis, AxisUse::Drive);
}

TEST(Kinds, TheTerminalIsNeededByPromptsAndByOldLinesWithTheirFlag) {
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.terminal == Terminal::Always; }), (Types{MMI}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.terminal == Terminal::ByFlag; }), (Types{WI, II, FE}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.screen_text; }), (Types{MMI}));
}

TEST(Kinds, InputsAndOutputsAreNamedByThoseThatUseThem) {
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.io == IOUse::Input; }),
            (Types{FS, FSR, WI, II, SH, FE, FSS}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.io == IOUse::Inputs; }), (Types{III, WII}));
  EXPECT_EQ(KindsThat([](const Kind& k) { return k.io == IOUse::Output; }), (Types{SO, FLSO}));
}

TEST(Kinds, ALineThatAsksTheTerminalNamesNoInput) {
  for (const int type : {WI, II, FE, FS, SO, III, MMI}) {
    Instruction line;
    line.Type = static_cast<std::int16_t>(type);
    EXPECT_FALSE(AsksTerminal(line)) << type;
    EXPECT_EQ(IOUseOf(line), KindOf(type).io) << type;
    line.CountIsMMI = true;
    const bool asks = type == WI || type == II || type == FE;
    EXPECT_EQ(AsksTerminal(line), asks) << type;
    EXPECT_EQ(IOUseOf(line), asks ? IOUse::None : KindOf(type).io) << type;
  }
}

TEST(Kinds, VariablesAreFilledByPromptsForAValueAndByLearnedPositions) {
  for (int type = -1; type <= kTypes; ++type) {
    for (std::int16_t sub = -1; sub <= Menu + 1; ++sub) {
      Instruction line;
      line.Type = static_cast<std::int16_t>(type);
      line.SubType = sub;
      EXPECT_EQ(FillsVariable(line), type == LP || (type == MMI && sub >= 0 && sub <= 2))
          << type << '/' << sub;
    }
  }
}

}  // namespace
}  // namespace tavlo
