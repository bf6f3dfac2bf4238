// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <limits>

#include "forms/form_bench.h"
#include "forms/mmi_prompt.h"

namespace tavlo::testing {
namespace {

/// The names of a block and the fields that it writes.
struct Block {
  const char* allowed;
  const char* drive;
  const char* speed;
  const char* accel;
  const char* speed_unit;
  const char* accel_unit;
  bool Instruction::*jog;
  std::int16_t Instruction::*axis;
  float Instruction::*rev_s;
  std::int32_t Instruction::*rev_s2;
};

constexpr Block kBlocks[] = {
    {"ChkJogLR", "DriveLR", "TxtLRJogSpeed", "TxtLRJogAccel", "LRSpeedUnit", "LRAccelUnit",
     &Instruction::JogLR, &Instruction::JogLRDrive, &Instruction::JogLRSpeed, &Instruction::JogLRAccel},
    {"ChkJogUD", "DriveUD", "TxtUDJogSpeed", "TxtUDJogAccel", "UDSpeedUnit", "UDAccelUnit",
     &Instruction::JogUD, &Instruction::JogUDDrive, &Instruction::JogUDSpeed, &Instruction::JogUDAccel}};

struct JogBench : FormBench<MMIprompt> {
  JogBench() {
    // Axis 1: 2 inches a revolution. Axis 3: no units of its own, though it has steps of one.
    InInches(program, 0, 10000);
    InInches(program, 1, 40000);
    InInches(program, 2, 10000);
    program.Axis.UseUnits[2] = false;
    Line().Type = MMI;
    Line().SubType = WaitEnter;
    Line().JogUDDrive = 0;
    Line().JogLR = Line().JogUD = true;
    Open();
  }
};

TEST(JogBlock, IsDimmedUntilItsKeysJog) {
  for (const Block& block : kBlocks) {
    JogBench d;
    d.Line().*block.jog = false;
    d.Open();
    const auto dimmed = [&] {
      int count = 0;
      for (const char* name : {block.drive, block.speed, block.accel, block.speed_unit, block.accel_unit}) {
        count += d.Enabled(name) ? 0 : 1;
      }
      return count;
    };
    EXPECT_EQ(dimmed(), 5);
    d.Click(block.allowed);
    EXPECT_EQ(dimmed(), 0);
    EXPECT_TRUE(d.OK());
    EXPECT_TRUE(d.Line().*block.jog);
  }
}

TEST(JogBlock, TakesSpeedsInTheUnitsOfItsAxis) {
  const struct {
    int axis;
    const char* typed;
    const char* shown;
    float stored;
  } rows[] = {{0, "3", "3.0000", 1.5F},
              {0, "0", "0.0500", 0.025F},
              {0, "", "0.0500", 0.025F},
              {0, "1E999", "100.0000", 50},
              {0, "3.0001", "3.0000", 1.5F},
              {1, "3", "3.0000", 6},
              {1, "999", "25.0000", 50},
              {0, "2,5", "2.0000", 1},
              // Read in units though the axis shows none.
              {2, "3", "3.0000", 1.5F},
              {2, "0.025", "0.0250", 0.025F}};
  for (const Block& block : kBlocks) {
    for (const auto& row : rows) {
      JogBench d;
      d.Line().*block.axis = static_cast<std::int16_t>(row.axis);
      d.Open();
      d.Enter(block.speed, row.typed);
      EXPECT_EQ(d.Text(block.speed), row.shown) << row.axis << ": " << row.typed;
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line().*block.rev_s, row.stored) << row.axis << ": " << row.typed;
    }
  }
}

TEST(JogBlock, TakesAccelerationsInTheUnitsOfItsAxis) {
  const struct {
    int axis;
    const char* typed;
    const char* shown;
    std::int32_t stored;
  } rows[] = {{0, "300", "300.0", 150},     {0, "0", "2.0", 1},       {0, "", "2.0", 1},
              {0, "1E999", "6000.0", 3000}, {1, "300", "300.0", 600}, {2, "300", "150", 150}};
  for (const Block& block : kBlocks) {
    for (const auto& row : rows) {
      JogBench d;
      d.Line().*block.axis = static_cast<std::int16_t>(row.axis);
      d.Open();
      d.Type(block.accel, row.typed);
      EXPECT_TRUE(d.OK()) << "cleaned while it has the focus";
      EXPECT_EQ(d.Text(block.accel), row.shown) << row.axis << ": " << row.typed;
      EXPECT_EQ(d.Line().*block.rev_s2, row.stored) << row.axis << ": " << row.typed;
      d.Open();
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line().*block.rev_s2, row.stored) << "read once";
    }
  }
}

TEST(JogBlock, TellsTheUnitsOfItsOwnAxis) {
  for (const Block& block : kBlocks) {
    JogBench d;
    EXPECT_EQ(d.Caption(block.speed_unit), "inch/sec");
    EXPECT_EQ(d.Caption(block.accel_unit), "inch/s/s");
    d.Choose(block.drive, 2);
    EXPECT_EQ(d.Caption(block.speed_unit), "rev/sec");
    EXPECT_EQ(d.Caption(block.accel_unit), "rev/s/s");
    const Block& other = &block == &kBlocks[0] ? kBlocks[1] : kBlocks[0];
    EXPECT_EQ(d.Caption(other.speed_unit), "inch/sec");
  }
}

TEST(JogBlock, OnAnotherAxisTheNumbersStayAndMeanItsUnits) {
  for (const Block& block : kBlocks) {
    JogBench d;
    EXPECT_EQ(d.Text(block.speed), "2.0000");
    EXPECT_EQ(d.Text(block.accel), "200.0");
    d.Choose(block.drive, 1);
    EXPECT_EQ(d.Text(block.speed), "2.0000");
    EXPECT_EQ(d.Text(block.accel), "200.0");
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().*block.axis, 1);
    EXPECT_EQ(d.Line().*block.rev_s, 4);
    EXPECT_EQ(d.Line().*block.rev_s2, 400);
  }
}

TEST(JogBlock, WhatNobodyTouchedIsForcedOnlyOutsideItsRange) {
  const struct {
    float before;
    float after;
  } speeds[] = {{0.0301F, 0.0301F}, {50, 50},     {50.5F, 50},
                {0, 0.025F},        {-3, 0.025F}, {std::numeric_limits<float>::quiet_NaN(), 0.025F}};
  const struct {
    std::int32_t before;
    std::int32_t after;
  } accels[] = {{1, 1}, {3000, 3000}, {3001, 3000}, {0, 1}, {-100, 1}};
  for (const Block& block : kBlocks) {
    for (const auto& row : speeds) {
      JogBench d;
      d.Line().*block.rev_s = row.before;
      d.Open();
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line().*block.rev_s, row.after);
    }
    for (const auto& row : accels) {
      JogBench d;
      d.Line().*block.rev_s2 = row.before;
      d.Open();
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line().*block.rev_s2, row.after);
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
