// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "link/receive.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

constexpr char kEsc = 27;
constexpr char kBackspace = 8;

struct DisplayDesk : FakeDesk {
  void Show(std::string_view text) {
    for (const char c : text) Char2MMI(desk.source.display, desk.run, c);
  }
  using Lines = std::array<std::string, 4>;
};

/// "\x1bY", row and column, each 32 more.
std::string MoveTo(int row, int column = 0) {
  return std::string{kEsc, 'Y', static_cast<char>(32 + row), static_cast<char>(32 + column)};
}
const std::string kClear = std::string{kEsc, 'E'};

TEST(Char2MMI, PrintableCharactersAreAppended) {
  DisplayDesk d;
  d.Show(" ~Az09!");
  EXPECT_EQ(d.source.display.textline[0], " ~Az09!");
  EXPECT_EQ(d.source.display.CurRow, 0);
}

TEST(Char2MMI, EachCharacterIsTakenOrIgnoredByItsCode) {
  for (int code = 0; code < 256; ++code) {
    DisplayDesk d;
    d.Show("ab");
    Char2MMI(d.desk.source.display, d.desk.run, static_cast<char>(code));
    const bool printable = code >= ' ' && code <= '~';
    const std::string expected = printable            ? std::string("ab") + static_cast<char>(code)
                                 : code == kBackspace ? std::string("a")
                                                      : std::string("ab");
    EXPECT_EQ(d.source.display.textline[0], expected) << code;
    EXPECT_EQ(d.source.display.CurRow, code == '\n' ? 1 : 0) << code;
    EXPECT_EQ(d.source.display.EscPending, code == kEsc) << code;
  }
}

TEST(Char2MMI, TheTwentiethCharacterEndsALine) {
  DisplayDesk d;
  d.Show(std::string(19, 'a'));
  EXPECT_EQ(d.source.display.CurRow, 0);
  d.Show("b");
  EXPECT_EQ(d.source.display.CurRow, 1);
  d.Show("c");
  EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{std::string(19, 'a') + "b", "c", "", ""}));
}

TEST(Char2MMI, TheLastLineGoesOnGrowing) {
  DisplayDesk d;
  d.Show(std::string(100, 'x'));
  EXPECT_EQ(d.source.display.textline[0].size(), 20u);
  EXPECT_EQ(d.source.display.textline[1].size(), 20u);
  EXPECT_EQ(d.source.display.textline[2].size(), 20u);
  EXPECT_EQ(d.source.display.textline[3].size(), 40u);
  EXPECT_EQ(d.source.display.CurRow, 3);
}

TEST(Char2MMI, ALineFeedGoesDownAsFarAsTheLastLine) {
  DisplayDesk d;
  d.Show("a\nb\nc\nd\ne\n");
  EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{"a", "b", "c", "de"}));
  EXPECT_EQ(d.source.display.CurRow, 3);
}

TEST(Char2MMI, ACarriageReturnIsIgnored) {
  DisplayDesk d;
  d.Show("a\r\nb\rc");
  EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{"a", "bc", "", ""}));
}

TEST(Char2MMI, ABackspaceRemovesTheLastCharacter) {
  DisplayDesk d;
  d.Show("abc\b\bd");
  EXPECT_EQ(d.source.display.textline[0], "ad");
}

TEST(Char2MMI, ABackspaceOnAnEmptyLineGoesUpAndRemovesThere) {
  DisplayDesk d;
  d.Show("ab\n\b");
  EXPECT_EQ(d.source.display.CurRow, 0);
  EXPECT_EQ(d.source.display.textline[0], "a");
}

TEST(Char2MMI, ABackspaceGoesUpOneLineAtMost) {
  DisplayDesk d;
  d.Show("ab\n\n\n\b");
  EXPECT_EQ(d.source.display.CurRow, 2);
  EXPECT_EQ(d.source.display.textline[0], "ab");
}

TEST(Char2MMI, ABackspaceThatEmptiesALineStaysOnIt) {
  DisplayDesk d;
  d.Show("ab\nc\b");
  EXPECT_EQ(d.source.display.CurRow, 1);
  EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{"ab", "", "", ""}));
}

TEST(Char2MMI, ABackspaceOnAnEmptyDisplayDoesNothing) {
  DisplayDesk d;
  d.Show("\b\b\ba");
  EXPECT_EQ(d.source.display.CurRow, 0);
  EXPECT_EQ(d.source.display.textline[0], "a");
}

TEST(Char2MMI, ABackspaceAfterAFullLineTakesItsLastCharacter) {
  DisplayDesk d;
  d.Show(std::string(20, 'a') + "\bb");
  EXPECT_EQ(d.source.display.textline[0], std::string(19, 'a') + "b");
  EXPECT_EQ(d.source.display.CurRow, 1);
}

TEST(Char2MMI, EscapeEClearsTheDisplayAndGoesHome) {
  DisplayDesk d;
  d.Show("a\nb\nc\nd" + kClear);
  EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{"", "", "", ""}));
  EXPECT_EQ(d.source.display.CurRow, 0);
  EXPECT_FALSE(d.source.display.EscPending);
  d.Show("x");
  EXPECT_EQ(d.source.display.textline[0], "x");
}

TEST(Char2MMI, EscapeKAndEscapeMClearTheLineOfTheCursor) {
  for (const char c : {'K', 'M'}) {
    DisplayDesk d;
    d.Show("a\nb" + std::string{kEsc, c});
    EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{"a", "", "", ""})) << c;
    EXPECT_EQ(d.source.display.CurRow, 1);
    EXPECT_FALSE(d.source.display.EscPending);
  }
}

TEST(Char2MMI, EscapeYChoosesTheRowAndIgnoresTheColumn) {
  for (int row = 0; row < 4; ++row) {
    DisplayDesk d;
    d.Show(MoveTo(row, 7) + "x");
    DisplayDesk::Lines expected;
    expected[row] = "x";
    EXPECT_EQ(d.source.display.textline, expected) << row;
    EXPECT_FALSE(d.source.display.EscPending);
    EXPECT_FALSE(d.source.display.RowPending);
    EXPECT_FALSE(d.source.display.RowGot);
  }
}

TEST(Char2MMI, TheStepsOfARowChoiceAreSeenInTheState) {
  DisplayDesk d;
  d.Show(std::string{kEsc});
  EXPECT_TRUE(d.source.display.EscPending);
  EXPECT_FALSE(d.source.display.RowPending);
  d.Show("Y");
  EXPECT_TRUE(d.source.display.EscPending);
  EXPECT_TRUE(d.source.display.RowPending);
  EXPECT_FALSE(d.source.display.RowGot);
  d.Show("\"");
  EXPECT_TRUE(d.source.display.RowGot);
  EXPECT_EQ(d.source.display.RowValue, 2);
  EXPECT_EQ(d.source.display.CurRow, 0);
  d.Show(" ");
  EXPECT_EQ(d.source.display.CurRow, 2);
}

TEST(Char2MMI, AControlCharacterCanBeAColumn) {
  for (const char column : {kEsc, kBackspace, '\n', '\0', 'E'}) {
    DisplayDesk d;
    d.Show("a" + std::string{kEsc, 'Y', '!', column} + "b");
    EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{"a", "b", "", ""})) << static_cast<int>(column);
  }
}

TEST(Char2MMI, AnUnknownEscapeGoesOnToTheNextCharacter) {
  DisplayDesk d;
  d.Show("ab" + std::string{kEsc} + "xz\b\n\r1" + std::string{kEsc});
  EXPECT_TRUE(d.source.display.EscPending);
  EXPECT_EQ(d.source.display.textline[0], "ab");
  EXPECT_EQ(d.source.display.CurRow, 0);
  d.Show("K");
  EXPECT_FALSE(d.source.display.EscPending);
  EXPECT_EQ(d.source.display.textline[0], "");
}

TEST(Char2MMI, ARowThatTheDisplayDoesNotHaveIsNeverWrittenTo) {
  for (int code = 0; code < 256; ++code) {
    DisplayDesk d;
    d.Show(std::string{kEsc, 'Y', static_cast<char>(code), ' '});
    d.Show("abc\b\n" + std::string{kEsc, 'K'} + std::string(30, 'x') + "\b\b");
    std::size_t kept = 0;
    for (const std::string& line : d.source.display.textline) kept += line.size();
    EXPECT_LE(kept, 33u) << code;
    d.Show(kClear + "home");
    EXPECT_EQ(d.source.display.textline, (DisplayDesk::Lines{"home", "", "", ""})) << code;
  }
}

TEST(Char2MMI, WhatChangesTheDisplayIsTold) {
  for (const std::string& text : {std::string("a"), std::string("\b"), kClear, std::string{kEsc, 'K'}}) {
    DisplayDesk d;
    d.Show("ab");
    d.run.text_changes = 0;
    d.Show(text);
    EXPECT_GT(d.run.text_changes, 0) << Hex(text);
  }
}

TEST(Char2MMI, AnyStreamOfCharactersLeavesACursorOnTheDisplay) {
  std::mt19937 random(20260101);  // NOLINT: the same stream each time
  DisplayDesk d;
  const std::string favourites = std::string("YEKM!\"#$ \b\n\r") + kEsc + kEsc + kEsc;
  for (int i = 0; i < 20000; ++i) {
    const bool favourite = random() % 2 == 0;
    Char2MMI(d.desk.source.display, d.desk.run,
             favourite ? favourites[random() % favourites.size()] : static_cast<char>(random() % 256));
    if (i % 500 == 0) d.Show(kClear);
  }
  while (d.source.display.EscPending) d.Show("  E");
  d.Show(kClear + "end");
  EXPECT_EQ(d.source.display.textline[0], "end");
}

}  // namespace
}  // namespace tavlo::testing
