// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "codegen/decode.h"
#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::NewProgram;

constexpr std::size_t kBlock = 32;

/// Eight blocks that differ from the defaults in every byte that is read.
std::string Settings() {
  std::string system;
  for (int axis = 0; axis < kAxes; ++axis) {
    system += Bytes({axis, 25, 40 + axis, '6', 10 + axis, 1, axis, 99, 1, 2, axis, 3, 'm', 'm', 'x', ' '});
    system += "Axis  " + std::to_string(axis) + " ";
    system += Bytes({9, 9, 9, 2, 50, 3, 75, 0});
  }
  return system;
}

TEST(DecodeSystem, EachAxisTakesItsBlock) {
  Program program = NewProgram();
  const AxisConfig before = program.Axis;
  DecodeSystem(program, Settings());
  const AxisConfig& axes = program.Axis;
  for (int axis = 0; axis < kAxes; ++axis) {
    SCOPED_TRACE(axis);
    EXPECT_EQ(axes.DriveCurrent[axis], static_cast<float>(axis) + 0.25F);
    EXPECT_EQ(axes.ContCurrent[axis], axes.DriveCurrent[axis]);
    EXPECT_EQ(axes.RunCurrent[axis], axes.DriveCurrent[axis]);
    EXPECT_EQ(axes.IdleCode[axis], 40 + axis);
    EXPECT_EQ(axes.LimitKind[axis], 1);
    EXPECT_EQ(axes.DriveModel[axis], 10 + axis);
    EXPECT_EQ(axes.StepsPerRev[axis], 256 + axis);
    EXPECT_EQ(axes.StepsPerUnit[axis], 65536 + 512 + axis);
    EXPECT_EQ(axes.UnitName[axis], "mmx");
    EXPECT_TRUE(axes.UseUnits[axis]);
    EXPECT_EQ(axes.AxisName[axis], "Axis  " + std::to_string(axis));
    EXPECT_EQ(axes.PeakCurrent[axis], 2.5F);
    EXPECT_EQ(axes.IdleCurrent[axis], 2.5F);
    EXPECT_EQ(axes.AccelCurrent[axis], 3.75F);
    EXPECT_EQ(axes.StepResCode[axis], before.StepResCode[axis]) << "kept";
  }
  EXPECT_EQ(axes.DriveModel[kAxes], before.DriveModel[kAxes]) << "the ninth slot is nobody's";
}

TEST(DecodeSystem, AFourAxisHubHasEightBlocksToo) {
  Program program = NewProgram();
  program.HubIndex = HubQuad;
  DecodeSystem(program, Settings());
  EXPECT_EQ(program.Axis.DriveModel[7], 17);
  EXPECT_EQ(program.HubIndex, HubQuad);
}

TEST(DecodeSystem, ALimitSwitchIsClosedOpenOrNotUsed) {
  for (int c = 0; c < 256; ++c) {
    Program program = NewProgram();
    std::string system = Settings();
    system[3] = static_cast<char>(c);
    DecodeSystem(program, system);
    EXPECT_EQ(program.Axis.LimitKind[0], c == '5' ? 0 : c == '6' ? 1 : 2) << c;
  }
}

TEST(DecodeSystem, AUnitNameIsAsLongAsItsByteSaysAndEndsWithItsBlock) {
  for (const int length : {0, 1, 4, 20, 21, 255}) {
    Program program = NewProgram();
    std::string system = Settings();
    system[11] = static_cast<char>(length);
    DecodeSystem(program, system);
    EXPECT_EQ(program.Axis.UnitName[0], system.substr(12, std::min(length, 20))) << length;
    EXPECT_EQ(program.Axis.AxisName[0], "Axis  0");
  }
}

TEST(DecodeSystem, OnlyBlanksAtTheEndOfAnAxisNameGo) {
  struct Case {
    std::string bytes;
    std::string name;
  };
  for (const Case& c :
       {Case{"        ", ""}, {" X      ", " X"}, {"12345678", "12345678"}, {"Y\t      ", "Y\t"}}) {
    Program program = NewProgram();
    std::string system = Settings();
    system.replace(16, 8, c.bytes);
    DecodeSystem(program, system);
    EXPECT_EQ(program.Axis.AxisName[0], c.name);
  }
}

TEST(DecodeSystem, TheLastBytesCarryTheSameBoxes) {
  for (int byte = 0; byte < 16; ++byte) {
    Program program = NewProgram();
    std::string system = Settings();
    system[2 * kBlock + 31] = static_cast<char>(byte);
    DecodeSystem(program, system);
    EXPECT_EQ(program.Axis.SameUnits, (byte & 1) != 0);
    EXPECT_EQ(program.Axis.SameLimits, (byte & 2) != 0);
    EXPECT_EQ(program.Axis.SameSpare, (byte & 4) != 0);
  }
}

TEST(DecodeSystem, TheLastBytesCarryTheLimitActionAndItsLine) {
  for (int byte = 0; byte < 256; ++byte) {
    Program program = NewProgram();
    program.LimitList = BranchToLine;
    std::string system = Settings();
    system[3 * kBlock + 31] = static_cast<char>(byte);
    system[4 * kBlock + 31] = static_cast<char>(byte);
    DecodeSystem(program, system);
    EXPECT_EQ(program.LimitList, byte <= 2 ? byte : BranchToLine)
        << "what the list cannot show leaves it: " << byte;
    EXPECT_EQ(program.LimitBranch, byte + 1);
  }
}

TEST(DecodeSystem, TheLastBytesOfTheOtherAxesAreDropped) {
  Program expected = NewProgram();
  DecodeSystem(expected, Settings());
  for (const std::size_t axis : {0U, 1U, 5U, 6U, 7U}) {
    Program program = NewProgram();
    std::string system = Settings();
    system[axis * kBlock + 31] = '\xFF';
    DecodeSystem(program, system);
    EXPECT_TRUE(program.Axis == expected.Axis) << axis;
    EXPECT_EQ(program.MMIused, expected.MMIused);
    EXPECT_EQ(program.LimitList, expected.LimitList);
    EXPECT_EQ(program.LimitBranch, expected.LimitBranch);
  }
}

TEST(DecodeSystem, DriveKindAndSpeedFactorAreNotRead) {
  Program expected = NewProgram();
  DecodeSystem(expected, Settings());
  for (const std::size_t at : {7U, 24U, 25U, 26U}) {
    Program program = NewProgram();
    std::string system = Settings();
    system[at] = '\x77';
    DecodeSystem(program, system);
    EXPECT_TRUE(program.Axis == expected.Axis) << at;
  }
}

TEST(DecodeImage, APulseThatCannotBeReadLeavesTheProgramAsItWasAndNamesTheLine) {
  std::string image(kImageBytes, '\0');
  image.replace(6 * kSlotBytes, 6, Bytes({SO, 1, 2, 255, 255, 0}));
  Program program = NewProgram();
  program.Prog[3].Text = "mine";
  const Program before = program;
  try {
    DecodeImage(program, image);
    FAIL() << "it was read";
  } catch (const DecodeError& error) {
    EXPECT_STREQ(error.what(), "Line 7 cannot be read: its pulse is too long.");
  }
  EXPECT_TRUE(program.Prog == before.Prog);
  EXPECT_TRUE(program.Axis == before.Axis);
}

TEST(DecodeImage, ASensorsInputGoesByTheDriveOfTheImageNotOfTheProgram) {
  std::string image(kImageBytes, '\0');
  image.replace(0, 11, Bytes({SH, 0, 0, 1, 0, 1, 0, 1, 255, 0, 2}));
  image[kLines * kSlotBytes + 2 * kBlock + 4] = 8;
  Program program = NewProgram();
  DecodeImage(program, image);
  EXPECT_EQ(program.Prog[0].IONum, 128);
}

TEST(DecodeImage, ABytelessImageReadsAsZeros) {
  Program zeros = NewProgram();
  Program none = NewProgram();
  DecodeImage(zeros, std::string(kImageBytes, '\0'));
  DecodeImage(none, "");
  EXPECT_TRUE(zeros.Prog == none.Prog);
  EXPECT_EQ(none.Prog[199].Type, FL);
  EXPECT_EQ(none.Prog[kLines].Type, NO) << "the 201st record is no line";
}

}  // namespace
}  // namespace tavlo
