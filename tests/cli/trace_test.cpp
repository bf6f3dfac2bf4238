// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/trace.h"

#include <gtest/gtest.h>

namespace tavlo::testing {
namespace {

TEST(Trace, ShowsTimeDirectionHexAndTheBytesAsTheyRead) {
  EXPECT_EQ(cli::TraceRows(0, true, "F"),
            "    0.000 -> 46                                               F\n");
  EXPECT_EQ(cli::TraceRows(12.3456, false, std::string("\xfe\0\x01 ~", 5)),
            "   12.346 <- fe 00 01 20 7e                                   ... ~\n");
}

TEST(Trace, LongBlocksTakeSeveralRowsOfSixteen) {
  EXPECT_EQ(cli::TraceRows(1, true, "0123456789abcdefg"),
            "    1.000 -> 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66  0123456789abcdef\n"
            "    1.000 -> 67                                               g\n");
  EXPECT_EQ(cli::TraceRows(1, true, ""), "");
}

}  // namespace
}  // namespace tavlo::testing
