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

TEST(HubOptionText, HexGoesBothWays) {
  EXPECT_EQ(ToHex(std::string("\xFE\x00\x7f", 3)), "fe007f");
  EXPECT_EQ(ParseHex("FE 00 7f"), std::string("\xFE\x00\x7f", 3));
  for (const char* bad : {"", "f", "fe0", "xy", " "}) EXPECT_FALSE(ParseHex(bad).has_value()) << bad;
}

}  // namespace
}  // namespace tavlo::hubsim
