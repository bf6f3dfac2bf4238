// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/prompt_text.h"

#include <gtest/gtest.h>

#include <random>

namespace tavlo::testing {
namespace {

std::string Padded(std::string text) {
  text.resize(kPromptColumns, ' ');
  return text;
}

/// "1.3" for a dropped blank behind line 1 and a moved word behind line 3: blanks b, words w.
std::string FlagsOf(const Instruction& record) {
  std::string flags;
  const bool blanks[] = {record.Blank1, record.Blank2, record.Blank3};
  const bool wraps[] = {record.Wrap1, record.Wrap2, record.Wrap3};
  for (int i = 0; i < 3; ++i) {
    if (blanks[i]) flags += "b" + std::to_string(i + 1);
    if (wraps[i]) flags += "w" + std::to_string(i + 1);
  }
  return flags;
}

Instruction RecordOf(const std::string& typed, int lines = kPromptLines) {
  Instruction record;
  // Flags of another text.
  record.Blank1 = record.Wrap2 = record.Blank3 = true;
  WriteText(record, BreakText(typed, lines));
  return record;
}

const std::string k20 = "12345678901234567890";

struct Row {
  std::string typed;
  std::string stored;
  std::string flags;
  /// How it comes back, if not as it was typed: a record cannot tell everything.
  const char* shown = nullptr;
};

std::vector<Row> Rows() {
  return {
      {"", "", ""},
      {"Length?", "Length?", ""},
      {"ends in blanks  ", "ends in blanks  ", ""},
      {k20, k20, ""},
      {k20 + " ", k20, "b1"},
      {k20 + " more", k20 + "more", "b1"},
      {k20 + "  more", k20 + " more", "b1"},
      {"word1 word2 word3 word4", Padded("word1 word2 word3") + "word4", "w1"},
      // Column 20 is a blank: no word is cut.
      {"word1 word2 word3 a word4", "word1 word2 word3 a word4", ""},
      {"1234567890123456789 next", "1234567890123456789 next", ""},
      {k20 + "1", k20 + "1", ""},
      {k20 + k20 + k20 + "123", k20 + k20 + k20 + "123", ""},
      {"ab " + k20 + "cd", Padded("ab") + k20 + "cd", "w1"},
      {" " + k20, Padded("") + k20, "w1"},
      {"One\nTwo", Padded("One") + "Two", ""},
      {"One\nTwo\n", Padded("One") + Padded("Two"), ""},
      {"\n", Padded(""), ""},
      {"\n\nThree", Padded("") + Padded("") + "Three", ""},
      {k20 + "\nTwo", k20 + "Two", "", "12345678901234567890Two"},
      {k20 + "\n\nThree", k20 + Padded("") + "Three", ""},
      {k20 + "\n", k20, "", "12345678901234567890"},
      {"1234567890123456789\nTwo", "1234567890123456789 Two", "", "1234567890123456789 Two"},
      {"One\r\nTwo\r", Padded("One") + "Two", "", "One\nTwo"},
      {"say \"go\"", "say 'go'", "", "say 'go'"},
      {k20 + " " + k20 + " " + k20 + " " + k20, k20 + k20 + k20 + k20, "b1b2b3"},
      {"word1 word2 word3 word4 word5 word6 word7 word8 word9 words word",
       Padded("word1 word2 word3") + Padded("word4 word5 word6") + Padded("word7 word8 word9") + "words word",
       "w1w2w3"},
  };
}

TEST(PromptText, FallsOnTheDisplayByItsRule) {
  for (const Row& row : Rows()) {
    const Instruction record = RecordOf(row.typed);
    EXPECT_EQ(record.Text, row.stored) << row.typed;
    EXPECT_EQ(FlagsOf(record), row.flags) << row.typed;
    EXPECT_EQ(BreakText(row.typed, kPromptLines).left_over, 0U) << row.typed;
  }
}

TEST(PromptText, ComesBackAsItWasTyped) {
  for (const Row& row : Rows()) {
    EXPECT_EQ(NoWordBreaks(RecordOf(row.typed)), row.shown == nullptr ? row.typed : row.shown);
  }
}

TEST(PromptText, WhatLiesBeyondTheLastLineIsCut) {
  const struct {
    std::string typed;
    int lines;
    std::string stored;
    std::size_t left_over;
  } rows[] = {{k20 + k20 + k20 + k20 + "xyz", 4, k20 + k20 + k20 + k20, 3},
              {k20 + k20 + k20 + "xyz", 3, k20 + k20 + k20, 3},
              {k20 + k20 + k20, 3, k20 + k20 + k20, 0},
              {"1\n2\n3\n4", 4, Padded("1") + Padded("2") + Padded("3") + "4", 0},
              {"1\n2\n3\n4\n", 4, Padded("1") + Padded("2") + Padded("3") + Padded("4"), 0},
              {"1\n2\n3\n4\n5", 4, Padded("1") + Padded("2") + Padded("3") + Padded("4"), 1},
              {"1\n2\n3\n4", 3, Padded("1") + Padded("2") + Padded("3"), 1},
              // Line 4 is broken as those before it.
              {"1\n2\n3\nword1 word2 word3 word4", 4,
               Padded("1") + Padded("2") + Padded("3") + Padded("word1 word2 word3"), 5}};
  for (const auto& row : rows) {
    const BrokenText broken = BreakText(row.typed, row.lines);
    EXPECT_EQ(broken.Stored(), row.stored) << row.typed;
    EXPECT_EQ(broken.left_over, row.left_over) << row.typed;
  }
}

TEST(PromptText, OfAPromptThatTakesANumberEndsWithItsThirdLine) {
  for (int sub_type = GetDistance; sub_type <= Menu; ++sub_type) {
    EXPECT_EQ(LinesForText(sub_type), sub_type <= GetCount ? 3 : 4) << sub_type;
  }
  EXPECT_EQ(LinesForText(77), 4);
}

TEST(PromptText, AWordThatWentToTheNextLineGoesThereAgain) {
  // One blank alone would let the word stay on its line.
  const Instruction record = RecordOf("123456    1234567890A");
  EXPECT_EQ(record.Text, Padded("123456") + "1234567890A");
  EXPECT_EQ(NoWordBreaks(record), "123456    1234567890A");
}

/// What an operator may type: words of all lengths, blanks, line feeds.
std::string AnyText(std::mt19937& random, const std::string& alphabet) {
  std::string text(random() % 100, ' ');
  for (char& c : text) c = alphabet[random() % alphabet.size()];
  return text;
}

TEST(PromptText, OfAnyKindFallsOnTheDisplayAgainAsItDid) {
  constexpr unsigned kSeed = 20260522;
  std::mt19937 random(kSeed);
  int told_apart = 0;
  for (int i = 0; i < 50000; ++i) {
    const std::string typed = AnyText(random, i % 2 == 0 ? "abcdefgh  \n" : "abcdefghijklmnopqrstuvw ");
    const int lines = i % 3 == 0 ? 3 : 4;
    const BrokenText broken = BreakText(typed, lines);
    Instruction record;
    WriteText(record, broken);
    EXPECT_LE(record.Text.size(), kPromptColumns * static_cast<std::size_t>(lines));
    const std::string shown = NoWordBreaks(record);
    const Instruction again = RecordOf(shown, lines);
    ASSERT_EQ(again.Text, record.Text) << "seed " << kSeed << ", text " << i << ": " << typed;
    if (broken.left_over > 0) continue;
    ++told_apart;
    ASSERT_EQ(FlagsOf(again), FlagsOf(record)) << "seed " << kSeed << ", text " << i << ": " << typed;
  }
  EXPECT_GT(told_apart, 20000);
}

TEST(PromptText, OfWordsComesBackLetterForLetter) {
  constexpr unsigned kSeed = 20260523;
  std::mt19937 random(kSeed);
  for (int i = 0; i < 20000; ++i) {
    std::string typed;
    while (typed.size() < 50) {
      if (!typed.empty()) typed += ' ';
      typed += std::string(1 + random() % 12, static_cast<char>('a' + random() % 26));
    }
    const BrokenText broken = BreakText(typed, kPromptLines);
    if (broken.left_over > 0) continue;
    Instruction record;
    WriteText(record, broken);
    ASSERT_EQ(NoWordBreaks(record), typed) << "seed " << kSeed << ", text " << i;
  }
}

TEST(PromptText, ARecordThatNoTextMadeIsShownWithoutLosingALetter) {
  constexpr unsigned kSeed = 20260524;
  std::mt19937 random(kSeed);
  const auto letters = [](std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    return text;
  };
  for (int i = 0; i < 20000; ++i) {
    Instruction record;
    record.Text = AnyText(random, "ab \n\r");
    record.Blank1 = random() % 2 == 0;
    record.Wrap1 = random() % 2 == 0;
    record.Blank2 = random() % 2 == 0;
    record.Wrap2 = random() % 2 == 0;
    record.Blank3 = random() % 2 == 0;
    record.Wrap3 = random() % 2 == 0;
    ASSERT_EQ(letters(NoWordBreaks(record)), letters(record.Text)) << "seed " << kSeed << ", record " << i;
  }
}

}  // namespace
}  // namespace tavlo::testing
