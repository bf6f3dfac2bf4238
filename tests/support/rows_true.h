// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>

#include "session/desk.h"
#include "session/grid.h"

namespace tavlo::testing {

/// What the rows and arrows show is what they would show if the program were shown anew, and the line that
/// limits go to is the program's.
inline void ExpectRowsTrue(Desk& desk) {
  Source& source = desk.source;
  const RowsState shown = source.shown;
  ShowProgram(desk);
  for (int line = 0; line < kLines; ++line) {
    const Row& row = shown.rows[line];
    const Row& anew = source.shown.rows[line];
    EXPECT_EQ(row.desc, anew.desc) << line;
    EXPECT_EQ(row.state, anew.state) << line;
    EXPECT_TRUE(row.icon == anew.icon) << line;
    EXPECT_EQ(row.frame, anew.frame) << line;
    EXPECT_EQ(row.label, anew.label) << line;
  }
  EXPECT_EQ(shown.arrows, source.shown.arrows);
  EXPECT_EQ(shown.LimitLine, LimitLineOf(source.program));
}

}  // namespace tavlo::testing
