// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "motion/scaled_program.h"
#include "motion/units.h"

namespace tavlo {
namespace {

using testing::NewProgram;
using testing::WithScale;

TEST(SpeedEntry, BecomesAMultipleOf50StepsPerSecondRoundedDown) {
  const Program program = WithScale(20000, 20000, false);
  struct {
    std::string_view text;
    double rev_s;
    std::string_view shown;
    int slider;
  } const cases[] = {{"1.23", 1.23, "1.2300", 49},     {"1.2345", 1.2325, "1.2325", 49},
                     {"3", 3, "3.0000", 120},          {"0.0300001", 0.03, "0.0300", 1},
                     {"2.5 rps", 2.5, "2.5000", 100},  {"  7", 7, "7.0000", 280},
                     {"49.99999", 50, "50.0000", 2000}};
  for (const auto& c : cases) {
    const SpeedEntry entry = CleanUpSpeed(program, c.text, 0);
    EXPECT_DOUBLE_EQ(entry.rev_s, c.rev_s) << c.text;
    EXPECT_EQ(entry.text, c.shown) << c.text;
    EXPECT_EQ(entry.slider, c.slider) << c.text;
  }
}

TEST(SpeedEntry, ABadEntryIsForcedIntoRange) {
  const Program program = WithScale(20000, 20000);
  for (const std::string_view text : {"", "abc", "-5", "0", "0.01", "-1E300"}) {
    EXPECT_EQ(CleanUpSpeed(program, text, 0).rev_s, 0.025) << text;
    EXPECT_EQ(CleanUpSpeed(program, text, 0).text, "0.0250");
    EXPECT_EQ(CleanUpSpeed(program, text, 0).slider, 1);
  }
  for (const std::string_view text : {"50.1", "1000", "1E300"}) {
    EXPECT_EQ(CleanUpSpeed(program, text, 0).rev_s, 50) << text;
    EXPECT_EQ(CleanUpSpeed(program, text, 0).text, "50.0000");
    EXPECT_EQ(CleanUpSpeed(program, text, 0).slider, 2000);
  }
}

TEST(SpeedEntry, IsTakenAndShownInUserUnits) {
  const SpeedEntry entry = CleanUpSpeed(WithScale(20000, 5000), "4", 0);
  EXPECT_DOUBLE_EQ(entry.rev_s, 1);
  EXPECT_EQ(entry.text, "4.0000");
  EXPECT_EQ(entry.slider, 40);
}

TEST(SpeedEntry, AtVeryLowResolutionTheQuantisedValueCanFallBelowTheMinimumEvenTo0) {
  const SpeedEntry entry = CleanUpSpeed(WithScale(200, 200), "0.1", 0);
  EXPECT_EQ(entry.rev_s, 0);
  EXPECT_EQ(entry.text, "0.0000");
  EXPECT_EQ(entry.slider, 0);
}

TEST(SpeedEntry, WholeStepsRoundHalfToEvenBeforeTheCut) {
  // 49.5 steps/s rounds to 50, 48.5 to 48 and so falls below the first multiple.
  const Program program = WithScale(1000, 1000, false);
  EXPECT_DOUBLE_EQ(CleanUpSpeed(program, "0.0495", 0).rev_s, 0.05);
  EXPECT_DOUBLE_EQ(CleanUpSpeed(program, "0.0485", 0).rev_s, 0);
  // 99.5 steps/s ties to 100; 149.5 ties to 150.
  EXPECT_DOUBLE_EQ(CleanUpSpeed(program, "0.0995", 0).rev_s, 0.1);
}

TEST(SecondSpeedEntry, IsNeverAboveTheFirstSpeed) {
  const Program program = WithScale(20000, 20000);
  EXPECT_DOUBLE_EQ(CleanUpSpeed2(program, "5", 0, 3).rev_s, 3);
  EXPECT_EQ(CleanUpSpeed2(program, "5", 0, 3).text, "3.0000");
  EXPECT_DOUBLE_EQ(CleanUpSpeed2(program, "1.23", 0, 3).rev_s, 1.23);
  EXPECT_DOUBLE_EQ(CleanUpSpeed2(program, "", 0, 3).rev_s, 0.025);
}

TEST(SecondSpeedEntry, IsShownAsFormatSpeedShowsIt) {
  EXPECT_EQ(CleanUpSpeed2(WithScale(20000, 20000, false), "1.5", 0, 3).text, "1.500");
  EXPECT_EQ(CleanUpSpeed2(WithScale(20000, 5000), "4", 0, 3).text, "4.0000");
}

TEST(AccelEntry, IsLimitedAndShownAgain) {
  const Program units = WithScale(20000, 20000);
  EXPECT_EQ(CleanUpAccel(units, "100", 0).text, "100.0");
  EXPECT_EQ(CleanUpAccel(units, "100", 0).slider, 100);
  EXPECT_EQ(CleanUpAccel(units, "0", 0).slider, 1);
  EXPECT_EQ(CleanUpAccel(units, "", 0).text, "1.0");
  EXPECT_EQ(CleanUpAccel(units, "99999", 0).slider, 3000);
  EXPECT_EQ(CleanUpAccel(units, "99999", 0).text, "3000.0");
  EXPECT_EQ(CleanUpAccel(units, "2.5", 0).slider, 2);
  EXPECT_EQ(CleanUpAccel(units, "3.5", 0).slider, 4);
  EXPECT_EQ(CleanUpAccel(units, "1E300", 0).slider, 3000);
}

TEST(AccelEntry, InUserUnitsItBecomesWholeRevolutions) {
  const Program program = WithScale(20000, 5000);
  EXPECT_EQ(CleanUpAccel(program, "10", 0).slider, 2);
  EXPECT_EQ(CleanUpAccel(program, "10", 0).text, "8.0");
}

TEST(AccelEntry, WithoutUserUnitsTheSliderRounds) {
  const Program program = WithScale(20000, 5000, false);
  EXPECT_EQ(CleanUpAccel(program, "10.6", 0).slider, 11);
  EXPECT_EQ(CleanUpAccel(program, "10.6", 0).text, "11");
  EXPECT_EQ(CleanUpAccel(program, "0.5", 0).slider, 1);
}

TEST(JogAccelEntry, ReadsTheTextThroughTheUnitsWhetherTheAxisUsesThemOrNot) {
  EXPECT_EQ(CleanUpJogAccel(WithScale(20000, 5000), "10", 0).text, "8.0");
  EXPECT_EQ(CleanUpJogAccel(WithScale(20000, 5000, false), "10", 0).text, "2");
  EXPECT_EQ(CleanUpJogAccel(WithScale(20000, 5000, false), "100", 0).text, "25");
  EXPECT_EQ(CleanUpJogAccel(WithScale(20000, 5000, false), "", 0).text, "1");
}

TEST(DistanceEntry, IsHeldBetweenOneStepAnd16MillionSteps) {
  const Program steps = WithScale(20000, 20000, false);
  struct {
    std::string_view text;
    int stored;
    std::string_view shown;
  } const cases[] = {{"0", 1, "1"},
                     {"-5", 1, "1"},
                     {"", 1, "1"},
                     {"20000", 20000, "20000"},
                     {"2.5", 2, "2"},
                     {"3.5", 4, "4"},
                     {"16000000", 16000000, "16000000"},
                     {"1E10", 16000000, "16000000"}};
  for (const auto& c : cases) {
    EXPECT_EQ(CleanUpDist(steps, c.text, 0).steps, c.stored) << c.text;
    EXPECT_EQ(CleanUpDist(steps, c.text, 0).text, c.shown) << c.text;
  }
}

TEST(DistanceEntry, ADistanceOfZeroInUserUnitsBecomesOneStep) {
  const DistEntry entry = CleanUpDist(WithScale(20000, 20000), "0", 0);
  EXPECT_EQ(entry.steps, 1);
  EXPECT_EQ(entry.text, "0.00005");
}

TEST(DistanceEntry, InUserUnits) {
  const Program program = WithScale(20000, 20000);
  EXPECT_EQ(CleanUpDist(program, "1.5", 0).steps, 30000);
  EXPECT_EQ(CleanUpDist(program, "1.5", 0).text, "1.5");
  EXPECT_EQ(CleanUpDist(program, "801", 0).steps, 16000000);
  EXPECT_EQ(CleanUpDist(program, "801", 0).text, "800.0");
  EXPECT_EQ(CleanUpDist(program, "0.000125", 0).steps, 2);
  EXPECT_EQ(CleanUpDist(program, "-1", 0).steps, 1);
}

TEST(PositionEntry, ReachesFromMinus16MillionSteps) {
  const Program steps = WithScale(20000, 20000, false);
  EXPECT_EQ(CleanUpPosition(steps, "-500", 0).steps, -500);
  EXPECT_EQ(CleanUpPosition(steps, "-500", 0).text, "-500");
  EXPECT_EQ(CleanUpPosition(steps, "0", 0).steps, 0);
  EXPECT_EQ(CleanUpPosition(steps, "-1E10", 0).steps, -16000000);
  EXPECT_EQ(CleanUpPosition(steps, "1E10", 0).steps, 16000000);
  const Program units = WithScale(20000, 20000);
  EXPECT_EQ(CleanUpPosition(units, "-2.5", 0).steps, -50000);
  EXPECT_EQ(CleanUpPosition(units, "-2.5", 0).text, "-2.5");
  EXPECT_EQ(CleanUpPosition(units, "-900", 0).steps, -16000000);
  EXPECT_EQ(CleanUpPosition(units, "-900", 0).text, "-800.0");
}

TEST(DelayEntry, IsSecondsWithASliderOfTenMilliseconds) {
  struct {
    std::string_view text;
    std::string_view shown;
    int slider;
  } const cases[] = {{"0", "0.01", 1},         {"", "0.01", 1},        {"-3", "0.01", 1},
                     {"0.1", "0.10", 10},      {"1.5 s", "1.50", 150}, {"300", "300.00", 30000},
                     {"301", "300.00", 30000}, {"0.025", "0.02", 2},   {"1E300", "300.00", 30000}};
  for (const auto& c : cases) {
    EXPECT_EQ(CleanUpRetDelay(c.text).text, c.shown) << c.text;
    EXPECT_EQ(CleanUpRetDelay(c.text).slider, c.slider) << c.text;
  }
}

TEST(CountEntry, IsWholeAndHeldBetween1And32767) {
  struct {
    std::string_view text;
    int count;
  } const cases[] = {{"10", 10}, {"", 1},          {"0", 1},         {"-7", 1},       {"2.5", 2},
                     {"3.5", 4}, {"32767", 32767}, {"40000", 32767}, {"1E300", 32767}};
  for (const auto& c : cases) EXPECT_EQ(CleanUpCount(c.text), c.count) << c.text;
}

// The scales that a file may bring though no form takes them.
constexpr std::int32_t kOddScales[] = {
    0, -1, -20000, std::numeric_limits<std::int32_t>::min(), 1, std::numeric_limits<std::int32_t>::max()};
// Infinite, and so near to it that a product is.
constexpr std::string_view kOddEntries[] = {"1E999", "-1E999", "1E308", "-1E308", "0", "-0", "-5", "5", ""};

TEST(AnyEntry, OnAnyScaleIsANumberWithinItsLimits) {
  for (const std::int32_t u : kOddScales) {
    for (const std::int32_t r : kOddScales) {
      for (const bool use_units : {true, false}) {
        const Program program = WithScale(r, u, use_units);
        for (const std::string_view text : kOddEntries) {
          SCOPED_TRACE(std::to_string(u) + " " + std::to_string(r) + " " + std::string(text));
          const SpeedEntry speed = CleanUpSpeed(program, text, 0);
          EXPECT_TRUE(speed.rev_s >= 0 && speed.rev_s <= 50) << speed.rev_s;
          EXPECT_TRUE(speed.slider >= 0 && speed.slider <= 2000) << speed.slider;
          const Speed2Entry second = CleanUpSpeed2(program, text, 0, 3);
          EXPECT_TRUE(second.rev_s >= 0 && second.rev_s <= 3) << second.rev_s;
          for (const AccelEntry& accel :
               {CleanUpAccel(program, text, 0), CleanUpJogAccel(program, text, 0)}) {
            EXPECT_TRUE(accel.slider >= 1 && accel.slider <= kMaxAccel) << accel.slider;
          }
          const DistEntry length = CleanUpDist(program, text, 0);
          EXPECT_TRUE(length.steps >= 1 && length.steps <= kMaxSteps) << length.steps;
          const DistEntry position = CleanUpPosition(program, text, 0);
          EXPECT_LE(std::abs(position.steps), kMaxSteps);
          for (const std::string& shown : {speed.text, second.text, length.text, position.text}) {
            EXPECT_EQ(shown.find_first_not_of("-.0123456789E+"), std::string::npos) << shown;
          }
        }
      }
    }
  }
}

TEST(AnyEntry, AnInfiniteOneIsTheLimit) {
  const Program program = WithScale(20000, 20000);
  EXPECT_EQ(CleanUpSpeed(program, "1E999", 0).rev_s, 50);
  EXPECT_EQ(CleanUpSpeed2(program, "1E999", 0, 3).rev_s, 3);
  EXPECT_EQ(CleanUpAccel(program, "1E999", 0).slider, 3000);
  EXPECT_EQ(CleanUpJogAccel(program, "-1E999", 0).text, "1.0");
  EXPECT_EQ(CleanUpDist(program, "1E999", 0).steps, 16000000);
  EXPECT_EQ(CleanUpPosition(program, "-1E999", 0).steps, -16000000);
  EXPECT_EQ(CleanUpRetDelay("1E999").slider, 30000);
  EXPECT_EQ(CleanUpCount("-1E999"), 1);
}

TEST(AnyEntry, OnAnAxisOfNoStepsIsTheLowerLimit) {
  const Program program = WithScale(20000, 0);
  EXPECT_EQ(CleanUpSpeed(program, "1E999", 0).rev_s, 0.025);
  EXPECT_EQ(CleanUpSpeed(program, "1E999", 0).slider, 1);
  EXPECT_EQ(CleanUpAccel(program, "1E999", 0).slider, 1);
}

TEST(DistanceEntry, OfANegativeScaleIsTakenAsItIsShown) {
  const Program program = WithScale(20000, -1000);
  EXPECT_EQ(FormatDist(program, 2500, 0), "-2.5");
  EXPECT_EQ(CleanUpDist(program, "-2.5", 0).steps, 2500);
  EXPECT_EQ(CleanUpDist(program, "-2.5", 0).text, "-2.5");
  EXPECT_EQ(CleanUpDist(program, "2.5", 0).steps, 1);
  EXPECT_EQ(CleanUpDist(program, "-20000", 0).steps, 16000000);
  EXPECT_EQ(CleanUpPosition(program, "2.5", 0).steps, -2500);
}

}  // namespace
}  // namespace tavlo
