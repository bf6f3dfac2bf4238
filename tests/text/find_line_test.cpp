// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/find_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace tavlo::testing {
namespace {

/// Line 10 goes to line 41, 20 is a comment, 30 a prompt of two lines, 40 a name with an "&".
Program Searched() {
  Program program;
  program.Prog[10] = {.Type = GT, .LineNum = 40};
  program.Prog[20] = {.Type = CM, .Text = "Cut & stack, \xC4pfel"};
  program.Prog[30] = {.Type = MMI, .Text = "How many\npieces?", .SubType = GetCount};
  program.Prog[40] = {.Type = WT, .Time = 100};
  return program;
}

struct Case {
  const char* what;
  const char* words;
  int from;
  SearchWay way;
  std::optional<int> line;
  bool wrapped = false;
};

TEST(FindLine, LooksThroughWhatTheRowsAndTheTextsOfTheOperatorShow) {
  constexpr auto kDown = SearchWay::Down;
  constexpr auto kUp = SearchWay::Up;
  const std::vector<Case> cases = {
      {"a short text", "go to", 0, kDown, 10},
      {"in either case", "GO TO LINE 41", 0, kDown, 10},
      {"a comment", "stack", 0, kDown, 20},
      {"an ampersand as it is shown", "cut & s", 0, kDown, 20},
      {"not as a label holds it", "cut && s", 0, kDown, std::nullopt},
      {"a letter with an accent", "\xE4PFEL", 0, kDown, 20},
      {"the signs for times and divided by are no letters", "\xF7", 0, kDown, std::nullopt},
      {"a prompt", "pieces", 0, kDown, 30},
      {"across the end of a line of the display", "many pieces", 0, kDown, 30},
      {"the line itself", "stack", 20, kDown, 20},
      {"from the line behind it, round", "stack", 21, kDown, 20, true},
      {"upwards", "wait", 199, kUp, 40},
      {"upwards, round", "wait", 39, kUp, 40, true},
      {"upwards, the line itself", "wait", 40, kUp, 40},
      {"nothing like it", "spindle", 100, kDown, std::nullopt},
      {"no words", "", 0, kDown, std::nullopt},
  };
  const Program program = Searched();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const auto found = FindLine(program, c.words, c.from, c.way);
    ASSERT_EQ(found.has_value(), c.line.has_value());
    if (!found) continue;
    EXPECT_EQ(found->line, *c.line);
    EXPECT_EQ(found->wrapped, c.wrapped);
  }
}

TEST(FindLine, TheTextThatAnotherKindHasLeftBehindIsNotShownAndNotFound) {
  Program program;
  program.Prog[3] = {.Type = FL, .Text = "stack"};
  EXPECT_FALSE(FindLine(program, "stack", 0, SearchWay::Down));
}

}  // namespace
}  // namespace tavlo::testing
