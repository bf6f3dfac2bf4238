// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/encodings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/bytes.h"

namespace tavlo {
namespace {

using testing::Bytes;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

TEST(Encoding, Pack2NZIsHighByteFirstAndSendsZeroAsOne) {
  EXPECT_EQ(Pack2NZ(0), Bytes({0x00, 0x01}));
  EXPECT_EQ(Pack2NZ(1), Bytes({0x00, 0x01}));
  EXPECT_EQ(Pack2NZ(100), Bytes({0x00, 0x64}));
  EXPECT_EQ(Pack2NZ(0x1234), Bytes({0x12, 0x34}));
  EXPECT_EQ(Pack2NZ(65535), Bytes({0xFF, 0xFF}));
}

TEST(Encoding, BitsAboveTheFieldAreDropped) {
  EXPECT_EQ(Pack2NZ(65536), Bytes({0x00, 0x00})) << "not corrected to 1, since the value is not 0";
  EXPECT_EQ(Pack2NZ(kHighest), Bytes({0xFF, 0xFF}));
  EXPECT_EQ(Pack3(16777216), Bytes({0, 0, 0}));
  EXPECT_EQ(Pack3(16777217), Bytes({0, 0, 1}));
  EXPECT_EQ(Raw2(65537), Bytes({0, 1}));
}

TEST(Encoding, Pack3AndRaw2KeepZero) {
  EXPECT_EQ(Pack3(0), Bytes({0, 0, 0}));
  EXPECT_EQ(Pack3(20000), Bytes({0x00, 0x4E, 0x20}));
  EXPECT_EQ(Pack3(16777215), Bytes({0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(Raw2(0), Bytes({0, 0}));
  EXPECT_EQ(Raw2(9999), Bytes({0x27, 0x0F}));
}

TEST(Encoding, SpeedLeavesAsFortiethsOfARevolution) {
  EXPECT_EQ(PackSpeed(3.0F), Bytes({0x00, 0x78}));
  EXPECT_EQ(PackSpeed(0.0F), Bytes({0x00, 0x01}));
  EXPECT_EQ(PackSpeed(100.0F), Bytes({0x0F, 0xA0}));
  EXPECT_EQ(PackSpeed(1638.375F), Bytes({0xFF, 0xFF}));
}

TEST(Encoding, ASpeedThatRoundsToZeroGoesOutAsOne) {
  EXPECT_EQ(PackSpeed(0.01F), Bytes({0, 1}));
}

TEST(Encoding, ASpeedOf1638Point4WrapsSilentlyToTwoZeroBytes) {
  EXPECT_EQ(PackSpeed(1638.4F), Bytes({0x00, 0x00}));
}

TEST(Encoding, SpeedsRoundHalfToEven) {
  EXPECT_EQ(PackSpeed(0.0625F), Bytes({0, 2}));
  EXPECT_EQ(PackSpeed(0.1875F), Bytes({0, 8}));
  EXPECT_EQ(PackSpeed(0.3125F), Bytes({0, 12}));
}

TEST(Encoding, ASpeedIsTakenAsTheSingleItIsAndRoundedOnce) {
  // The nearest Single of 0.0875 lies below it, so that 40 times it is no half.
  EXPECT_EQ(PackSpeed(0.0875F), Bytes({0, 3}));
}

TEST(Encoding, ANegativeValueHasNoEncoding) {
  for (const std::int32_t x : {-1, -256, -65536, kLowest}) {
    EXPECT_THROW((void)Pack2NZ(x), EncodeError) << x;
    EXPECT_THROW((void)Pack3(x), EncodeError) << x;
    EXPECT_THROW((void)Raw2(x), EncodeError) << x;
    EXPECT_THROW((void)WholeByte(x), EncodeError) << x;
  }
  EXPECT_THROW((void)PackSpeed(-1.0F), EncodeError);
}

TEST(Encoding, ASpeedThatIsNoNumberHasNoEncoding) {
  for (const float speed : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max()}) {
    EXPECT_THROW((void)PackSpeed(speed), EncodeError);
  }
}

TEST(Encoding, AWholeByteAbove255Fails) {
  EXPECT_EQ(WholeByte(0), '\0');
  EXPECT_EQ(WholeByte(255), '\xff');
  EXPECT_THROW((void)WholeByte(256), EncodeError);
  EXPECT_THROW((void)WholeByte(1000), EncodeError);
  EXPECT_THROW((void)WholeByte(kHighest), EncodeError);
}

TEST(Encoding, WholeLongFailsWhereTheValueDoesNotFit) {
  EXPECT_EQ(WholeLong(2147483647.0, "a value"), kHighest);
  EXPECT_EQ(WholeLong(-2147483648.0, "a value"), kLowest);
  for (const double x : {2147483648.0, -2147483649.0, 1e300, std::nan(""), HUGE_VAL}) {
    EXPECT_THROW((void)WholeLong(x, "a value"), EncodeError) << x;
  }
}

TEST(Encoding, AnErrorNamesTheValue) {
  try {
    (void)Pack3(-1, "the distance");
    FAIL();
  } catch (const EncodeError& error) {
    EXPECT_NE(std::string(error.what()).find("the distance"), std::string::npos) << error.what();
  }
}

TEST(Encoding, RotDrvTurnsTheByteRightByOneBit) {
  for (int x = 0; x < 256; ++x) EXPECT_EQ(RotDrv(x), x % 2 * 128 + x / 2) << x;
  EXPECT_EQ(RotDrv(1), 128);
  EXPECT_EQ(RotDrv(0x80), 0x40);
}

TEST(Encoding, SumStrAddsTheByteValues) {
  EXPECT_EQ(SumStr(""), 0);
  EXPECT_EQ(SumStr(Bytes({255, 255, 1})), 511);
  EXPECT_EQ(SumStr(std::string(8192, '\xff')), 8192 * 255);
}

}  // namespace
}  // namespace tavlo
