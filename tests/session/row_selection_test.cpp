// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/row_selection.h"

#include <gtest/gtest.h>

#include <vector>

namespace tavlo::testing {
namespace {

struct Act {
  enum class What { GoTo, ExtendTo } what;
  int line;
};
struct SelectionCase {
  const char* what;
  std::vector<Act> acts;
  int current;
  LineRange rows;
};
constexpr auto kGo = Act::What::GoTo;
constexpr auto kExtend = Act::What::ExtendTo;

TEST(RowSelection, ReachesFromWhereItBeganToTheCurrentRow) {
  const std::vector<SelectionCase> cases = {
      {"at first", {}, 0, {0, 1}},
      {"one row", {{kGo, 7}}, 7, {7, 1}},
      {"downwards", {{kGo, 7}, {kExtend, 9}}, 9, {7, 3}},
      {"upwards", {{kGo, 7}, {kExtend, 5}}, 5, {5, 3}},
      {"across its beginning", {{kGo, 7}, {kExtend, 9}, {kExtend, 4}}, 4, {4, 4}},
      {"back to its beginning", {{kGo, 7}, {kExtend, 9}, {kExtend, 7}}, 7, {7, 1}},
      {"ended by a plain step", {{kGo, 7}, {kExtend, 9}, {kGo, 8}}, 8, {8, 1}},
      {"all rows", {{kGo, 0}, {kExtend, 199}}, 199, {0, 200}},
      {"beyond the last row", {{kGo, 198}, {kExtend, 250}}, 199, {198, 2}},
      {"before the first row", {{kGo, 1}, {kExtend, -9}}, 0, {0, 2}},
      {"from a row that does not exist", {{kGo, 400}, {kExtend, 198}}, 198, {198, 2}},
  };
  for (const SelectionCase& row : cases) {
    SCOPED_TRACE(row.what);
    RowSelection selection;
    for (const Act& act : row.acts) {
      act.what == kGo ? selection.GoTo(act.line) : selection.ExtendTo(act.line);
    }
    EXPECT_EQ(selection.Current(), row.current);
    EXPECT_EQ(selection.Rows(), row.rows);
    EXPECT_EQ(selection.IsRange(), row.rows.count > 1);
    for (int line = 0; line < kLines; ++line) EXPECT_EQ(selection.Holds(line), row.rows.Holds(line)) << line;
  }
}

TEST(RowSelection, OfGivenRowsEndsAtTheLast) {
  RowSelection selection;
  selection.Select({12, 4});
  EXPECT_EQ(selection.Current(), 15);
  EXPECT_EQ(selection.Rows(), (LineRange{12, 4}));
}

}  // namespace
}  // namespace tavlo::testing
