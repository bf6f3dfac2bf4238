// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "platform/encoding.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

TEST(Encoding, SingleBytesBecomeTheirCodePoints) {
  EXPECT_EQ(Utf8FromLatin1("A\x7f\x80\xa0\xe4\xff"), "A\x7f\xC2\x80\xC2\xA0\xC3\xA4\xC3\xBF");
  EXPECT_EQ(Utf8FromLatin1(""), "");
}

TEST(Encoding, ShownTextSpellsControlCharacters) {
  EXPECT_EQ(ShownText(std::string("a\0b", 3)), "a\\x00b");
  EXPECT_EQ(ShownText("\t\x1b[m\x7f\x9b\xa0\xe4"), "\\x09\\x1b[m\\x7f\\x9b\xC2\xA0\xC3\xA4");
}

TEST(Encoding, MessagesKeepUtf8AndTakeEverythingElseAsSingleBytes) {
  EXPECT_EQ(ShownMessage("caf\xC3\xA9"), "caf\xC3\xA9");
  EXPECT_EQ(ShownMessage("caf\xE9"), "caf\xC3\xA9");
  EXPECT_EQ(ShownMessage("\xE2\x82\xAC \xF0\x9F\x98\x80"), "\xE2\x82\xAC \xF0\x9F\x98\x80");
  EXPECT_EQ(ShownMessage("\x1b[2J \xC2\x9B"), "\\x1b[2J \\x9b");
}

TEST(Encoding, WhatOnlyLooksLikeUtf8IsTakenAsSingleBytes) {
  EXPECT_EQ(ShownMessage("\xC3"), "\xC3\x83");
  EXPECT_EQ(ShownMessage("\xE2\xA2"), "\xC3\xA2\xC2\xA2");
  EXPECT_EQ(ShownMessage("\xC0\xAF"), "\xC3\x80\xC2\xAF") << "overlong";
  EXPECT_EQ(ShownMessage("\xE0\xA0\x41"),
            "\xC3\xA0\xC2\xA0"
            "A");
  EXPECT_EQ(ShownMessage("\xED\xA0\xB0"), "\xC3\xAD\xC2\xA0\xC2\xB0") << "surrogate";
  EXPECT_EQ(ShownMessage("\xF5\xA0\xA0\xA0"), "\xC3\xB5\xC2\xA0\xC2\xA0\xC2\xA0") << "beyond the last";
}

TEST(Encoding, HexHasTwoLowerCaseDigitsAByte) {
  EXPECT_EQ(HexOf(std::string("\0\x0b\xff", 3)), "000bff");
}

}  // namespace
}  // namespace tavlo
