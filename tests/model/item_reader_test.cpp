// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "model/file_items.h"

namespace tavlo {
namespace {

constexpr std::int16_t kKeptInteger = 77;
constexpr std::int32_t kKeptLong = 7777777;
constexpr float kKeptSingle = 0.25F;

/// What a field holds after one item, the flag of the reader, and what the next item gives.
template <class T>
struct Outcome {
  T value;
  bool failed;
  std::int32_t next;
};
template <class T>
Outcome<T> ReadOne(std::string_view item, T kept) {
  const std::string text = std::string(item) + ",4321\r\n";
  ItemReader items(text);
  Outcome<T> outcome{kept, false, 0};
  items.Read(outcome.value);
  outcome.failed = items.Failed();
  items.Read(outcome.next);
  return outcome;
}

TEST(ItemReader, CommasAndLineEndsAlikeSeparateItems) {
  ItemReader items("1,2\r\n3\r\n4,5\r\n");
  for (std::int32_t expected = 1; expected <= 5; ++expected) {
    std::int32_t value = 0;
    items.Read(value);
    EXPECT_EQ(value, expected);
  }
  EXPECT_FALSE(items.Failed());
}

TEST(ItemReader, ALineFeedAloneEndsALineToo) {
  ItemReader items("1\n2,3\n4");
  for (std::int32_t expected = 1; expected <= 4; ++expected) {
    std::int32_t value = 0;
    items.Read(value);
    EXPECT_EQ(value, expected);
  }
  EXPECT_FALSE(items.Failed());
}

TEST(ItemReader, TheLastItemNeedsNoLineEnd) {
  ItemReader items("12");
  std::int16_t value = 0;
  items.Read(value);
  EXPECT_EQ(value, 12);
  EXPECT_FALSE(items.Failed());
}

TEST(ItemReader, BlanksAroundANumberDoNotMatter) {
  const auto outcome = ReadOne<std::int16_t>(" 8 ", kKeptInteger);
  EXPECT_EQ(outcome.value, 8);
  EXPECT_FALSE(outcome.failed);
  EXPECT_EQ(outcome.next, 4321);
}

TEST(ItemReader, ABadItemSetsTheErrorTheFieldKeepsItsValueAndReadingGoesOnWithTheNextItem) {
  for (const std::string_view item : {"", " ", "abc", "\"5\"", "\"\"", "1.2.3", "5x", "#MAYBE#", "--1", "nan",
                                      "inf", "1E", "0x10", "&H1", "\xff\xfe"}) {
    SCOPED_TRACE(item);
    const auto integer = ReadOne<std::int16_t>(item, kKeptInteger);
    EXPECT_TRUE(integer.failed);
    EXPECT_EQ(integer.value, kKeptInteger);
    EXPECT_EQ(integer.next, 4321);
    const auto whole = ReadOne<std::int32_t>(item, kKeptLong);
    EXPECT_TRUE(whole.failed);
    EXPECT_EQ(whole.value, kKeptLong);
    EXPECT_EQ(whole.next, 4321);
    const auto single = ReadOne<float>(item, kKeptSingle);
    EXPECT_TRUE(single.failed);
    EXPECT_EQ(single.value, kKeptSingle);
    EXPECT_EQ(single.next, 4321);
    const auto flag = ReadOne<bool>(item, true);
    EXPECT_TRUE(flag.failed);
    EXPECT_TRUE(flag.value);
    EXPECT_EQ(flag.next, 4321);
  }
}

TEST(ItemReader, AnOverflowIsAnError) {
  for (const std::string_view item :
       {"32768", "-32769", "32767.5", "40000", "1E10", "99999999999999999999"}) {
    const auto outcome = ReadOne<std::int16_t>(item, kKeptInteger);
    EXPECT_TRUE(outcome.failed) << item;
    EXPECT_EQ(outcome.value, kKeptInteger) << item;
    EXPECT_EQ(outcome.next, 4321) << item;
  }
  for (const std::string_view item : {"2147483648", "-2147483649", "2147483647.5", "1E300", "1E999"}) {
    const auto outcome = ReadOne<std::int32_t>(item, kKeptLong);
    EXPECT_TRUE(outcome.failed) << item;
    EXPECT_EQ(outcome.value, kKeptLong) << item;
  }
  for (const std::string_view item : {"1E39", "-1E39", "3.5E38", "1E999"}) {
    const auto outcome = ReadOne<float>(item, kKeptSingle);
    EXPECT_TRUE(outcome.failed) << item;
    EXPECT_EQ(outcome.value, kKeptSingle) << item;
  }
}

TEST(ItemReader, TheEndsOfEachFieldAreNoOverflow) {
  EXPECT_EQ(ReadOne<std::int16_t>("32767", 0).value, 32767);
  EXPECT_EQ(ReadOne<std::int16_t>("-32768", 0).value, -32768);
  EXPECT_EQ(ReadOne<std::int16_t>("32767.4", 0).value, 32767);
  EXPECT_EQ(ReadOne<std::int32_t>("2147483647", 0).value, std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(ReadOne<std::int32_t>("-2147483648", 0).value, std::numeric_limits<std::int32_t>::min());
  EXPECT_FALSE(ReadOne<float>("3.4E38", 0).failed);
}

TEST(ItemReader, ANumberWithAFractionIntoAnIntegerRoundsHalfToEven) {
  struct {
    std::string_view item;
    int value;
  } const cases[] = {{"0.5", 0},   {"1.5", 2},   {"2.5", 2},  {"3.5", 4},
                     {"-2.5", -2}, {"-1.5", -2}, {"2.51", 3}, {".4", 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(ReadOne<std::int16_t>(c.item, kKeptInteger).value, c.value) << c.item;
    EXPECT_EQ(ReadOne<std::int32_t>(c.item, kKeptLong).value, c.value) << c.item;
    EXPECT_FALSE(ReadOne<std::int32_t>(c.item, kKeptLong).failed);
  }
}

TEST(ItemReader, EveryFormOfANumberThatAFileMayHold) {
  EXPECT_EQ(ReadOne<float>(".5", 0).value, 0.5F);
  EXPECT_EQ(ReadOne<float>("-1.25", 0).value, -1.25F);
  EXPECT_EQ(ReadOne<float>("1E+07", 0).value, 1e7F);
  EXPECT_EQ(ReadOne<std::int32_t>("1E+07", 0).value, 10000000);
  EXPECT_EQ(ReadOne<double>("199", 0).value, 199);
}

TEST(ItemReader, AFlagIsTakenWhereANumberIsWanted) {
  EXPECT_EQ(ReadOne<std::int16_t>("#TRUE#", 5).value, -1);
  EXPECT_EQ(ReadOne<std::int16_t>("#FALSE#", 5).value, 0);
  EXPECT_EQ(ReadOne<std::int32_t>("#TRUE#", 5).value, -1);
  EXPECT_EQ(ReadOne<float>("#TRUE#", 5).value, -1.0F);
  EXPECT_EQ(ReadOne<double>("#FALSE#", 5).value, 0.0);
  EXPECT_FALSE(ReadOne<std::int16_t>("#TRUE#", 5).failed);
}

TEST(ItemReader, ANumberIsTakenWhereAFlagIsWanted) {
  EXPECT_TRUE(ReadOne<bool>("-1", false).value);
  EXPECT_TRUE(ReadOne<bool>("5", false).value);
  EXPECT_FALSE(ReadOne<bool>("0", true).value);
  EXPECT_FALSE(ReadOne<bool>("0", true).failed);
  EXPECT_TRUE(ReadOne<bool>("#TRUE#", false).value);
  EXPECT_FALSE(ReadOne<bool>("#FALSE#", true).value);
}

TEST(ItemReader, AQuotedStringIsKeptWhole) {
  struct {
    std::string_view item;
    std::string_view value;
  } const cases[] = {{"\"\"", ""},
                     {"\"Press START, then wait\"", "Press START, then wait"},
                     {"\" 1 \"", " 1 "},
                     {"\"#TRUE#\"", "#TRUE#"},
                     {"\"a\xe9\xff\x01z\"", "a\xe9\xff\x01z"},
                     {"\"two\r\nlines\"", "two\r\nlines"}};
  for (const auto& c : cases) {
    const auto outcome = ReadOne<std::string>(c.item, "kept");
    EXPECT_EQ(outcome.value, c.value);
    EXPECT_FALSE(outcome.failed);
    EXPECT_EQ(outcome.next, 4321);
  }
}

TEST(ItemReader, AnUnquotedTextReachesToTheSeparator) {
  const auto outcome = ReadOne<std::string>("1.29.1", "kept");
  EXPECT_EQ(outcome.value, "1.29.1");
  EXPECT_FALSE(outcome.failed);
  EXPECT_EQ(outcome.next, 4321);
}

TEST(ItemReader, AMissingEndQuoteTakesTheRestAndTheNextItemIsMissing) {
  ItemReader items("\"no end,1,2\r\n3");
  std::string text;
  items.Read(text);
  std::int16_t value = kKeptInteger;
  items.Read(value);
  EXPECT_EQ(value, kKeptInteger);
  EXPECT_TRUE(items.Failed());
}

TEST(ItemReader, BehindTheEndEveryFieldKeepsItsValue) {
  for (const std::string_view text : {"", "1\r\n", "1"}) {
    ItemReader items(text);
    std::int16_t first = 0;
    if (!text.empty()) items.Read(first);
    EXPECT_FALSE(items.Failed());
    std::int16_t integer = kKeptInteger;
    float single = kKeptSingle;
    double number = 1.5;
    bool flag = true;
    std::string string = "kept";
    for (int i = 0; i < 3; ++i) {
      items.Read(integer);
      items.Read(single);
      items.Read(number);
      items.Read(flag);
      items.Read(string);
    }
    EXPECT_TRUE(items.Failed());
    EXPECT_EQ(integer, kKeptInteger);
    EXPECT_EQ(single, kKeptSingle);
    EXPECT_EQ(number, 1.5);
    EXPECT_TRUE(flag);
    EXPECT_EQ(string, "kept");
  }
}

TEST(ItemReader, AnyBytesAreReadToAnEnd) {
  std::mt19937 random(3);
  for (int run = 0; run < 2000; ++run) {
    std::string text(random() % 200, '\0');
    for (char& c : text) c = random() % 3 ? "\",\r\n#0"[random() % 6] : static_cast<char>(random() & 255);
    ItemReader items(text);
    std::int16_t integer = 0;
    float single = 0;
    bool flag = false;
    std::string string;
    for (int i = 0; i < 300; ++i) {
      items.Read(integer);
      items.Read(single);
      items.Read(flag);
      items.Read(string);
      ASSERT_LE(string.size(), text.size());
      ASSERT_FALSE(std::isnan(single));
    }
    EXPECT_TRUE(items.Failed());
  }
}

TEST(ItemReader, FailIsRemembered) {
  ItemReader items("1");
  EXPECT_FALSE(items.Failed());
  items.Fail();
  EXPECT_TRUE(items.Failed());
}

TEST(RecordWriter, ItemsAreSeparatedByCommasWithNoBlanksAndARecordEndsInCrLf) {
  RecordWriter writer;
  writer << std::int16_t{-5} << std::int32_t{2000000} << 0.5F << 1E+07F << -1.25 << true << false
         << std::string("a, b");
  writer.End();
  writer << std::string();
  writer.End();
  EXPECT_EQ(writer.Text(), "-5,2000000,.5,1E+07,-1.25,#TRUE#,#FALSE#,\"a, b\"\r\n\"\"\r\n");
}

TEST(RecordWriter, APrintedLineStandsAsItIs) {
  RecordWriter writer;
  writer.PrintLine("1.29.1");
  writer.PrintLine(" 8 ");
  EXPECT_EQ(writer.Text(), "1.29.1\r\n 8 \r\n");
}

}  // namespace
}  // namespace tavlo
