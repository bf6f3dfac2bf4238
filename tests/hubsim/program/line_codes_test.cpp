// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/program/line_codes.h"

#include <gtest/gtest.h>

#include "hubsim/wire_lines.h"

namespace tavlo::hubsim {
namespace {

constexpr int kFirmware = 38;

/// Bytes that `line` takes on the wire, or -1 if it never ends.
int LengthOf(const std::string& line, int firmware = kFirmware) {
  std::vector<std::uint8_t> bytes;
  for (const char byte : line) {
    bytes.push_back(static_cast<std::uint8_t>(byte));
    if (LineComplete(bytes, static_cast<std::uint8_t>(firmware))) return static_cast<int>(bytes.size());
  }
  return -1;
}

struct LengthCase {
  int code;
  int length;
};

TEST(LineCodes, EveryFixedKindEndsAtItsLength) {
  const LengthCase cases[] = {{0, 12},  {1, 16}, {2, 14}, {3, 18},  {4, 3},   {5, 9},   {6, 2},   {7, 5},
                              {8, 3},   {9, 6},  {10, 5}, {11, 1},  {12, 11}, {15, 12}, {16, 5},  {17, 6},
                              {18, 5},  {19, 4}, {20, 8}, {21, 18}, {22, 17}, {23, 7},  {24, 18}, {25, 3},
                              {26, 13}, {27, 3}, {28, 2}, {29, 1},  {30, 3},  {31, 7}};
  for (const auto& one : cases) {
    const std::string line = Bytes({one.code}) + std::string(40, '\x01');
    EXPECT_EQ(LengthOf(line), one.length) << "code " << one.code;
  }
}

TEST(LineCodes, TheWaitBitsDoNotChangeTheLengthOfAMove) {
  for (const int bits : {0x40, 0x80, 0xC0}) {
    EXPECT_EQ(LengthOf(Bytes({bits}) + std::string(40, '\0')), 12);
    EXPECT_EQ(LengthOf(Bytes({6 | bits}) + std::string(40, '\0')), 2);
  }
}

TEST(LineCodes, APromptsSubTypeTellsItsLength) {
  const LengthCase cases[] = {{0, 17}, {1, 17}, {2, 17}, {3, 5}, {4, 15}, {5, 6}, {6, 17}, {200, 17}};
  for (const auto& one : cases) {
    EXPECT_EQ(LengthOf(Bytes({14, one.code}) + std::string(40, '\0')), one.length) << one.code;
  }
}

TEST(LineCodes, MultiInputLinesGrowByTwoBytesBehindFirmware108) {
  const std::string wait = Bytes({23}) + std::string(40, '\1');
  const std::string branch = Bytes({20}) + std::string(40, '\1');
  EXPECT_EQ(LengthOf(wait, 8), 5);
  EXPECT_EQ(LengthOf(branch, 8), 6);
  EXPECT_EQ(LengthOf(wait, 9), 7);
  EXPECT_EQ(LengthOf(branch, 9), 8);
}

TEST(LineCodes, ACommentEndsAtItsMarkOrAtTwentySevenCharacters) {
  EXPECT_EQ(LengthOf(Comment("")), 2);
  EXPECT_EQ(LengthOf(Comment("cut to length")), 15);
  EXPECT_EQ(LengthOf(Comment(std::string(26, 'a'))), 28);
  EXPECT_EQ(LengthOf(Comment(std::string(27, 'a'))), 28);
  EXPECT_EQ(LengthOf(Bytes({13}) + std::string(40, 'a')), 28);
}

TEST(LineCodes, AKnobLineWithTextEndsAtItsMarkOrAtElevenCharacters) {
  const std::string head = Bytes({82, 0, 0, 1, 0});
  EXPECT_EQ(LengthOf(head + "\xFF"), 6);
  EXPECT_EQ(LengthOf(head + "abc\xFF"), 9);
  EXPECT_EQ(LengthOf(head + "0123456789\xFF"), 16);
  EXPECT_EQ(LengthOf(head + "0123456789ABCD"), 16);
}

TEST(LineCodes, A255InTheHeadOfAKnobLineIsNoEnd) {
  EXPECT_EQ(LengthOf(Bytes({82, 0, 255, 255, 255}) + "ab\xFF"), 8);
}

TEST(LineCodes, ACodeThatMeansNothingIsOneByte) {
  for (int code = 32; code < 64; ++code) EXPECT_EQ(LengthOf(Bytes({code, 1, 2})), 1) << code;
}

}  // namespace
}  // namespace tavlo::hubsim
