// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::Hex;
using testing::NewProgram;
using testing::OneLine;

TEST(CompileFlow, TheShortForms) {
  struct {
    int type;
    std::string_view hex;
  } const cases[] = {{NO, "0b"},
                     {RT, "1d"},
                     {WT, "041234"},
                     {GT, "0663"},
                     {CL, "1c63"},
                     {IM, "1e6305"},
                     {LP, "1b1105"},
                     {SP,
                      "11010102"
                      "0305"},
                     {ER, "086309"}};
  for (const auto& c : cases) {
    OneLine one(c.type);
    Instruction& line = one.line();
    line.Time = 0x1234;
    line.LineNum = 0x63;
    line.Drive = 5;
    line.DistVar = 0x11;
    line.Dir = 1;
    line.Dist = 0x010203;
    line.LoopIndex = 9;
    EXPECT_EQ(one.InHex(), c.hex) << c.type;
  }
}

TEST(CompileFlow, ATimeOf0InWTGoesOutAs0x000x01) {
  OneLine one(WT);
  one.line().Time = 0;
  EXPECT_EQ(one.Compiled(), Bytes({4, 0x00, 0x01}));
}

TEST(CompileFlow, AGoToThatDoesNotWaitStartsWith70) {
  OneLine one(GT);
  one.line().Proceed = true;
  EXPECT_EQ(one.Compiled(), Bytes({70, 0}));
}

TEST(CompileFlow, ResetLoopSendsTheLoopIndexOfTheLineThatLineNumNames) {
  OneLine one(RL);
  one.line().LineNum = 50;
  one.line().LoopIndex = 99;
  one.program.Prog[50].LoopIndex = 6;
  EXPECT_EQ(one.Compiled(), Bytes({25, 50, 6}));
}

TEST(CompileFlow, ALoopReferenceToLine200ReadsThe201stRecord) {
  OneLine one(RL);
  one.line().LineNum = 200;
  one.program.Prog[200].LoopIndex = 17;
  EXPECT_EQ(one.Compiled(), Bytes({25, 200, 17}));
}

TEST(CompileFlow, ALoopReferenceBeyondThatNeverReadsARecord) {
  struct Case {
    int target;
    /// Empty where the line has no bytes.
    std::string bytes;
  };
  for (const Case& c : {Case{201, Bytes({25, 201, 0})}, Case{255, Bytes({25, 255, 0})}, Case{256, {}},
                        Case{32767, {}}, Case{-1, {}}, Case{-32768, {}}}) {
    OneLine one(RL);
    for (Instruction& record : one.program.Prog) record.LoopIndex = 9;
    one.line().LineNum = static_cast<std::int16_t>(c.target);
    if (c.bytes.empty()) {
      EXPECT_THROW(static_cast<void>(one.Compiled()), EncodeError) << c.target;
    } else {
      EXPECT_EQ(one.Compiled(), c.bytes) << c.target;
    }
  }
}

TEST(CompileFlow, AnEndRepeatWithoutRepeatHasNoBytes) {
  OneLine one(ER);
  one.line().LineNum = 1000;
  EXPECT_THROW((void)one.Compiled(), EncodeError);
}

TEST(CompileFlow, EndRepeatOfALoopInheritsProceedFromItsRepeat) {
  Program program = NewProgram();
  program.Prog[0].Type = RP;
  program.Prog[1].Type = ER;
  for (const bool proceed : {false, true}) {
    program.Prog[0].Proceed = proceed;
    ScanLoops(program);
    StringPool pool;
    EXPECT_EQ(Compile(program, 0, pool)[0], proceed ? 7 + 64 : 7);
    EXPECT_EQ(Compile(program, 1, pool)[0], proceed ? 8 + 64 : 8);
  }
}

TEST(CompileFlow, RepeatHasItsFlagsCountAndOrdinal) {
  OneLine one(RP);
  Instruction& line = one.line();
  line.Count = 0x0102;
  line.LoopIndex = 3;
  line.DistVar = 36;
  EXPECT_EQ(one.InHex(), "0700010203");
  line.Dir = 1;
  EXPECT_EQ(one.InHex(), "0740010203");
  line.SpeedIsMMI = true;
  EXPECT_EQ(one.InHex(), "07c0010203");
  line.CountIsMMI = true;
  EXPECT_EQ(one.InHex(), "07c8240003");
  line.Dir = 0;
  line.SpeedIsMMI = line.CountIsMMI = false;
  line.Count = 0;
  EXPECT_EQ(one.InHex(), "0700000103");
}

TEST(CompileFlow, SetOutputPulsesInTicks) {
  struct {
    int time;
    int ticks;
  } const cases[] = {{3, 1},      {0, 1}, {5, 20}, {6, 33},     {7, 46},     {8, 58}, {10, 84},
                     {500, 6356}, {4, 7}, {1, 1},  {100, 1236}, {255, 3220}, {-5, 1}};
  for (const auto& c : cases) {
    OneLine one(SO);
    one.line().Time = c.time;
    one.line().IONum = 2;
    one.line().Drive = 4;
    for (const int state : {0, 1, 2, 3}) {
      one.line().State = static_cast<std::int16_t>(state);
      EXPECT_EQ(one.Compiled(), Bytes({9, 2, state, c.ticks / 256, c.ticks % 256, 4})) << c.time;
    }
  }
}

TEST(CompileFlow, IfInputMapsTheDrivesOwnInputs) {
  for (int input = 0; input < 136; ++input) {
    OneLine one(II);
    one.line().IONum = static_cast<std::int16_t>(input);
    one.line().LineNum = 30;
    one.line().Drive = 6;
    const int sent = input < 128 ? input : input == 128 ? 135 : input - 1;
    EXPECT_EQ(one.Compiled(), Bytes({10, sent, 1, 30, 6})) << input;
  }
}

TEST(CompileFlow, WaitInputUsesNoMapping) {
  for (const int input : {0, 127, 128, 129, 135}) {
    OneLine one(WI);
    one.line().IONum = static_cast<std::int16_t>(input);
    EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[1]), input);
  }
}

TEST(CompileFlow, WaitInputCarriesItsJog) {
  OneLine one(WI);
  Instruction& line = one.line();
  line.IONum = 3, line.State = 2, line.JogSpeed = 2.0F, line.JogAccel = 0x1234, line.Drive = 1;
  EXPECT_EQ(one.InHex(),
            "0503020000501234"
            "01");
  line.JogOn = true;
  EXPECT_EQ(one.InHex(),
            "0503020100501234"
            "01");
  line.JogSpeed = 0, line.JogAccel = 0;
  EXPECT_EQ(one.InHex(),
            "0503020100010001"
            "01");
}

struct MultiCase {
  float version;
  int model;
  bool wait_and;
  std::string_view tail;
};

TEST(CompileFlow, SeveralInputsByFirmwareAndDrive) {
  // InState 5, InMask 7, DrvState 3, DrvMask 0x0f; rotated 0x81 and 0x87.
  constexpr MultiCase kCases[] = {
      {1.08F, 1, true, "0103"},       {1.08F, 1, false, "0003"},      {1.08F, 11, true, "0103"},
      {0.0F, 20, false, "0003"},      {1.09F, 1, true, "01030000"},   {1.09F, 1, false, "0003ff00"},
      {1.38F, 30, true, "01030000"},  {1.38F, 10, false, "0003ff00"}, {1.09F, 11, true, "03038187"},
      {1.09F, 11, false, "02037e87"}, {1.38F, 13, true, "03038187"},  {1.38F, 17, true, "03038187"},
      {1.38F, 20, true, "03038187"},  {1.38F, 22, true, "03038187"},  {1.38F, 24, true, "03038187"},
      {1.38F, 27, true, "03038187"},  {1.38F, 21, true, "03038187"},  {1.38F, 23, true, "03038187"},
      {1.38F, 25, true, "03038187"},  {1.38F, 29, false, "02037e87"}};
  for (const MultiCase& c : kCases) {
    for (const int type : {III, WII}) {
      OneLine one(type);
      Instruction& line = one.line();
      line.InState = 5, line.InMask = 7, line.DrvState = 3, line.DrvMask = 0x0F;
      line.LineNum = 0x22, line.Drive = 3, line.WaitAND = c.wait_and;
      one.program.HubVersion = c.version;
      one.program.Axis.DriveModel[3] = static_cast<std::int16_t>(c.model);
      const std::string head = std::string(type == III ? "14" : "17") + (c.wait_and ? "05" : "fa") + "07" +
                               (type == III ? "22" : "");
      EXPECT_EQ(one.InHex(), head + std::string(c.tail)) << c.version << " on " << c.model;
    }
  }
}

TEST(CompileFlow, ResumeOrDisableSendsWholeAmperesRounded) {
  struct {
    float current;
    int amperes;
  } const cases[] = {{1.0F, 1}, {0.5F, 0}, {1.5F, 2}, {2.5F, 2}, {6.9F, 7}, {0.0F, 0}};
  for (const auto& c : cases) {
    OneLine one(ED);
    one.line().Current = c.current;
    one.line().IdlePct = 3;
    one.line().Drive = 2;
    EXPECT_EQ(one.Compiled(), Bytes({16, 0, c.amperes, 3, 2})) << c.current;
    one.line().MotorOn = true;
    EXPECT_EQ(one.Compiled(), Bytes({16, 1, c.amperes, 3, 2}));
  }
}

TEST(CompileFlow, ChangeCurrentCutsTheHundredths) {
  struct {
    float current;
    int whole;
    int hundredths;
  } const cases[] = {{1.3F, 1, 29},  {0.9F, 0, 89}, {1.0F, 1, 0}, {2.5F, 2, 50},
                     {5.25F, 5, 25}, {0.0F, 0, 0},  {7.1F, 7, 9}};
  for (const auto& c : cases) {
    OneLine one(CC);
    one.line().Current = c.current;
    one.line().Drive = 6;
    EXPECT_EQ(one.Compiled(), Bytes({19, c.whole, c.hundredths, 6})) << c.current;
  }
}

TEST(CompileFlow, ACommentOf26CharactersTakes28BytesOneOf27AsWell) {
  for (const std::size_t length : {0U, 1U, 25U, 26U, 27U}) {
    OneLine one(CM);
    one.line().Text = std::string(length, 'c');
    const std::string expected = "\x0d" + one.line().Text + (length < 27 ? "\xff" : "");
    EXPECT_EQ(one.Compiled(), expected) << length;
  }
  OneLine one(CM);
  one.line().Text = std::string(26, 'c');
  EXPECT_EQ(one.Compiled().size(), 28U);
  one.line().Text = std::string(27, 'c');
  EXPECT_EQ(one.Compiled().size(), 28U);
}

TEST(CompileFlow, ACommentThatIsTooLongIsSentAsItsFirst27Characters) {
  const std::string text = "abcdefghijklmnopqrstuvwxyz0123456789";
  for (const std::size_t length : {28U, 32U, 36U}) {
    OneLine one(CM);
    one.line().Text = text.substr(0, length);
    EXPECT_EQ(one.Compiled(),
              "\x0d"
              "abcdefghijklmnopqrstuvwxyz0")
        << length;
  }
}

TEST(CompileFlow, LinesWithoutAPromptLeaveThePoolAlone) {
  for (int type = 0; type < kTypes; ++type) {
    if (type == MMI || type == MMImenu) continue;
    OneLine one(type);
    one.line().Text = "text of another kind";
    (void)one.Compiled();
    EXPECT_EQ(one.pool.Pool, "") << type;
    EXPECT_EQ(one.pool.PoolPtr, 0) << type;
  }
}

}  // namespace
}  // namespace tavlo
