// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "platform/number_format.h"

namespace tavlo {
namespace {

TEST(NumberText, ANumberJoinedIntoATextHasALeadingZeroAndUpToFifteenDigits) {
  struct {
    double value;
    std::string_view text;
  } const cases[] = {{0.01, "0.01"},
                     {0, "0"},
                     {-0.5, "-0.5"},
                     {1, "1"},
                     {10, "10"},
                     {1.25, "1.25"},
                     {300, "300"},
                     {0.001, "0.001"},
                     {0.1 + 0.2, "0.3"},
                     {1.0 / 3, "0.333333333333333"},
                     {2.0 / 3, "0.666666666666667"},
                     {2147483.647, "2147483.647"},
                     {123456789012345, "123456789012345"}};
  for (const auto& c : cases) EXPECT_EQ(Joined(c.value), c.text);
}

TEST(NumberText, ASingleJoinedIntoATextShowsItsSevenDigits) {
  EXPECT_EQ(Joined(1.53F), "1.53");
  EXPECT_EQ(Joined(1.05F), "1.05");
  EXPECT_EQ(Joined(0.5F), "0.5");
  EXPECT_EQ(Joined(1.0F), "1");
}

TEST(NumberText, AWholeNumberJoinedIntoATextIsItsDigits) {
  EXPECT_EQ(Joined(0), "0");
  EXPECT_EQ(Joined(-17), "-17");
  EXPECT_EQ(Joined(std::numeric_limits<int>::min()), "-2147483648");
}

TEST(NumberText, ANumberPrintedAsANumberHasABlankOrSignBeforeAndABlankBehindAndNoLeadingZero) {
  EXPECT_EQ(Printed(0.01), " .01 ");
  EXPECT_EQ(Printed(5), " 5 ");
  EXPECT_EQ(Printed(0), " 0 ");
  EXPECT_EQ(Printed(-3), "-3 ");
  EXPECT_EQ(Printed(-0.5), "-.5 ");
  EXPECT_EQ(Printed(12.25), " 12.25 ");
}

TEST(NumberText, ASingleInAFileIsTheShortestDecimalWithoutALeadingZero) {
  struct {
    float value;
    std::string_view text;
  } const cases[] = {{3.0F, "3"},
                     {0.5F, ".5"},
                     {-1.25F, "-1.25"},
                     {-0.5F, "-.5"},
                     {0.0F, "0"},
                     {0.1F, ".1"},
                     {1.1F, "1.1"},
                     {0.025F, ".025"},
                     {100.0F, "100"},
                     {9999999.0F, "9999999"},
                     {1000000.0F, "1000000"},
                     {0.0001F, ".0001"},
                     {0.00001F, ".00001"}};
  for (const auto& c : cases) EXPECT_EQ(Written(c.value), c.text);
}

TEST(NumberText, ASingleGoesToEFormFromTenMillion) {
  EXPECT_EQ(Written(10000000.0F), "1E+07");
  EXPECT_EQ(Written(-10000000.0F), "-1E+07");
  EXPECT_EQ(Written(12500000.0F), "1.25E+07");
  EXPECT_EQ(Written(16777216.0F), "1.6777216E+07");
  EXPECT_EQ(Written(1e10F), "1E+10");
  EXPECT_EQ(Written(3.4e38F), "3.4E+38");
}

TEST(NumberText, ADoubleInAFileIsTheShortestDecimal) {
  EXPECT_EQ(Written(0.0), "0");
  EXPECT_EQ(Written(199.0), "199");
  EXPECT_EQ(Written(0.5), ".5");
  EXPECT_EQ(Written(-1.25), "-1.25");
  EXPECT_EQ(Written(0.1), ".1");
  EXPECT_EQ(Written(1e14), "100000000000000");
  EXPECT_EQ(Written(1e15), "1E+15");
}

TEST(NumberText, EveryFiniteSingleReadsBackToItself) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    const auto bits = static_cast<std::uint32_t>(random());
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    const std::string text = Written(value);
    const auto back = ParseNumber(text);
    ASSERT_TRUE(back.has_value()) << text;
    EXPECT_EQ(static_cast<float>(*back), value) << text;
    EXPECT_NE(text.front(), '+');
    EXPECT_EQ(text.find(' '), std::string::npos);
  }
}

TEST(NumberText, EveryFiniteDoubleReadsBackToItself) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 5000; ++i) {
    const std::uint64_t bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    const auto back = ParseNumber(Written(value));
    ASSERT_TRUE(back.has_value()) << Written(value);
    EXPECT_EQ(*back, value);
  }
}

TEST(Val, TakesTheLongestNumberAtTheStart) {
  struct {
    std::string_view text;
    double value;
  } const cases[] = {{"12", 12},      {"  12", 12},  {"-3.5", -3.5},     {"+4", 4},     {".5", 0.5},
                     {"-.5", -0.5},   {"5.", 5},     {"1.23 rev", 1.23}, {"12abc", 12}, {"1.2.3", 1.2},
                     {"1,5", 1},      {"1e3", 1000}, {"1E3", 1000},      {"1D3", 1000}, {"1d+2", 100},
                     {"25E-1x", 2.5}, {"1E", 1},     {"1E+", 1},         {"1E x", 1}};
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(Val(c.text), c.value) << c.text;
}

TEST(Val, ATextWithoutANumberGivesZero) {
  for (const std::string_view text :
       {"", "   ", "abc", "-", "+", ".", "-.", "E5", "nan", "inf", "$5", "--1"}) {
    EXPECT_EQ(Val(text), 0) << text;
  }
}

TEST(Val, KnowsNoHexadecimalAndNoBlanksInside) {
  EXPECT_EQ(Val("&H10"), 0);
  EXPECT_EQ(Val("0x10"), 0);
  EXPECT_EQ(Val("1 000"), 1);
  EXPECT_EQ(Val("- 5"), 0);
  EXPECT_EQ(Val("1 E3"), 1);
}

TEST(Val, NeverFailsOnHugeOrLongNumbers) {
  EXPECT_FALSE(std::isnan(Val("1E999")));
  EXPECT_EQ(Val("1E-999"), 0);
  EXPECT_FALSE(std::isnan(Val(std::string(100000, '9'))));
  EXPECT_DOUBLE_EQ(Val("0." + std::string(1000, '3')), 1.0 / 3);
}

TEST(ParseNumber, TakesOnlyAWholeText) {
  EXPECT_EQ(ParseNumber("12"), 12);
  EXPECT_EQ(ParseNumber(" 8 "), 8);
  EXPECT_EQ(ParseNumber("-.5"), -0.5);
  EXPECT_EQ(ParseNumber("1E+07"), 1e7);
  for (const std::string_view text :
       {"", " ", "12a", "a12", "1 2", "1,2", "-", ".", "nan", "inf", "0x10", "1E"}) {
    EXPECT_FALSE(ParseNumber(text).has_value()) << text;
  }
}

TEST(RoundHalfEven, TiesGoToTheEvenNumber) {
  struct {
    double value;
    double rounded;
  } const cases[] = {{0.5, 0},  {1.5, 2},  {2.5, 2}, {3.5, 4}, {-0.5, 0}, {-1.5, -2},   {-2.5, -2},
                     {0.49, 0}, {0.51, 1}, {7.5, 8}, {2.4, 2}, {-7, -7},  {1e18, 1e18}, {1e300, 1e300}};
  for (const auto& c : cases) EXPECT_EQ(RoundHalfEven(c.value), c.rounded) << c.value;
}

}  // namespace
}  // namespace tavlo
