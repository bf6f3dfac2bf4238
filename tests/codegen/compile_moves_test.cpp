// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::OneLine;

TEST(CompileMoves, AFeedToLengthOnAxis0WithTheDefaults) {
  OneLine feed(FL);
  EXPECT_EQ(feed.Compiled(), Bytes({0x00, 0x00, 0x00, 0x78, 0x00, 0x64, 0x00, 0x64, 0x00, 0x4E, 0x20, 0x00}));
}

TEST(CompileMoves, TheFirstByteCarriesProceedAndWaitThisForEveryType) {
  for (int type = 0; type < kTypes; ++type) {
    OneLine plain(type);
    const int first = type == MMImenu ? 26 : type;
    EXPECT_EQ(static_cast<unsigned char>(plain.Compiled()[0]), first) << type;
    OneLine proceed(type);
    proceed.line().Proceed = true;
    EXPECT_EQ(static_cast<unsigned char>(proceed.Compiled()[0]), first + 64) << type;
    OneLine wait(type);
    wait.line().WaitThis = true;
    EXPECT_EQ(static_cast<unsigned char>(wait.Compiled()[0]), first + 128) << type;
    wait.line().Proceed = true;
    EXPECT_EQ(static_cast<unsigned char>(wait.Compiled()[0]), first + 192) << type;
  }
}

TEST(CompileMoves, TheFlagByteOfAFeedIsTheSumOfItsParts) {
  for (const int type : {FL, FR, FS, FSR, FSS, FP}) {
    OneLine feed(type);
    feed.line().Dir = 1;
    EXPECT_EQ(feed.Compiled()[1], 1) << type;
    feed.line().DistIsMMI = true;
    EXPECT_EQ(feed.Compiled()[1], 3) << type;
    feed.line().SpeedIsMMI = true;
    EXPECT_EQ(feed.Compiled()[1], 7) << type;
    feed.line().Dist2IsMMI = feed.line().Speed2IsMMI = feed.line().CountIsMMI = true;
    EXPECT_EQ(feed.Compiled()[1], 7) << type;
  }
  for (const int type : {FLSO, FLCS}) {
    OneLine feed(type);
    feed.line().Dist2IsMMI = true;
    EXPECT_EQ(feed.Compiled()[1], 16) << type;
    feed.line().Speed2IsMMI = true;
    EXPECT_EQ(feed.Compiled()[1], 48) << type;
    feed.line().Dir = 1;
    feed.line().DistIsMMI = feed.line().SpeedIsMMI = true;
    EXPECT_EQ(feed.Compiled()[1], 55) << type;
  }
}

TEST(CompileMoves, AVariablesNumberStandsInTheHighByteOfItsField) {
  for (const int type : {FL, FR, FS, FSR, FSS, FP, FLSO, FLCS}) {
    OneLine feed(type);
    feed.line().DistIsMMI = feed.line().SpeedIsMMI = true;
    feed.line().DistVar = 14;
    feed.line().SpeedVar = 34;
    const std::string bytes = feed.Compiled();
    EXPECT_EQ(bytes.substr(2, 2), Bytes({34, 0})) << type;
    EXPECT_EQ(bytes.substr(4, 4), Bytes({0, 100, 0, 100})) << type;
    EXPECT_EQ(bytes.substr(8, 3), Bytes({14, 0, 0})) << type;
  }
}

/// A line whose fields all differ, so that each byte tells where it came from.
OneLine Marked(int type) {
  OneLine one(type);
  Instruction& line = one.line();
  line.Dist = 0x010203;
  line.Dist2 = 0x040506;
  line.SafetyDist = 0x070809;
  line.Speed = 0x0A0B / 40.0F;
  line.Speed2 = 0x0C0D / 40.0F;
  line.RetSpeed = 0x0E0F / 40.0F;
  line.Dir = 1;
  line.Accel = 0x1011;
  line.Decel = 0x1213;
  line.State = 3;
  line.Time = 0x14;
  line.LineNum = 0x15;
  line.IONum = 0x16;
  line.SubType = 2;
  line.Drive = 7;
  return one;
}

TEST(CompileMoves, EachLayoutAtEachOffset) {
  struct {
    int type;
    std::string_view hex;
  } const cases[] = {
      {FL,
       "00010a0b101112130102"
       "0307"},
      {FP,
       "0f010a0b101112130102"
       "0307"},
      {FR,
       "01010a0b101112130102"
       "030e0f001407"},
      {FS,
       "02010a0b101112130102"
       "03160307"},
      {FSS,
       "18010a0b101112130102"
       "031603070809"
       "1507"},
      {FSR,
       "03010a0b101112130102"
       "0316030e0f001407"},
      {FLSO,
       "15010a0b101112130102"
       "03040506160314"
       "07"},
      {FLCS,
       "16010a0b101112130102"
       "030405060c0d07"},
      {SS, "1f210a0b101107"},
      {SH, "0c010a0b10111213160307"},
  };
  for (const auto& c : cases) EXPECT_EQ(Marked(c.type).InHex(), c.hex) << c.type;
}

TEST(CompileMoves, EachTypeHasItsLength) {
  struct {
    int type;
    std::size_t length;
  } const cases[] = {{FL, 12},  {FP, 12},   {FR, 16},   {FS, 14}, {FSS, 18},
                     {FSR, 18}, {FLSO, 18}, {FLCS, 17}, {SS, 7},  {SH, 11}};
  for (const auto& c : cases) EXPECT_EQ(OneLine(c.type).Compiled().size(), c.length) << c.type;
}

TEST(CompileMoves, AMoveToANegativePositionDiffersOnlyInBit0OfTheFlagByte) {
  OneLine move(FP);
  move.line().Dist = 500;
  std::string positive = move.Compiled();
  move.line().Dir = 1;
  const std::string negative = move.Compiled();
  EXPECT_EQ(negative.substr(8, 3), Bytes({0x00, 0x01, 0xF4}));
  EXPECT_EQ(negative[1], positive[1] + 1);
  positive[1] = negative[1];
  EXPECT_EQ(negative, positive);
}

TEST(CompileMoves, Sensor128OnAnOldServoIsSentAs255AndOnAnyOtherDriveAs128) {
  struct {
    int type;
    std::size_t offset;
  } const cases[] = {{FS, 11}, {FSR, 11}, {FSS, 11}, {SH, 8}};
  for (const auto& c : cases) {
    for (int model = 0; model <= 50; ++model) {
      OneLine one(c.type);
      one.line().IONum = 128;
      one.line().Drive = 2;
      one.program.Axis.DriveModel[2] = static_cast<std::int16_t>(model);
      const int expected = model == 8 || model == 9 ? 255 : 128;
      EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[c.offset]), expected) << c.type << " on " << model;
      one.line().IONum = 129;
      EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[c.offset]), 129);
    }
  }
}

TEST(CompileMoves, FLSOHasNoSensorRule) {
  OneLine one(FLSO);
  one.line().IONum = 128;
  one.program.Axis.DriveModel[0] = 8;
  EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[14]), 128);
}

TEST(CompileMoves, FLSOWithTime300CompilesAs255AndTimeReads255Afterwards) {
  OneLine one(FLSO);
  one.line().Time = 300;
  EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[16]), 255);
  EXPECT_EQ(one.line().Time, 255);
  one.line().Time = 254;
  EXPECT_EQ(static_cast<unsigned char>(one.Compiled()[16]), 254);
  EXPECT_EQ(one.line().Time, 254);
}

TEST(CompileMoves, FLSOKeepsBit32OfALineLeftOverFromASpeedChange) {
  OneLine one(FLSO);
  one.line().Speed2IsMMI = true;
  EXPECT_EQ(one.Compiled()[1], 32);
  EXPECT_EQ(one.Compiled().size(), 18U);
}

TEST(CompileMoves, FLCSWithBothSecondOperandsFromVariables) {
  OneLine one(FLCS);
  one.line().Dir = 1;
  one.line().Dist2IsMMI = one.line().Speed2IsMMI = true;
  const std::string bytes = one.Compiled();
  EXPECT_EQ(bytes[1], 1 + 16 + 32);
  EXPECT_EQ(bytes.substr(11, 3), Bytes({1, 0, 0}));
  EXPECT_EQ(bytes.substr(14, 2), Bytes({26, 0}));
}

TEST(CompileMoves, SafetyDistOf0IsSentAsThreeZeroBytes) {
  OneLine one(FSS);
  one.line().SafetyDist = 0;
  EXPECT_EQ(one.Compiled().substr(13, 3), Bytes({0, 0, 0}));
}

TEST(CompileMoves, ZeroSpeedsRatesAndTimesGoOutAsOneAndAZeroDistanceAsZero) {
  OneLine one(FR);
  Instruction& line = one.line();
  line.Speed = line.RetSpeed = 0;
  line.Accel = line.Decel = line.Time = line.Dist = 0;
  EXPECT_EQ(one.InHex(),
            "01000001"
            "00010001"
            "000000"
            "0001"
            "0001"
            "00");
}

TEST(CompileMoves, ADistAbove16777215LosesItsTopBits) {
  OneLine one(FL);
  one.line().Dist = 16777216 + 5;
  EXPECT_EQ(one.Compiled().substr(8, 3), Bytes({0, 0, 5}));
}

TEST(CompileMoves, StartOrStopHasItsSubTypeInTheFlagByte) {
  for (int sub = 0; sub <= 3; ++sub) {
    OneLine one(SS);
    one.line().SubType = static_cast<std::int16_t>(sub);
    EXPECT_EQ(one.Compiled()[1], 16 * sub);
    one.line().Dir = 1;
    one.line().SpeedIsMMI = true;
    EXPECT_EQ(one.Compiled()[1], 16 * sub + 5);
    EXPECT_EQ(one.Compiled().substr(2, 2), Bytes({25, 0}));
  }
}

TEST(CompileMoves, SeekHomeHasNoVariableForm) {
  OneLine one(SH);
  one.line().SpeedIsMMI = one.line().DistIsMMI = true;
  EXPECT_EQ(one.InHex(),
            "0c00007800640064"
            "000100");
}

}  // namespace
}  // namespace tavlo
