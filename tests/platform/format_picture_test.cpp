// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "platform/number_format.h"

namespace tavlo {
namespace {

struct FormatCase {
  double value;
  std::string_view picture;
  std::string_view text;
};

void ExpectFormats(std::initializer_list<FormatCase> cases) {
  for (const FormatCase& c : cases) {
    EXPECT_EQ(Format(c.value, c.picture), c.text) << c.value << " as " << c.picture;
  }
}

TEST(FormatPicture, ForcedDigitsAlwaysShow) {
  ExpectFormats({{0, "0", "0"},
                 {7, "0", "7"},
                 {12345, "0", "12345"},
                 {0, "0.0", "0.0"},
                 {1, "0.0", "1.0"},
                 {0, "0.00", "0.00"},
                 {1.38, "0.00", "1.38"},
                 {1.05, "0.00", "1.05"},
                 {2, "0.00", "2.00"}});
}

TEST(FormatPicture, OptionalDigitsShowOnlyWhenThereIsSomethingToShow) {
  ExpectFormats({{0.5, "#.0#", ".5"},
                 {0, "#.0#", ".0"},
                 {2, "#.0#", "2.0"},
                 {2.25, "#.0#", "2.25"},
                 {2.5, "#.0#", "2.5"},
                 {12345.6, "#.0#", "12345.6"},
                 {0.004, "#.0#", ".0"},
                 {0.006, "#.0#", ".01"}});
}

TEST(FormatPicture, SpeedPictures) {
  ExpectFormats({{3, "#0.0000", "3.0000"},
                 {0.025, "#0.0000", "0.0250"},
                 {1.2325, "#0.0000", "1.2325"},
                 {123.45678, "#0.0000", "123.4568"},
                 {3, "#0.000#", "3.000"},
                 {1.2325, "#0.000#", "1.2325"},
                 {0.0125, "#0.000#", "0.0125"},
                 {0.5, "#0", "1"},
                 {0.4, "#0", "0"},
                 {50, "#0", "50"}});
}

TEST(FormatPicture, AccelPictures) {
  ExpectFormats({{100, "###0.0#", "100.0"},
                 {0, "###0.0#", "0.0"},
                 {1234.567, "###0.0#", "1234.57"},
                 {12345.6, "###0.0#", "12345.6"},
                 {0.05, "###0.0", "0.1"},
                 {100, "###0.0", "100.0"},
                 {100, "####", "100"},
                 {3000, "####", "3000"},
                 {123456, "####", "123456"}});
}

TEST(FormatPicture, FourOptionalDigitsOfAValueThatRoundsToZeroAreTheEmptyText) {
  ExpectFormats({{0, "####", ""}, {0.4999, "####", ""}, {-0.4, "####", ""}, {0.5, "####", "1"}});
}

TEST(FormatPicture, DistancePictures) {
  ExpectFormats({{1, "#########0.0####", "1.0"},
                 {0.00005, "#########0.0####", "0.00005"},
                 {0.000004, "#########0.0####", "0.0"},
                 {16000000, "#########0.0####", "16000000.0"},
                 {1.123456, "#########0.0####", "1.12346"},
                 {-2.5, "#########0.0####", "-2.5"},
                 {20000, "#,###,###", "20,000"},
                 {0, "#,###,###", ""},
                 {999, "#,###,###", "999"},
                 {1000, "#,###,###", "1,000"},
                 {16000000, "#,###,###", "16,000,000"},
                 {1234567, "#,###,###", "1,234,567"},
                 {2147483647, "#,###,###", "2,147,483,647"},
                 {-1234, "#,###,###", "-1,234"},
                 {-123, "#,###,###", "-123"}});
}

TEST(FormatPicture, TimeCurrentAndGraphPictures) {
  ExpectFormats({{0.1, "####0.000", "0.100"},
                 {12.3456, "####0.000", "12.346"},
                 {1.53, "##0.00", "1.53"},
                 {100, "##0.00", "100.00"},
                 {0.05, "##0.000", "0.050"},
                 {1, "#0.00", "1.00"},
                 {300, "#0.00", "300.00"},
                 {0.01, "#0.00", "0.01"},
                 {0.1, "#0.0", "0.1"},
                 {0.05, ".000", ".050"},
                 {0, ".000", ".000"},
                 {1.5, ".000", "1.500"}});
}

TEST(FormatPicture, RoundsHalfAwayFromZeroOnFifteenSignificantDigits) {
  ExpectFormats({{0.125, "0.00", "0.13"},
                 {-0.125, "0.00", "-0.13"},
                 {2.5, "0", "3"},
                 {-2.5, "0", "-3"},
                 {1.5, "0", "2"},
                 // Binary halves just below the decimal one still count as the half they read as.
                 {1.005, "0.00", "1.01"},
                 {2.675, "0.00", "2.68"},
                 {1.115, "0.00", "1.12"},
                 {0.285, "0.00", "0.29"},
                 {1.45, "0.0", "1.5"},
                 {0.00005, "#0.0000", "0.0001"},
                 {0.1 + 0.2, "0.00000", "0.30000"},
                 {123456789012345678.0, "0", "123456789012346000"},
                 {9.995, "0.00", "10.00"},
                 {999.995, "#0.00", "1000.00"},
                 {0.99999999999999999, "0.00", "1.00"}});
}

TEST(FormatPicture, AValueThatShowsAsZeroShowsNoSign) {
  ExpectFormats({{-0.00001, "#0.0000", "0.0000"},
                 {-0.0, "0", "0"},
                 {-0.4, "0", "0"},
                 {-0.04, "#.0#", "-.04"},
                 {-0.004, "#.0#", ".0"},
                 {-0.0, "#0.00", "0.00"},
                 {-1.5, "#0.0000", "-1.5000"}});
}

TEST(FormatPicture, AFloatShowsTheDigitsItHolds) {
  EXPECT_EQ(Format(1.1F, "#0.0000"), "1.1000");
  EXPECT_EQ(Format(1.38F, "0.00"), "1.38");
  EXPECT_EQ(Format(0.9F, "#0.00"), "0.90");
}

TEST(FormatPicture, AnyValueHasAnEnd) {
  constexpr std::string_view kPictures[] = {
      "0", "#0.0000", "#.0#", "#########0.0####", "#,###,###", "####", "####0.000", "", ".", "0.0"};
  const double values[] = {std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::max(),
                           -std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::denorm_min(),
                           static_cast<double>(std::numeric_limits<float>::max())};
  for (const std::string_view picture : kPictures) {
    for (const double value : values) EXPECT_LT(Format(value, picture).size(), 1000U) << picture;
  }
}

}  // namespace
}  // namespace tavlo
