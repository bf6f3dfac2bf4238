// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::Hex;
using testing::NewProgram;

std::string Block(Program& program, int axis) {
  return SysString(program).substr(static_cast<std::size_t>(axis) * 32, 32);
}

TEST(SystemString, TheDefaultsOfAxis0) {
  Program program = NewProgram();
  program.HubVersion = 1.38F;
  EXPECT_EQ(Hex(Block(program, 0)),
            // current, option, limit, model, steps per revolution, kind
            "0100"
            "02"
            "35"
            "01"
            "1f40"
            "00"
            // steps per unit, unit name
            "004e20"
            "03"
            "72657620"
            // "Axis 1", speed factor 40
            "4178697320312020"
            "000028"
            // second and third current, settings
            "0200"
            "0000"
            "00");
}

TEST(SystemString, IsEightBlocksOf32AlsoOnTheFourAxisHub) {
  Program program = NewProgram();
  EXPECT_EQ(SysString(program).size(), 256U);
  program.HubIndex = HubQuad;
  program.Axis.DriveModel.fill(0);
  program.Axis.AxisName[7] = "Kept";
  EXPECT_EQ(SysString(program).size(), 256U);
  EXPECT_EQ(Block(program, 7).substr(16, 8), "Kept    ");
}

TEST(SystemString, FirstCurrentIsContCurrentWhereTheModelIsBothServoAndRms) {
  for (int model = 0; model <= 50; ++model) {
    Program program = NewProgram();
    program.Axis.DriveModel[1] = static_cast<std::int16_t>(model);
    program.Axis.DriveCurrent[1] = 1.25F;
    program.Axis.ContCurrent[1] = 3.5F;
    const bool continuous = (model >= 10 && model <= 18) || (model >= 48 && model <= 50);
    EXPECT_EQ(Block(program, 1).substr(0, 2), continuous ? Bytes({3, 50}) : Bytes({1, 25})) << model;
  }
}

TEST(SystemString, HundredthsRoundHalfToEvenWhereChangeCurrentCuts) {
  struct {
    float current;
    int whole;
    int hundredths;
  } const cases[] = {{1.3F, 1, 30},   {0.9F, 0, 90}, {2.125F, 2, 12},
                     {2.375F, 2, 38}, {0.0F, 0, 0},  {7.1F, 7, 10}};
  for (const auto& c : cases) {
    Program program = NewProgram();
    program.Axis.DriveCurrent[0] = c.current;
    EXPECT_EQ(Block(program, 0).substr(0, 2), Bytes({c.whole, c.hundredths})) << c.current;
  }
}

TEST(SystemString, DriveOptionIs16ForAServoElseIdleCode) {
  for (int model = 0; model <= 50; ++model) {
    Program program = NewProgram();
    program.Axis.DriveModel[0] = static_cast<std::int16_t>(model);
    program.Axis.IdleCode[0] = 3;
    EXPECT_EQ(Block(program, 0)[2], ServoModel(model) ? 16 : 3) << model;
    EXPECT_EQ(Block(program, 0)[4], model);
  }
}

TEST(SystemString, LimitKindIsADigitAndAnyOtherValueGives3) {
  struct {
    int kind;
    char digit;
  } const cases[] = {{0, '5'}, {1, '6'}, {2, '3'}, {3, '3'}, {-1, '3'}, {32767, '3'}};
  for (const auto& c : cases) {
    Program program = NewProgram();
    program.Axis.LimitKind[0] = static_cast<std::int16_t>(c.kind);
    EXPECT_EQ(Block(program, 0)[3], c.digit) << c.kind;
  }
}

TEST(SystemString, AStepsPerRevOf0GoesOutAs0x000x01) {
  Program program = NewProgram();
  program.Axis.StepsPerRev[0] = 0;
  EXPECT_EQ(Block(program, 0).substr(5, 2), Bytes({0x00, 0x01}));
  program.Axis.StepsPerRev[0] = 50800;
  EXPECT_EQ(Block(program, 0).substr(5, 2), Bytes({0xC6, 0x70}));
}

TEST(SystemString, DriveKindByModelFromFirmware110On) {
  for (int model = 0; model <= 50; ++model) {
    int kind = 0;
    if (ZenuRmsModel(model)) {
      kind = 3;
    } else if (PelmarModel(model) || DreskModel(model)) {
      kind = 1;
    } else if (MirelModel(model)) {
      kind = 5;
    }
    Program program = NewProgram();
    program.Axis.DriveModel[0] = static_cast<std::int16_t>(model);
    for (const float version : {1.10F, 1.38F}) {
      program.HubVersion = version;
      EXPECT_EQ(Block(program, 0)[7], kind) << model << " at " << version;
    }
    for (const float version : {0.0F, 1.05F, 1.09F}) {
      program.HubVersion = version;
      EXPECT_EQ(Block(program, 0)[7], 1) << model << " at " << version;
    }
  }
}

TEST(SystemString, NamesAreFilledWithBlanks) {
  Program program = NewProgram();
  program.Axis.UnitName[0] = "";
  program.Axis.AxisName[0] = "";
  EXPECT_EQ(Block(program, 0).substr(11, 5), std::string("\0    ", 5));
  EXPECT_EQ(Block(program, 0).substr(16, 8), "        ");
  program.Axis.UnitName[0] = "inch";
  program.Axis.AxisName[0] = "Feeder A";
  EXPECT_EQ(Block(program, 0).substr(11, 5), "\x04inch");
  EXPECT_EQ(Block(program, 0).substr(16, 8), "Feeder A");
}

TEST(SystemString, ALongNamePushesTheRestAlongAndIsRefusedBeforeADownload) {
  Program program = NewProgram();
  EXPECT_NO_THROW(RefuseLongNames(program));
  program.Axis.UnitName[3] = "metre";
  EXPECT_EQ(SysString(program).size(), 257U);
  EXPECT_THROW(RefuseLongNames(program), EncodeError);
  EXPECT_THROW((void)CompileProgram(program), EncodeError);
  program.Axis.UnitName[3] = "mm";
  program.Axis.AxisName[3] = "Nine chars"[0] + std::string("bcdefghi");
  EXPECT_EQ(SysString(program).size(), 257U);
  EXPECT_THROW(RefuseLongNames(program), EncodeError);
  EXPECT_THROW((void)CompileProgram(program), EncodeError);
}

TEST(SystemString, SpeedFactor) {
  struct {
    int steps_per_unit;
    int steps_per_rev;
    int factor;
  } const cases[] = {{20000, 20000, 40}, {8000, 20000, 16},       {1, 40, 1}, {1, 80, 0}, {3, 80, 2},
                     {5, 80, 2},         {16000000, 25, 25600000}};
  for (const auto& c : cases) {
    Program program = NewProgram();
    program.Axis.StepResCode[0] = 16;
    program.Axis.StepsPerRev[0] = c.steps_per_rev;
    program.Axis.StepsPerUnit[0] = c.steps_per_unit;
    EXPECT_EQ(Block(program, 0).substr(24, 3),
              Bytes({c.factor >> 16 & 255, c.factor >> 8 & 255, c.factor & 255}));
    EXPECT_EQ(Block(program, 0).substr(8, 3), Pack3(c.steps_per_unit));
  }
}

TEST(SystemString, BuildingItWritesTheIdleCurrentOfTheStepperFamilies) {
  for (int model = 0; model <= 50; ++model) {
    Program program = NewProgram();
    program.Axis.DriveModel[2] = static_cast<std::int16_t>(model);
    program.Axis.DriveCurrent[2] = 3.5F;
    program.Axis.PeakCurrent[2] = 9.25F;
    program.Axis.IdleCurrent[2] = 0.75F;
    program.Axis.AccelCurrent[2] = 4.5F;
    const std::string block = Block(program, 2);
    float second = 9.25F;
    if (PelmarModel(model) || DreskModel(model)) second = 1.75F;
    if (MirelModel(model)) second = 0.75F;
    EXPECT_EQ(program.Axis.PeakCurrent[2], second) << model;
    const int whole = static_cast<int>(second);
    EXPECT_EQ(block.substr(27, 2),
              Bytes({whole, static_cast<int>((second - static_cast<float>(whole)) * 100)}))
        << model;
    EXPECT_EQ(block.substr(29, 2), MirelModel(model) ? Bytes({4, 50}) : Bytes({0, 0})) << model;
  }
}

TEST(SystemString, TheSettingsByteCarriesADifferentThingForEachAxis) {
  Program program = NewProgram();
  const auto settings = [&program](int axis) { return static_cast<unsigned char>(Block(program, axis)[31]); };
  for (const int axis : {0, 1, 3, 4, 5, 6, 7}) EXPECT_EQ(settings(axis), 0) << axis;
  EXPECT_EQ(settings(2), 2) << "SameLimits is on from the start";
  program.MMIused = true;
  program.LimitList = 2;
  program.LimitBranch = 200;
  EXPECT_EQ(settings(0), 1);
  EXPECT_EQ(settings(3), 2);
  EXPECT_EQ(settings(4), 199);
  for (int bits = 0; bits < 8; ++bits) {
    program.Axis.SameUnits = (bits & 1) != 0;
    program.Axis.SameLimits = (bits & 2) != 0;
    program.Axis.SameSpare = (bits & 4) != 0;
    EXPECT_EQ(settings(2), bits);
  }
  for (const int axis : {1, 5, 6, 7}) EXPECT_EQ(settings(axis), 0);
}

TEST(SystemString, ALimitLineBetweenTwoLinesIsRoundedToTheEvenOne) {
  struct {
    double branch;
    int byte;
  } const cases[] = {{12.6, 12}, {12.4, 11}, {12.5, 12}, {13.5, 12}};
  for (const auto& c : cases) {
    Program program = NewProgram();
    program.LimitBranch = c.branch;
    EXPECT_EQ(static_cast<unsigned char>(Block(program, 4)[31]), c.byte) << c.branch;
  }
}

TEST(SystemString, ASettingThatHasNoBytesNamesItsAxis) {
  const auto message = [](const std::function<void(Program&)>& spoil) -> std::string {
    Program program = NewProgram();
    spoil(program);
    try {
      (void)SysString(program);
    } catch (const EncodeError& error) {
      return error.what();
    }
    return "no error";
  };
  const std::function<void(Program&)> spoils[] = {
      [](Program& p) { p.Axis.StepsPerRev[5] = -1; },   [](Program& p) { p.Axis.StepsPerUnit[5] = -1; },
      [](Program& p) { p.Axis.DriveModel[5] = -1; },    [](Program& p) { p.Axis.DriveModel[5] = 256; },
      [](Program& p) { p.Axis.IdleCode[5] = 300; },     [](Program& p) { p.Axis.DriveCurrent[5] = -1; },
      [](Program& p) { p.Axis.DriveCurrent[5] = 256; }, [](Program& p) { p.Axis.PeakCurrent[5] = 1e30F; },
      [](Program& p) { p.Axis.StepResCode[5] = 17; }};
  for (const auto& spoil : spoils) {
    const std::string text = message(spoil);
    EXPECT_TRUE(text.find("axis 6") != std::string::npos || text.find("Axis 6") != std::string::npos) << text;
  }
}

TEST(SystemString, ARefusedSettingIsToldInWords) {
  struct {
    std::function<void(Program&)> spoil;
    std::string_view reason;
  } const cases[] = {
      {[](Program& p) { p.Axis.StepsPerRev[5] = -1; }, "the steps per revolution is negative"},
      {[](Program& p) { p.Axis.StepsPerUnit[5] = -1; }, "the steps per unit is negative"},
      {[](Program& p) { p.Axis.DriveModel[5] = 256; }, "the drive model is above 255"},
      {[](Program& p) { p.Axis.IdleCode[5] = 300; }, "the idle setting is above 255"},
      {[](Program& p) { p.Axis.DriveCurrent[5] = 256; }, "the current is above 255"},
      {[](Program& p) { p.Axis.PeakCurrent[5] = 1e30F; }, "the second current is too large"},
      {[](Program& p) { p.Axis.StepResCode[5] = 17; }, "the steps per revolution are 0"},
      {[](Program& p) { p.Axis.UnitName[5] = "metre"; }, "its unit name is longer than 4 characters"},
      {[](Program& p) { p.Axis.AxisName[5] = "Conveyor1"; }, "its name is longer than 8 characters"}};
  for (const auto& c : cases) {
    Program program = NewProgram();
    c.spoil(program);
    std::string message;
    try {
      static_cast<void>(CompileProgram(program));
    } catch (const EncodeError& error) {
      message = error.what();
    }
    EXPECT_EQ(message, "The settings of axis 6 cannot be compiled: " + std::string(c.reason) + ".");
  }
}

TEST(SystemString, LimitSettingsThatHaveNoBytesAreRefused) {
  for (const double branch : {0.0, -5.0, 257.0, 1e300}) {
    Program program = NewProgram();
    program.LimitBranch = branch;
    EXPECT_THROW((void)SysString(program), EncodeError) << branch;
  }
  for (const int list : {-1, 256}) {
    Program program = NewProgram();
    program.LimitList = static_cast<std::int16_t>(list);
    EXPECT_THROW((void)SysString(program), EncodeError) << list;
  }
}

}  // namespace
}  // namespace tavlo
