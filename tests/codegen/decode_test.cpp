// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/decode.h"

#include <gtest/gtest.h>

#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::NewProgram;

/// What stands behind a line in its slot is the hub's.
std::string Slot(std::initializer_list<int> bytes) {
  std::string slot = Bytes(bytes);
  slot.resize(kSlotBytes, '\x5A');
  return slot;
}

/// A record in which every field that a decoder sets holds something that no row below gives it.
Instruction Held() {
  Instruction line = NewProgram().Prog[0];
  line.Type = NO;
  line.Proceed = line.WaitThis = true;
  line.Drive = 6;
  line.LineNum = 77;
  line.LoopIndex = 9;
  line.Dir = 7;
  line.SubType = 12;
  line.Text = "held";
  line.IdlePct = 5;
  line.InState = line.InMask = line.DrvState = line.DrvMask = 0x3C;
  line.JogLRDrive = line.JogUDDrive = 6;
  line.DistIsMMI = line.SpeedIsMMI = line.Dist2IsMMI = line.Speed2IsMMI = line.CountIsMMI = true;
  line.Blank1 = line.Wrap1 = line.Blank2 = line.Wrap2 = line.Blank3 = line.Wrap3 = true;
  return line;
}

struct Row {
  const char* name;
  std::string slot;
  /// What becomes of a held record. The wait bits are cleared for every row.
  void (*expected)(Instruction&);
};

void NoVariables(Instruction& l) {
  l.DistIsMMI = l.SpeedIsMMI = false;
}

void FeedHead(Instruction& l) {
  NoVariables(l);
  l.Dir = 1, l.Speed = 2.5F, l.Accel = 250, l.Decel = 50, l.Dist = 0x010203;
}

void SetFlags(Instruction& l, bool first_four, bool last_two) {
  l.Wrap1 = l.Blank1 = l.Wrap2 = l.Blank2 = first_four;
  l.Wrap3 = l.Blank3 = last_two;
}

const std::vector<Row>& Rows() {
  static const std::vector<Row> kRows = {
      {"FL", Slot({0, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 4}),
       [](Instruction& l) { FeedHead(l), l.Type = FL, l.Drive = 4; }},
      {"FP", Slot({15, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 4}),
       [](Instruction& l) { FeedHead(l), l.Type = FP, l.Drive = 4; }},
      {"FL with both operands from variables keeps the numbers",
       Slot({0, 6, 30, 0, 0, 250, 0, 50, 7, 0, 0, 4}),
       [](Instruction& l) {
         l.Type = FL, l.Dir = 0, l.SpeedVar = 30, l.DistVar = 7, l.Accel = 250, l.Decel = 50, l.Drive = 4;
       }},
      {"FR", Slot({1, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 1, 144, 0, 150, 4}),
       [](Instruction& l) { FeedHead(l), l.Type = FR, l.RetSpeed = 10.0F, l.Time = 150, l.Drive = 4; }},
      {"FS", Slot({2, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 130, 2, 4}),
       [](Instruction& l) { FeedHead(l), l.Type = FS, l.IONum = 130, l.State = 2, l.Drive = 4; }},
      {"FSR", Slot({3, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 5, 3, 0, 20, 1, 0, 4}),
       [](Instruction& l) {
         FeedHead(l), l.Type = FSR, l.IONum = 5, l.State = 3, l.RetSpeed = 0.5F, l.Time = 256, l.Drive = 4;
       }},
      {"FSS", Slot({24, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 5, 0, 0, 117, 48, 199, 4}),
       [](Instruction& l) {
         FeedHead(l), l.Type = FSS, l.IONum = 5, l.State = 0, l.SafetyDist = 30000, l.LineNum = 199,
                      l.Drive = 4;
       }},
      {"FLSO", Slot({21, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 0, 39, 16, 2, 3, 255, 4}),
       [](Instruction& l) {
         FeedHead(l), l.Type = FLSO, l.Dist2 = 10000, l.IONum = 2, l.State = 3, l.Time = 255, l.Drive = 4;
         l.Dist2IsMMI = l.Speed2IsMMI = false;
       }},
      {"FLCS", Slot({22, 1, 0, 100, 0, 250, 0, 50, 1, 2, 3, 0, 39, 16, 0, 60, 4}),
       [](Instruction& l) {
         FeedHead(l), l.Type = FLCS, l.Dist2 = 10000, l.Speed2 = 1.5F, l.Drive = 4;
         l.Dist2IsMMI = l.Speed2IsMMI = false;
       }},
      {"SS", Slot({31, 1 + 4 + 32, 33, 0, 1, 244, 4}),
       [](Instruction& l) {
         l.Type = SS, l.Dir = 1, l.SubType = 2, l.SpeedIsMMI = true, l.SpeedVar = 33, l.Accel = 500, l.Drive = 4;
       }},
      {"SH", Slot({12, 1, 0, 100, 0, 250, 0, 50, 7, 1, 4}),
       [](Instruction& l) {
         l.Type = SH, l.Dir = 1, l.Speed = 2.5F, l.Accel = 250, l.Decel = 50, l.IONum = 7, l.State = 1, l.Drive = 4;
       }},
      {"WT", Slot({4, 117, 48}), [](Instruction& l) { l.Type = WT, l.Time = 30000; }},
      {"WI", Slot({5, 135, 1, 1, 0, 100, 0, 250, 4}),
       [](Instruction& l) {
         l.Type = WI, l.IONum = 135, l.State = 1, l.JogOn = true, l.JogSpeed = 2.5F, l.JogAccel = 250, l.Drive = 4;
       }},
      {"GT", Slot({6, 199}), [](Instruction& l) { l.Type = GT, l.LineNum = 199; }},
      {"CL", Slot({28, 150}), [](Instruction& l) { l.Type = CL, l.LineNum = 150; }},
      {"RP", Slot({7, 64 + 128, 3, 232, 44}),
       [](Instruction& l) { l.Type = RP, l.Dir = 1, l.SpeedIsMMI = true, l.CountIsMMI = false, l.Count = 1000; }},
      {"RP with its count from a variable", Slot({7, 8, 40, 0, 44}),
       [](Instruction& l) { l.Type = RP, l.Dir = 0, l.SpeedIsMMI = false, l.DistVar = 40; }},
      {"ER carries nothing", Slot({8, 12, 2}), [](Instruction& l) { l.Type = ER; }},
      {"NO carries nothing", Slot({11, 12, 2}), [](Instruction& l) { l.Type = NO; }},
      {"RT carries nothing", Slot({29, 12, 2}), [](Instruction& l) { l.Type = RT; }},
      {"IM has no reader", Slot({30, 12, 2}), [](Instruction& l) { l.Type = IM; }},
      {"SO", Slot({9, 1, 2, 0, 212, 4}),
       [](Instruction& l) { l.Type = SO, l.IONum = 1, l.State = 2, l.Time = 20, l.Drive = 4; }},
      {"II", Slot({10, 134, 0, 9, 4}),
       [](Instruction& l) { l.Type = II, l.IONum = 135, l.State = 0, l.LineNum = 9, l.Drive = 4; }},
      {"CM", Slot({13, 'C', 'u', 't', 255}), [](Instruction& l) { l.Type = CM, l.Text = "Cut"; }},
      {"CM of no characters", Slot({13, 255}), [](Instruction& l) { l.Type = CM, l.Text.clear(); }},
      {"ED", Slot({16, 1, 3, 2, 4}), [](Instruction& l) { l.Type = ED, l.MotorOn = true, l.Drive = 4; }},
      {"SP", Slot({17, 1, 0, 2, 3, 4}),
       [](Instruction& l) { l.Type = SP, l.Dir = 1, l.Dist = 0x0203, l.Drive = 4; }},
      {"FE", Slot({18, 1, 2, 16, 3}), [](Instruction& l) { l.Type = FE, l.IONum = 1, l.State = 2, l.Dist = 16; }},
      {"CC", Slot({19, 1, 29, 4}), [](Instruction& l) { l.Type = CC, l.Current = 1.29F, l.Drive = 4; }},
      {"RL", Slot({25, 100, 3}), [](Instruction& l) { l.Type = RL, l.LineNum = 100; }},
      {"LP", Slot({27, 15, 4}), [](Instruction& l) { l.Type = LP, l.DistVar = 15, l.Drive = 4; }},
      {"III", Slot({20, 3, 11, 40, 3, 4, 0x81, 0x03}),
       [](Instruction& l) {
         l.Type = III, l.InState = 3, l.InMask = 11, l.LineNum = 40, l.WaitAND = true, l.Drive = 4;
         l.DrvState = 0x03, l.DrvMask = 0x06;
       }},
      {"WII, any of them", Slot({23, 0xFE, 5, 2, 4, 0x7E, 0x80}),
       [](Instruction& l) {
         l.Type = WII, l.InState = 1, l.InMask = 5, l.WaitAND = false, l.Drive = 4;
         l.DrvState = 0x03, l.DrvMask = 0x01;
       }},
      {"display only", Slot({14, 3, 0, 3, 5}),
       [](Instruction& l) {
         l.Type = MMI, l.SubType = DisplayOnly, l.Text = "second";
         SetFlags(l, false, false), l.Wrap1 = l.Wrap2 = true;
       }},
      {"a value", Slot({14, 1, 0, 0, 10, 25, 0, 0, 1, 0, 7, 1, 0, 0, 19, 136, 4}),
       [](Instruction& l) {
         l.Type = MMI, l.SubType = GetSpeed, l.Text = "ab";
         SetFlags(l, false, false), l.Blank1 = l.Blank2 = true;
         l.DistVar = 25, l.LowerInt = 1, l.LowerFrac = 7, l.UpperInt = 65536, l.UpperFrac = 5000, l.Drive = 4;
       }},
      {"a value of a sub-type that there is not", Slot({14, 200, 0, 0, 0, 25, 0, 0, 1, 0, 7, 1, 0, 0, 19, 136, 4}),
       [](Instruction& l) {
         l.Type = MMI, l.SubType = 200, l.Text = "ab";
         SetFlags(l, false, false);
         l.DistVar = 25, l.LowerInt = 1, l.LowerFrac = 7, l.UpperInt = 65536, l.UpperFrac = 5000, l.Drive = 4;
       }},
      {"pause", Slot({14, 4, 0, 0, 0, 2, 0, 120, 1, 2, 133, 0, 40, 0, 7}),
       [](Instruction& l) {
         l.Type = MMI, l.SubType = WaitEnter, l.Text = "ab";
         SetFlags(l, false, true);
         l.JogLRDrive = 2, l.JogLR = true, l.JogLRSpeed = 3.0F, l.JogLRAccel = 258;
         l.JogUDDrive = 5, l.JogUD = false, l.JogUDSpeed = 1.0F, l.JogUDAccel = 7;
       }},
      {"branch", Slot({14, 5, 0, 0, 15, 199}),
       [](Instruction& l) {
         l.Type = MMI, l.SubType = BranchYesNo, l.Text = "ab", l.LineNum = 199;
         SetFlags(l, true, true);
       }},
      {"menu", Slot({26, 0, 3, 0x81, 1, 2, 3, 4, 5, 6, 7, 255, 0x30}),
       [](Instruction& l) {
         l.Type = MMI, l.SubType = Menu, l.Text = "second";
         l.MenuKey = {false, true, false, false, false, false, false, false, true};
         l.MenuLine = {0, 1, 2, 3, 4, 5, 6, 7, 255};
         SetFlags(l, false, true);
       }},
      {"a type that there is not", Slot({32, 1, 2, 3}), [](Instruction& l) { l.Type = 32; }},
      {"the last type that there is not", Slot({63, 1, 2, 3}), [](Instruction& l) { l.Type = 63; }},
  };
  return kRows;
}

constexpr std::string_view kPool{"ab\xFFsecond\xFFtail\0", 15};

Instruction Decoded(const Instruction& held, std::string_view slot, std::string_view pool = kPool,
                    float firmware = 1.38F, std::int16_t model = 0) {
  Program program = NewProgram();
  program.HubVersion = firmware;
  program.Axis.DriveModel.fill(model);
  program.Prog[50] = held;
  Decode(program, 50, slot, pool);
  return program.Prog[50];
}

TEST(Decode, EachLineSetsWhatItCarriesAndLeavesTheRest) {
  for (const Row& row : Rows()) {
    Instruction expected = Held();
    expected.Proceed = expected.WaitThis = false;
    row.expected(expected);
    EXPECT_TRUE(Decoded(Held(), row.slot) == expected) << row.name;
  }
}

TEST(Decode, BitSixIsProceedAndBitSevenWaitsForThisMove) {
  for (const Row& row : Rows()) {
    for (int bits = 0; bits < 4; ++bits) {
      std::string slot = row.slot;
      slot[0] = static_cast<char>(slot[0] + 64 * bits);
      const Instruction line = Decoded(Held(), slot);
      EXPECT_EQ(line.Proceed, (bits & 1) != 0) << row.name;
      EXPECT_EQ(line.WaitThis, (bits & 2) != 0) << row.name;
      EXPECT_EQ(line.Type, Decoded(Held(), row.slot).Type) << row.name;
    }
  }
}

TEST(Decode, TouchesNoOtherLine) {
  for (const Row& row : Rows()) {
    Program program = NewProgram();
    auto expected = program.Prog;
    Decode(program, 50, row.slot, kPool);
    expected[50] = program.Prog[50];
    EXPECT_TRUE(program.Prog == expected) << row.name;
  }
}

TEST(Decode, AnIndexInputOfAnOldServoIsInput128AndOfAnyOtherDriveStays255) {
  const std::string head = Bytes({0, 0, 100, 0, 250, 0, 50});
  const std::string feed = head + Bytes({1, 2, 3, 255});
  std::vector<std::string> slots = {
      Bytes({FS}) + feed + Bytes({0, 4}), Bytes({FSR}) + feed + Bytes({0, 0, 1, 0, 1, 4}),
      Bytes({FSS}) + feed + Bytes({0, 0, 0, 1, 7, 4}), Bytes({SH}) + head + Bytes({255, 0, 4})};
  for (std::string& slot : slots) {
    slot.resize(kSlotBytes);
    for (const int model : {8, 9}) {
      EXPECT_EQ(Decoded(Held(), slot, kPool, 1.38F, static_cast<std::int16_t>(model)).IONum, 128);
    }
    for (const int model : {0, 1, 7, 10, 11}) {
      EXPECT_EQ(Decoded(Held(), slot, kPool, 1.38F, static_cast<std::int16_t>(model)).IONum, 255);
    }
    // An axis that there is not has no drive.
    std::string strange = slot;
    strange[slot[0] == FS ? 13 : slot[0] == SH ? 10 : 17] = '\xC8';
    EXPECT_EQ(Decoded(Held(), strange, kPool, 1.38F, 8).IONum, 255);
  }
  EXPECT_EQ(Decoded(Held(), Slot({WI, 255, 0, 0, 0, 1, 0, 1, 4}), kPool, 1.38F, 8).IONum, 255);
}

TEST(Decode, TheInputOfATestIsRotatedBackAndThatOfAWaitIsNot) {
  struct Case {
    int byte;
    int input;
  };
  for (const Case& c : {Case{0, 0}, {127, 127}, {128, 129}, {134, 135}, {135, 128}, {136, 137}, {255, 256}}) {
    EXPECT_EQ(Decoded(Held(), Slot({II, c.byte, 0, 0, 0})).IONum, c.input);
    EXPECT_EQ(Decoded(Held(), Slot({WI, c.byte, 0, 0, 0, 1, 0, 1, 0})).IONum, c.byte);
  }
}

TEST(Decode, APulseIsTheNearestTimeThatTheTicksCanHold) {
  struct Case {
    int ticks;
    int ms;
  };
  for (const Case& c : {Case{0, 3}, {1, 4}, {7, 4}, {20, 5}, {6356, 500}, {32723, 2560}}) {
    EXPECT_EQ(Decoded(Held(), Slot({SO, 1, 2, c.ticks / 256, c.ticks % 256, 4})).Time, c.ms) << c.ticks;
  }
}

TEST(Decode, APulseWhoseSumWithTheHubsOwnTicksPasses32767Fails) {
  for (const int ticks : {32724, 32767, 32768, 65535}) {
    EXPECT_THROW(static_cast<void>(Decoded(Held(), Slot({SO, 1, 2, ticks / 256, ticks % 256, 4}))),
                 DecodeError)
        << ticks;
  }
}

TEST(Decode, ACurrentIsWholeAndHundredths) {
  EXPECT_EQ(Decoded(Held(), Slot({CC, 0, 0, 4})).Current, 0.0F);
  EXPECT_EQ(Decoded(Held(), Slot({CC, 7, 50, 4})).Current, 7.5F);
  EXPECT_EQ(Decoded(Held(), Slot({CC, 255, 255, 4})).Current, 257.55F);
}

TEST(Decode, OldFirmwareSaysNothingOfADrivesOwnInputs) {
  for (const float firmware : {0.0F, 1.05F, 1.08F}) {
    const Instruction line = Decoded(Held(), Slot({WII, 3, 5, 1, 4, 0x7E, 0x80}), kPool, firmware);
    EXPECT_EQ(line.DrvState, 0x3C);
    EXPECT_EQ(line.DrvMask, 0x3C);
    EXPECT_EQ(line.Drive, 4);
  }
  EXPECT_EQ(Decoded(Held(), Slot({WII, 3, 5, 1, 4, 0x7E, 0x80}), kPool, 1.09F).DrvMask, 1);
}

TEST(Decode, ZeroInEverySpeedTimeAndCountReadsAsZero) {
  EXPECT_EQ(Decoded(Held(), Slot({WT, 0, 0})).Time, 0);
  EXPECT_EQ(Decoded(Held(), Slot({FL, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})).Speed, 0.0F);
}

TEST(Decode, ATextRunsFromItsOffsetToTheNextEndMark) {
  struct Case {
    int offset;
    std::string text;
  };
  const std::string tail("tail\0", 5);
  for (const Case& c : {Case{0, "ab"},
                        {1, "b"},
                        {2, ""},
                        {3, "second"},
                        {9, ""},
                        {10, tail},
                        {14, {"\0", 1}},
                        {15, ""},
                        {16, ""},
                        {65535, ""}}) {
    EXPECT_EQ(Decoded(Held(), Slot({MMI, 3, c.offset / 256, c.offset % 256, 0})).Text, c.text) << c.offset;
  }
  EXPECT_EQ(Decoded(Held(), Slot({MMI, 3, 0, 0, 0}), "").Text, "");
}

TEST(Decode, FewerBytesThanASlotCountAsIfZerosStoodBehindThem) {
  for (const Row& row : Rows()) {
    for (std::size_t length = 0; length < kSlotBytes; ++length) {
      const std::string cut = row.slot.substr(0, length);
      std::string padded = cut;
      padded.resize(kSlotBytes, '\0');
      EXPECT_TRUE(Decoded(Held(), cut) == Decoded(Held(), padded)) << row.name << ' ' << length;
    }
  }
}

}  // namespace
}  // namespace tavlo
