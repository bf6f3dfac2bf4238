// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "codegen/one_line.h"
#include "model/kinds.h"

namespace tavlo {
namespace {

using testing::Hex;
using testing::NewProgram;

struct GoldenLine {
  int type;
  void (*fill)(Instruction&);
  std::string_view hex;
};

/// One line of each type as an operator would make it, its bytes worked out by hand.
constexpr GoldenLine kGolden[] = {
    // 2.5 rev/s = 100, 250 rev/s/s, 50 rev/s/s, 40000 steps, axis 2
    {FL, [](Instruction& l) { l.Dist = 40000, l.Speed = 2.5F, l.Accel = 250, l.Decel = 50, l.Drive = 1; },
     "0000006400fa0032009c4001"},
    // back at 10 rev/s = 400 after 1.5 s
    {FR, [](Instruction& l) { l.Dir = 1, l.RetSpeed = 10.0F, l.Time = 150; },
     "0101007800640064004e200190009600"},
    // until input 3 rises
    {FS, [](Instruction& l) { l.IONum = 2, l.State = 2, l.Drive = 3, l.WaitThis = true; },
     "8200007800640064004e20020203"},
    {FSR,
     [](Instruction& l) { l.IONum = 130, l.State = 0, l.RetSpeed = 0.5F, l.Time = 0, l.DistIsMMI = true; },
     "030200780064006400000082000014000100"},
    {WT, [](Instruction& l) { l.Time = 30000; }, "047530"},
    {WI, [](Instruction& l) { l.IONum = 4, l.State = 1, l.JogOn = true, l.Drive = 6; }, "050401010028006406"},
    {GT, [](Instruction& l) { l.LineNum = 199, l.Proceed = true; }, "46c7"},
    {RP, [](Instruction& l) { l.Count = 1000, l.Dir = 1, l.LoopIndex = 0; }, "074003e800"},
    {ER, [](Instruction& l) { l.LineNum = 12, l.LoopIndex = 2; }, "080c02"},
    // 20 ms: 256 ticks less 44
    {SO, [](Instruction& l) { l.IONum = 1, l.State = 2, l.Time = 20, l.Drive = 4; }, "09010200d404"},
    {II, [](Instruction& l) { l.IONum = 128, l.State = 0, l.LineNum = 9, l.Drive = 2; }, "0a87000902"},
    {NO, [](Instruction&) {}, "0b"},
    {SH, [](Instruction& l) { l.Dir = 1, l.IONum = 5, l.State = 1, l.Speed = 0.5F; },
     "0c010014006400640501"
     "00"},
    {CM, [](Instruction& l) { l.Text = "Cut"; }, "0d437574ff"},
    {MMI, [](Instruction& l) { l.SubType = 1, l.DistVar = 25, l.UpperFrac = 5000, l.Drive = 2; },
     "0e0100000019000001000000003213"
     "8802"},
    {FP, [](Instruction& l) { l.Dist = 500, l.Dir = 1, l.SpeedIsMMI = true; }, "0f051900006400640001f400"},
    {ED, [](Instruction& l) { l.MotorOn = true, l.Current = 3.0F, l.IdlePct = 2, l.Drive = 1; },
     "1001030201"},
    {SP, [](Instruction& l) { l.Dist = 0, l.Drive = 5; }, "110000000005"},
    {FE, [](Instruction& l) { l.IONum = 1, l.State = 0, l.Dist = 16, l.Drive = 3; }, "1201001003"},
    {CC, [](Instruction& l) { l.Current = 1.3F, l.Drive = 7; }, "13011d07"},
    // firmware 1.38: extra bytes; a plain stepper has none of its own
    {III, [](Instruction& l) { l.InState = 3, l.InMask = 11, l.LineNum = 40, l.Drive = 1; },
     "14030b2801010000"},
    {FLSO, [](Instruction& l) { l.IONum = 1, l.State = 3, l.Time = 300, l.Drive = 2; },
     "1500007800640064004e2000271001"
     "03ff02"},
    {FLCS, [](Instruction& l) { l.Speed2IsMMI = true, l.Speed2Var = 27; },
     "1620007800640064004e200027101b0000"},
    {WII, [](Instruction& l) { l.InState = 1, l.InMask = 5, l.WaitAND = false, l.Drive = 1; },
     "17fe050001ff00"},
    {FSS, [](Instruction& l) { l.IONum = 0, l.State = 3, l.SafetyDist = 30000, l.LineNum = 60; },
     "1800007800640064004e20000300"
     "75303c00"},
    {RL, [](Instruction& l) { l.LineNum = 100; }, "196403"},
    {MMImenu, [](Instruction& l) { l.SubType = 6; }, "1a00000f09131d27313b454f00"},
    {LP, [](Instruction& l) { l.DistVar = 15, l.Drive = 6; }, "1b0f06"},
    {CL, [](Instruction& l) { l.LineNum = 150; }, "1c96"},
    {RT, [](Instruction&) {}, "1d"},
    {IM, [](Instruction& l) { l.LineNum = 3, l.Drive = 4; }, "1e0304"},
    {SS, [](Instruction& l) { l.SubType = 1, l.Speed = 12.5F, l.Accel = 500, l.Drive = 3; },
     "1f1001f401f403"}};

TEST(GoldenLines, ThereIsOneOfEachType) {
  int type = 0;
  for (const GoldenLine& golden : kGolden) EXPECT_EQ(golden.type, type++);
  EXPECT_EQ(type, kTypes) << "a kind of line has no bytes here that were worked out by hand";
}

TEST(GoldenLines, EachTypeCompilesToTheBytesWorkedOutByHand) {
  for (const GoldenLine& golden : kGolden) {
    Program program = NewProgram();
    program.HubVersion = 1.38F;
    program.Prog[100].Type = RP;
    program.Prog[100].LoopIndex = 3;
    program.Prog[50].Type = static_cast<std::int16_t>(golden.type);
    golden.fill(program.Prog[50]);
    StringPool pool;
    EXPECT_EQ(Hex(Compile(program, 50, pool)), golden.hex) << Mnemonic(golden.type);
  }
}

}  // namespace
}  // namespace tavlo
