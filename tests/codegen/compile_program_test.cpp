// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <random>

#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::Hex;
using testing::NewProgram;
using testing::OneLine;

TEST(CompileProgram, AnEmptyProgramIs200OneByteLines256BytesAndAPoolOfOneByte) {
  Program program = NewProgram();
  const CompiledProgram compiled = CompileProgram(program);
  for (const std::string& line : compiled.lines) EXPECT_EQ(line, Bytes({11}));
  EXPECT_EQ(compiled.system.size(), 256U);
  EXPECT_EQ(compiled.pool, Bytes({0}));
}

TEST(CompileProgram, WhatTheTuningOfADriveKeepsInALineGoesToNoHub) {
  Program program = NewProgram();
  for (int i = 0; i < kLines; ++i) program.Prog[i].Type = static_cast<std::int16_t>(i % kTypes);
  ScanLoops(program);
  Program tuned = program;
  for (Instruction& line : tuned.Prog) {
    line.KP = line.KI = line.KD = line.KAFF = line.KV = line.KVFF = 32000;
    line.Acont = line.Apeak = 4.5F;
    line.ChangesKP = line.ChangesKI = line.ChangesKD = line.ChangesKAFF = line.ChangesKV = true;
    line.ChangesKVFF = line.ChangesAcont = line.ChangesApeak = true;
  }
  EXPECT_EQ(ImageOf(CompileProgram(tuned)), ImageOf(CompileProgram(program)));
}

TEST(CompileProgram, TheChecksumIsTheLow16BitsOfEveryByteSent) {
  Program program = NewProgram();
  for (int i = 0; i < kLines; ++i) {
    program.Prog[static_cast<std::size_t>(i)].Type = i % 2 == 0 ? CM : MMI;
    program.Prog[static_cast<std::size_t>(i)].Text = std::string(7, '\xfe');
  }
  const CompiledProgram compiled = CompileProgram(program);
  long sum = 0;
  for (const std::string& line : compiled.lines) sum += SumStr(line);
  sum += SumStr(compiled.system) + SumStr(compiled.pool);
  EXPECT_GT(sum, 65536);
  EXPECT_EQ(compiled.checksum, sum % 65536);
}

TEST(CompileProgram, RunsScanLoopsFirst) {
  Program program = NewProgram();
  program.Prog[4].Type = RP;
  program.Prog[9].Type = ER;
  program.Prog[9].LineNum = 77;
  const CompiledProgram compiled = CompileProgram(program);
  EXPECT_EQ(compiled.lines[9], Bytes({8, 4, 0}));
}

TEST(CompileProgram, ThePoolIsInLineOrderWithAFinalZero) {
  Program program = NewProgram();
  program.Prog[150].Type = program.Prog[2].Type = MMI;
  program.Prog[150].Text = "second";
  program.Prog[2].Text = "first";
  const CompiledProgram compiled = CompileProgram(program);
  EXPECT_EQ(compiled.pool, std::string("first\xffsecond\xff\0", 14));
  EXPECT_EQ(compiled.lines[150].substr(2, 2), Bytes({0, 6}));
}

std::string MessageOf(const std::function<void(Program&)>& spoil) {
  Program program = NewProgram();
  spoil(program);
  try {
    (void)CompileProgram(program);
  } catch (const EncodeError& error) {
    return error.what();
  }
  return "";
}

TEST(CompileProgram, ALineThatCannotBeEncodedIsToldWithItsNumberAndReason) {
  struct {
    int line;
    std::function<void(Instruction&)> spoil;
  } const cases[] = {{0, [](Instruction& l) { l.Type = FL, l.Dist = -1; }},
                     {41, [](Instruction& l) { l.Type = FL, l.Speed = -0.5F; }},
                     {41, [](Instruction& l) { l.Type = ER; }},
                     {199, [](Instruction& l) { l.Type = GT, l.LineNum = 256; }},
                     {9, [](Instruction& l) { l.Type = GT, l.LineNum = -1; }},
                     {9, [](Instruction& l) { l.Type = SO, l.IONum = 256; }},
                     {9, [](Instruction& l) { l.Type = FL, l.Drive = -1; }},
                     {9, [](Instruction& l) { l.Type = FL, l.Drive = 300; }},
                     {9, [](Instruction& l) { l.Type = MMI, l.SubType = -1; }},
                     {9, [](Instruction& l) { l.Type = SS, l.SubType = 100; }},
                     {9, [](Instruction& l) { l.Type = CC, l.Current = -1; }},
                     {9, [](Instruction& l) { l.Type = 32; }},
                     {9, [](Instruction& l) { l.Type = -1; }},
                     {9, [](Instruction& l) { l.Type = FE, l.CountIsMMI = l.WaitThis = l.Proceed = true; }}};
  for (const auto& c : cases) {
    const std::string message =
        MessageOf([&c](Program& program) { c.spoil(program.Prog[static_cast<std::size_t>(c.line)]); });
    const std::string head = "Line " + std::to_string(c.line + 1) + " cannot be compiled: ";
    EXPECT_EQ(message.substr(0, head.size()), head);
    EXPECT_GT(message.size(), head.size() + 4);
    EXPECT_EQ(message.empty() ? ' ' : message.back(), '.') << message;
    EXPECT_EQ(message.find(".."), std::string::npos) << message;
  }
}

TEST(CompileProgram, ATextWhoseEndTheHubWouldMistakeIsRefused) {
  struct {
    int type;
    std::string text;
    bool refused;
  } const cases[] = {{CM, "a\xff", true},
                     {CM, std::string(28, 'c'), false},
                     {CM, std::string(27, 'c') + '\xff', true},
                     {CM, std::string(27, 'c'), false},
                     {CM, std::string(1, '\0'), true},
                     {CM, std::string("a\0b", 3), true},
                     {CM, std::string(26, 'c') + '\0', false},
                     {CM, std::string(23, 'c') + std::string(4, '\0'), false},
                     {CM, std::string(19, 'c') + std::string(8, '\0'), false},
                     {CM, std::string(23, 'c') + std::string("\0c\0c", 4), false},
                     {CM, std::string(22, 'c') + std::string(4, '\0'), true},
                     {CM, "c" + std::string(1, '\0') + std::string(25, 'c'), true},
                     {CM, std::string(21, 'c') + '\0' + std::string(5, 'c'), true},
                     {CM, '\0' + std::string(26, 'c'), true},
                     {FE, "\xff", true},
                     {FE, std::string("turn\0it", 7), true},
                     {FE, "turn it by hand", false},
                     {MMI, std::string("a\0b", 3), true},
                     {MMImenu, std::string("a\0b", 3), true},
                     {MMI, std::string(80, 'm'), false}};
  for (const auto& c : cases) {
    const std::string message = MessageOf([&c](Program& program) {
      program.Prog[7].Type = static_cast<std::int16_t>(c.type);
      program.Prog[7].CountIsMMI = true;
      program.Prog[7].Text = c.text;
    });
    EXPECT_EQ(message.substr(0, 27), c.refused ? "Line 8 cannot be compiled: " : "")
        << c.type << " " << c.text;
  }
}

TEST(CompileProgram, ATextThatDoesNotGoOutMayHoldAnything) {
  struct {
    int type;
    bool flag;
  } const cases[] = {{RP, true}, {WT, true}, {FE, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(MessageOf([&c](Program& program) {
                program.Prog[7].Type = static_cast<std::int16_t>(c.type);
                program.Prog[7].CountIsMMI = c.flag;
                program.Prog[7].Text = std::string("\0\xff", 2);
              }),
              "")
        << c.type;
  }
}

TEST(ImageOf, LinesStandInSlotsOf32SystemAt6400PoolAt6656) {
  Program program = NewProgram();
  program.Prog[0].Type = FL;
  program.Prog[199].Type = MMI;
  program.Prog[199].Text = "End";
  const CompiledProgram compiled = CompileProgram(program);
  const std::string image = ImageOf(compiled);
  ASSERT_EQ(image.size(), 8192U);
  EXPECT_EQ(kImageBytes, 8192);
  for (std::size_t i = 0; i < 200; ++i) {
    std::string slot = compiled.lines[i];
    slot.resize(32, '\0');
    EXPECT_EQ(image.substr(i * 32, 32), slot) << i;
  }
  EXPECT_EQ(image.substr(6400, 256), compiled.system);
  EXPECT_EQ(image.substr(6656, 5), std::string("End\xff\0", 5));
  EXPECT_EQ(image.substr(6661), std::string(1536 - 5, '\0'));
}

TEST(ImageOf, WhatIsLongerThanItsPlaceIsCut) {
  CompiledProgram compiled;
  compiled.lines[0] = std::string(40, 'x');
  compiled.lines[1] = "y";
  compiled.system = std::string(300, 's');
  compiled.pool = std::string(2000, 'p');
  const std::string image = ImageOf(compiled);
  ASSERT_EQ(image.size(), 8192U);
  EXPECT_EQ(image[31], 'x');
  EXPECT_EQ(image[32], 'y');
  EXPECT_EQ(image[6655], 's');
  EXPECT_EQ(image[6656], 'p');
  EXPECT_EQ(image[8191], 'p');
}

constexpr std::int32_t kLongs[] = {std::numeric_limits<std::int32_t>::min(), -1, 0, 1, 255, 256, 65536,
                                   std::numeric_limits<std::int32_t>::max()};
constexpr std::int16_t kIntegers[] = {-32768, -1,  0,   1,   8,   9,   49,  50,   127,
                                      128,    135, 199, 200, 201, 255, 256, 32767};

/// Compiles or throws EncodeError; says whether it compiled.
bool CompilesOrRefuses(Program& program) {
  StringPool pool;
  try {
    const std::string bytes = Compile(program, 0, pool);
    EXPECT_FALSE(bytes.empty());
    return true;
  } catch (const EncodeError& error) {
    EXPECT_NE(std::string(error.what()), "");
    return false;
  }
}

TEST(CompileExtremes, EveryFieldOfEveryTypeAtEveryExtremeEncodesOrIsRefused) {
  std::int32_t Instruction::*const longs[] = {
      &Instruction::Dist,       &Instruction::Dist2,     &Instruction::SafetyDist, &Instruction::Accel,
      &Instruction::Decel,      &Instruction::Time,      &Instruction::Count,      &Instruction::UpperInt,
      &Instruction::UpperFrac,  &Instruction::LowerInt,  &Instruction::LowerFrac,  &Instruction::JogAccel,
      &Instruction::JogLRAccel, &Instruction::JogUDAccel};
  std::int16_t Instruction::*const integers[] = {
      &Instruction::Dir,        &Instruction::State,    &Instruction::LineNum,  &Instruction::IONum,
      &Instruction::SubType,    &Instruction::DistVar,  &Instruction::SpeedVar, &Instruction::Dist2Var,
      &Instruction::Speed2Var,  &Instruction::InState,  &Instruction::InMask,   &Instruction::DrvState,
      &Instruction::DrvMask,    &Instruction::IdlePct,  &Instruction::Drive,    &Instruction::JogLRDrive,
      &Instruction::JogUDDrive, &Instruction::LoopIndex};
  float Instruction::*const singles[] = {
      &Instruction::Speed,    &Instruction::Speed2,     &Instruction::RetSpeed,  &Instruction::Current,
      &Instruction::JogSpeed, &Instruction::JogLRSpeed, &Instruction::JogUDSpeed};
  constexpr float kSingles[] = {std::numeric_limits<float>::quiet_NaN(),
                                std::numeric_limits<float>::infinity(),
                                -std::numeric_limits<float>::infinity(),
                                std::numeric_limits<float>::max(),
                                -std::numeric_limits<float>::max(),
                                std::numeric_limits<float>::denorm_min(),
                                -1.0F,
                                -0.0F,
                                256.0F};
  int refused = 0;
  for (int type = -1; type <= kTypes; ++type) {
    for (int form = 0; form < 16; ++form) {
      Program fresh = NewProgram();
      fresh.HubVersion = (form & 1) != 0 ? 1.38F : 1.0F;
      Instruction& line = fresh.Prog[0];
      line.Type = static_cast<std::int16_t>(type);
      line.SubType = static_cast<std::int16_t>(form % 7);
      line.DistIsMMI = line.SpeedIsMMI = line.CountIsMMI = (form & 2) != 0;
      line.Dist2IsMMI = line.Speed2IsMMI = (form & 4) != 0;
      line.WaitAND = (form & 8) != 0;
      const Instruction base = line;
      for (const auto field : longs) {
        for (const std::int32_t value : kLongs) {
          line = base;
          line.*field = value;
          refused += CompilesOrRefuses(fresh) ? 0 : 1;
        }
      }
      for (const auto field : integers) {
        for (const std::int16_t value : kIntegers) {
          line = base;
          line.*field = value;
          refused += CompilesOrRefuses(fresh) ? 0 : 1;
        }
      }
      for (const auto field : singles) {
        for (const float value : kSingles) {
          line = base;
          line.*field = value;
          refused += CompilesOrRefuses(fresh) ? 0 : 1;
        }
      }
    }
  }
  EXPECT_GT(refused, 100);
}

TEST(CompileExtremes, SettingsAtTheirExtremesEncodeOrAreRefused) {
  std::mt19937 random(6);
  for (int run = 0; run < 3000; ++run) {
    Program program = NewProgram();
    for (int axis = 0; axis < kAxes; ++axis) {
      program.Axis.DriveModel[axis] = kIntegers[random() % std::size(kIntegers)];
      if (random() % 2 == 0) program.Axis.StepResCode[axis] = kIntegers[random() % std::size(kIntegers)];
      if (random() % 2 == 0) program.Axis.StepsPerUnit[axis] = kLongs[random() % std::size(kLongs)];
      if (random() % 2 == 0) program.Axis.StepsPerRev[axis] = kLongs[random() % std::size(kLongs)];
      if (random() % 8 == 0) program.Axis.DriveCurrent[axis] = std::numeric_limits<float>::quiet_NaN();
      if (random() % 8 == 0) program.Axis.PeakCurrent[axis] = std::numeric_limits<float>::infinity();
      if (random() % 8 == 0) program.Axis.UnitName[axis] = std::string(random() % 500, 'u');
    }
    if (random() % 8 == 0) program.LimitBranch = std::numeric_limits<double>::quiet_NaN();
    try {
      EXPECT_GE(SysString(program).size(), 256U);
    } catch (const EncodeError& error) {
      EXPECT_NE(std::string(error.what()), "");
    }
  }
}

}  // namespace
}  // namespace tavlo
