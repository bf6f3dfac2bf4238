// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/option_text.h"

#include <gtest/gtest.h>

namespace tavlo::hubsim {
namespace {

TEST(HubOptionText, FirmwareIsThreeDigitsWithAPoint) {
  EXPECT_EQ(ParseFirmware("1.38"), 38);
  EXPECT_EQ(ParseFirmware("1.00"), 0);
  EXPECT_EQ(ParseFirmware("2.27"), 127);
  for (const char* bad :
       {"", "1", "1.3", "1.380", "0.99", "2.28", "-1.38", "1.3x", "1,38", "1.-8", ".38", "1.+8"}) {
    EXPECT_FALSE(ParseFirmware(bad).has_value()) << bad;
  }
}

TEST(HubOptionText, DrivesAreModelCodesByAxis) {
  EXPECT_EQ(ParseDrives("1,4,3"), (std::array<int, 8>{1, 4, 3, 0, 0, 0, 0, 0}));
  EXPECT_EQ(ParseDrives("0,50,100,1,1,1,1,1"), (std::array<int, 8>{0, 50, 100, 1, 1, 1, 1, 1}));
  for (const char* bad : {"", "51", "1,,2", "1,2,", "a", "1 ,2", "-1", "1,1,1,1,1,1,1,1,1"}) {
    EXPECT_FALSE(ParseDrives(bad).has_value()) << bad;
  }
}

TEST(HubOptionText, RevisionsLeaveTheAxesThatAreNotNamed) {
  const std::array<int, 8> others{200, 200, 200, 200, 200, 200, 200, 201};
  EXPECT_EQ(ParseRevisions("1.89,0.00,9.99", others),
            (std::array<int, 8>{189, 0, 999, 200, 200, 200, 200, 201}));
  EXPECT_FALSE(ParseRevisions("10.00", others).has_value());
  EXPECT_FALSE(ParseRevisions("1.9", others).has_value());
}

TEST(HubOptionText, AxesAndInputsCountFromOne) {
  EXPECT_EQ(ParseAxis("1"), 0);
  EXPECT_EQ(ParseAxis("8"), 7);
  for (const char* bad : {"", "0", "9", "-1", "one", "1 "}) EXPECT_FALSE(ParseAxis(bad)) << bad;
  EXPECT_EQ(ParseInput("1"), 0);
  EXPECT_EQ(ParseInput("8"), 7);
  EXPECT_EQ(ParseInput("X0"), 8);
  EXPECT_EQ(ParseInput("x7"), 15);
  for (const char* bad : {"", "0", "9", "X", "X8", "Y1", "-1"}) EXPECT_FALSE(ParseInput(bad)) << bad;
}

TEST(HubOptionText, AFaultIsACodeOrAName) {
  EXPECT_EQ(ParseFault("0"), 0);
  EXPECT_EQ(ParseFault("16383"), 16383);
  EXPECT_EQ(ParseFault("position-limit"), 1);
  EXPECT_EQ(ParseFault("foldback"), 1 << 13);
  for (const char* bad : {"", "16384", "-1", "fold"}) EXPECT_FALSE(ParseFault(bad)) << bad;
}

TEST(HubOptionText, CountsGoBothWays) {
  EXPECT_EQ(ParseCounts("10000"), 10000);
  EXPECT_EQ(ParseCounts("-10000"), -10000);
  for (const char* bad : {"", "-", "10001", "-10001", "1.5"}) EXPECT_FALSE(ParseCounts(bad)) << bad;
}

TEST(HubOptionText, HexGoesBothWays) {
  EXPECT_EQ(ToHex(std::string("\xFE\x00\x7f", 3)), "fe007f");
  EXPECT_EQ(ParseHex("FE 00 7f"), std::string("\xFE\x00\x7f", 3));
  for (const char* bad : {"", "f", "fe0", "xy", " "}) EXPECT_FALSE(ParseHex(bad).has_value()) << bad;
}

}  // namespace
}  // namespace tavlo::hubsim
