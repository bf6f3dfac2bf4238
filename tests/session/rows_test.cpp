// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/rows.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <string_view>

namespace tavlo {
namespace {

struct IconCase {
  std::array<int, 7> types;
  std::array<std::string_view, 5> names;
};
constexpr int kNone = -1;
constexpr std::array<std::string_view, 5> kMoveNames = {"MoveIcon", "imoveicon", "ymoveicon", "rMoveIcon",
                                                        "cMoveIcon"};

/// Types and the names of their pictures: normal, picked, yellow, red, cyan.
constexpr IconCase kTable[] = {
    {{0, 1, 2, 3, 22, 24, 31}, kMoveNames},
    {{21, kNone, kNone, kNone, kNone, kNone, kNone},
     {"FLSOicon", "iFLSOicon", "yFLSOicon", "RFLSOicon", "cFLSOicon"}},
    {{15, kNone, kNone, kNone, kNone, kNone, kNone}, {"FPicon", "iFPicon", "yFPicon", "rFPicon", "cFPicon"}},
    {{4, kNone, kNone, kNone, kNone, kNone, kNone},
     {"WaitTimeIcon", "iWTicon", "yWTicon", "rWTicon", "cWTicon"}},
    {{5, 23, kNone, kNone, kNone, kNone, kNone}, {"WaitInIcon", "iWIicon", "yWIicon", "rWIicon", "cWIicon"}},
    {{6, kNone, kNone, kNone, kNone, kNone, kNone}, {"GotoIcon", "iGTicon", "yGTicon", "rGTicon", "cGTicon"}},
    {{7, 8, kNone, kNone, kNone, kNone, kNone}, {"LoopIcon", "iRPicon", "yRPicon", "rRPicon", "cRPicon"}},
    {{9, kNone, kNone, kNone, kNone, kNone, kNone}, {"OutIcon", "iSOicon", "ySOicon", "rSOicon", "cSOicon"}},
    {{10, 20, kNone, kNone, kNone, kNone, kNone}, {"IfIcon", "iIIicon", "yIIicon", "rIIicon", "cIIicon"}},
    {{11, kNone, kNone, kNone, kNone, kNone, kNone},
     {"NoneIcon", "iNOicon", "yNOicon", "rNOicon", "cNOicon"}},
    {{12, kNone, kNone, kNone, kNone, kNone, kNone},
     {"HomeIcon", "iSHicon", "ySHicon", "rSHicon", "cSHicon"}},
    {{13, kNone, kNone, kNone, kNone, kNone, kNone}, {"ComIcon", "iCMicon", "yCMicon", "rCMicon", "cCMicon"}},
    {{14, kNone, kNone, kNone, kNone, kNone, kNone},
     {"MMIicon", "iMMIicon", "yMMIicon", "rMMIicon", "cMMIicon"}},
    {{16, 19, kNone, kNone, kNone, kNone, kNone}, {"SCicon", "iSCicon", "ySCicon", "rSCicon", "cSCicon"}},
    {{17, kNone, kNone, kNone, kNone, kNone, kNone}, {"SPicon", "iSPicon", "ySPicon", "rSPicon", "cSPicon"}},
    {{18, kNone, kNone, kNone, kNone, kNone, kNone}, {"FEicon", "iFEicon", "yFEicon", "rFEicon", "cFEicon"}},
    {{25, kNone, kNone, kNone, kNone, kNone, kNone}, {"RLicon", "iRLicon", "yRLicon", "rRLicon", "cRLicon"}},
    {{27, kNone, kNone, kNone, kNone, kNone, kNone}, {"LPicon", "iLPicon", "yLPicon", "rLPicon", "cLPicon"}},
    {{28, kNone, kNone, kNone, kNone, kNone, kNone},
     {"CLicon", "imoveicon", "ymoveicon", "rMoveIcon", "cCLicon"}},
    {{29, kNone, kNone, kNone, kNone, kNone, kNone},
     {"RTicon", "imoveicon", "ymoveicon", "rMoveIcon", "cRTicon"}},
    {{30, kNone, kNone, kNone, kNone, kNone, kNone}, {"IMicon", "iIMicon", "yIMicon", "rIMicon", "cIMicon"}},
};
constexpr IconSet kSets[] = {IconSet::Normal, IconSet::Picked, IconSet::Yellow, IconSet::Red, IconSet::Cyan};

TEST(IconTable, EachTypeHasItsPictureInEachSet) {
  std::set<int> covered;
  for (const IconCase& row : kTable) {
    for (const int type : row.types) {
      if (type == kNone) continue;
      covered.insert(type);
      for (std::size_t set = 0; set < 5; ++set) {
        EXPECT_EQ(IconName(IconFor(type, kSets[set])), row.names[set]) << type;
      }
    }
  }
  EXPECT_EQ(covered.size(), kTypes - 1U) << "every type but the menu's hub code has a row in this table";
}

TEST(IconTable, ALineOfATypeInNoRowGetsTheMoveIcon) {
  for (const int type : {26, 32, 100, -1, 32767, -32768}) {
    for (std::size_t set = 0; set < 5; ++set)
      EXPECT_EQ(IconName(IconFor(type, kSets[set])), kMoveNames[set]) << type;
  }
}

TEST(IconTable, EachCellHasAnImageOfItsOwn) {
  std::set<std::string_view> names;
  std::set<std::string_view> glyphs;
  for (const IconRow& row : kIcons) {
    EXPECT_FALSE(row.glyph.empty());
    glyphs.insert(row.glyph);
    names.insert(row.names.begin(), row.names.end());
  }
  EXPECT_EQ(glyphs.size(), kIcons.size());
  EXPECT_EQ(names.size(), kIcons.size() * 5 - 2 * 3) << "Call and Return borrow three of the move";
}

TEST(RowState, Backgrounds) {
  EXPECT_EQ(BackgroundOf(RowState::Normal), (Colour{255, 255, 255}));
  EXPECT_EQ(BackgroundOf(RowState::LimitTarget), (Colour{170, 255, 255}));
  EXPECT_EQ(BackgroundOf(RowState::Executing), (Colour{255, 255, 128}));
  EXPECT_EQ(BackgroundOf(RowState::WentOn), (Colour{255, 192, 192}));
  EXPECT_EQ(BackgroundOf(RowState::Picked), (Colour{255, 255, 255}));
}

constexpr int kPitch = 24;
constexpr int kViewport = 400;
constexpr int kMaximum = 200 * kPitch - kViewport;

TEST(AutoScroll, ALineInViewMovesNothing) {
  for (const int value : {0, 240, kMaximum}) {
    const int first = value / kPitch + (value % kPitch != 0 ? 1 : 0);
    const int last = (value + kViewport) / kPitch - 1;
    for (int line = first; line <= last; ++line) {
      EXPECT_EQ(WantedScroll(line, kPitch, value, kViewport, kMaximum), value) << line;
    }
  }
}

TEST(AutoScroll, ALineOutOfViewComesToStandAboveTheMiddle) {
  for (const int from : {0, 2000, kMaximum}) {
    for (int line = 30; line < 180; ++line) {
      if (line * kPitch >= from && (line + 1) * kPitch <= from + kViewport) continue;
      const int value = WantedScroll(line, kPitch, from, kViewport, kMaximum);
      const int top = line * kPitch - value;
      EXPECT_GE(top, 0) << line;
      EXPECT_LE(top + kPitch, kViewport) << line;
      EXPECT_LE(top + kPitch / 2, kViewport / 2 + kPitch) << line;
    }
  }
}

TEST(AutoScroll, TheWantedValueIsClampedToTheRangeAndTheRowIsSeenWhole) {
  for (const int viewport : {24, 30, 100, 400, 900}) {
    const int maximum = 200 * kPitch - viewport;
    for (const int from : {0, maximum / 2, maximum}) {
      for (int line = 0; line < 200; ++line) {
        const int value = WantedScroll(line, kPitch, from, viewport, maximum);
        EXPECT_GE(value, 0);
        EXPECT_LE(value, maximum);
        EXPECT_LE(value, line * kPitch) << line << " in " << viewport;
        EXPECT_GE(value + viewport, (line + 1) * kPitch) << line << " in " << viewport;
      }
    }
  }
}

TEST(TextColumn, WithWidthAtOrBelow640AIsZeroAbove950ItStays310) {
  struct {
    int width;
    int extra;
  } const cases[] = {{-5, 0},    {0, 0},     {639, 0},   {640, 0},    {641, 1},    {800, 160},
                     {949, 309}, {950, 310}, {951, 310}, {1000, 310}, {32767, 310}};
  for (const auto& c : cases) EXPECT_EQ(ExtraWidth(c.width), c.extra) << c.width;
}

}  // namespace
}  // namespace tavlo
