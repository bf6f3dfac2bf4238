// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/kept_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "model/every_field.h"

namespace tavlo::testing {
namespace {

/// A program in which no field of a line or an axis is as in a new one, flags aside; with the other sign,
/// those too.
Program Different(int sign) {
  Program program;
  DifferentValues differ(sign);
  for (Instruction& record : program.Prog) ForEachField(record, differ);
  const auto axes = [&](auto& values) {
    if constexpr (kIsArray<std::remove_reference_t<decltype(values)>>) {
      for (auto& value : values) differ(value);
    } else {
      differ(values);
    }
  };
  std::apply([&](const auto&... field) { (axes(program.Axis.*field.field), ...); }, kAxisFields);
  program.HubIndex = HubQuad;
  program.LimitList = ContinueProgram;
  program.LimitBranch = 0.1 * sign;
  program.HubVersion = 1.38F;
  program.MMIused = sign > 0;
  return program;
}

void ExpectSame(const Program& read, const Program& kept) {
  EXPECT_TRUE(read.Prog == kept.Prog);
  EXPECT_TRUE(read.Axis == kept.Axis);
  EXPECT_EQ(read.HubIndex, kept.HubIndex);
  EXPECT_EQ(read.LimitList, kept.LimitList);
  EXPECT_EQ(read.LimitBranch, kept.LimitBranch);
  EXPECT_EQ(read.HubVersion, kept.HubVersion);
  EXPECT_EQ(read.MMIused, kept.MMIused);
}

TEST(KeptText, AProgramComesBackWithEveryFieldWhateverItHolds) {
  for (const int sign : {1, -1}) {
    const KeptProgram kept = {.program = Different(sign),
                              .file_name = "/home/op/a \xC3\xA4\n,b.TVH",
                              .time = 1'795'000'000,
                              .unsaved = sign > 0,
                              .running = sign < 0};
    const std::string text = KeptTextOf(kept);
    EXPECT_LT(text.size(), kLargestKeptText);
    const auto read = ReadKeptProgram(text);
    ASSERT_TRUE(read);
    ExpectSame(read->program, kept.program);
    EXPECT_EQ(read->file_name, kept.file_name);
    EXPECT_EQ(read->time, kept.time);
    EXPECT_EQ(read->unsaved, kept.unsaved);
    EXPECT_EQ(read->running, kept.running);
  }
}

TEST(KeptText, NumbersComeBackToTheLastBit) {
  Instruction record;
  for (const float value : {0.1F, -0.0F, std::numeric_limits<float>::denorm_min(),
                            std::numeric_limits<float>::max(), std::numeric_limits<float>::infinity()}) {
    record.Speed = value;
    const auto read = ReadKeptLines(KeptTextOf(KeptLines{.first = 3, .lines = {record}}));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->lines[0].Speed, value);
  }
  record.Text = std::string("\0\x01\xFF\n 2", 6);
  record.Dist = std::numeric_limits<std::int32_t>::min();
  const auto read = ReadKeptLines(KeptTextOf(KeptLines{.first = 3, .lines = {record}}));
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->lines[0] == record);
}

TEST(KeptText, LinesComeBackInTheirOrderEmptyOnesIncluded) {
  const Program program = Different(1);
  const KeptLines kept = {.first = 199, .lines = {program.Prog[4], Instruction(), program.Prog[2]}};
  const auto read = ReadKeptLines(KeptTextOf(kept));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->first, 199);
  EXPECT_TRUE(read->lines == kept.lines);
  EXPECT_FALSE(ReadKeptProgram(KeptTextOf(kept))) << "lines are no program";
}

TEST(KeptText, ATextThatIsNotWholeIsNotRead) {
  const std::string program = KeptTextOf(KeptProgram{.program = Different(1), .file_name = "a.TVH"});
  for (std::size_t length = 0; length < program.size(); length += 1 + length / 100) {
    EXPECT_FALSE(ReadKeptProgram(program.substr(0, length))) << length;
  }
  EXPECT_FALSE(ReadKeptProgram(program + "\n"));
  const std::string lines = KeptTextOf(KeptLines{.first = 0, .lines = {Instruction()}});
  for (std::size_t length = 0; length < lines.size(); ++length) {
    EXPECT_FALSE(ReadKeptLines(lines.substr(0, length))) << length;
  }
  EXPECT_FALSE(ReadKeptLines(""));
}

/// The text with a row in place of another, and with a sum that agrees.
std::string With(const std::string& text, const std::string& row, const std::string& other) {
  std::string changed = text.substr(0, text.rfind("end "));
  changed.replace(changed.find(row), row.size(), other);
  std::uint32_t sum = 2166136261;
  for (const char c : changed) sum = (sum ^ static_cast<unsigned char>(c)) * 16777619;
  return changed + "end " + std::to_string(sum) + "\n";
}

TEST(KeptText, ARowThatSaysNothingIsNotReadThoughTheSumAgrees) {
  Instruction record;
  record.Dist = 5;
  record.MenuLine[1] = 7;
  record.Text = "A";
  record.Proceed = true;
  const std::string text = KeptTextOf(KeptLines{.first = 3, .lines = {record}});
  ASSERT_TRUE(ReadKeptLines(With(text, "Dist 5", "Dist 6")));
  const struct {
    const char* row;
    const char* other;
  } changes[] = {{"first 3", "first 200"},
                 {"first 3", "first -1"},
                 {"first 3\n", ""},
                 {"Dist 5", "Dist"},
                 {"Dist 5", "Dist "},
                 {"Dist 5", "Dist 5x"},
                 {"Dist 5", "Dist 99999999999"},
                 {"Dist 5", "Dust 5"},
                 {"Proceed 1", "Proceed 2"},
                 {"Text 41", "Text 4"},
                 {"Text 41", "Text 4G"},
                 {"MenuLine 0,7", "MenuLine 7"},
                 {"MenuLine 0,7", "MenuLine 0,0,7"},
                 {"line 0", "lane 0"},
                 {"line 0\n", ""}};
  for (const auto& change : changes) {
    EXPECT_FALSE(ReadKeptLines(With(text, change.row, change.other))) << change.row << " -> " << change.other;
  }
  const std::string program = KeptTextOf(KeptProgram{.program = Different(1), .file_name = ""});
  EXPECT_FALSE(ReadKeptProgram(With(program, "\nline 200\n", "\nline 201\n")));
  EXPECT_FALSE(ReadKeptProgram(With(program, "\nline 0\n", "\nline -1\n")));
}

TEST(KeptText, MoreLinesThanAProgramHasAreNotRead) {
  EXPECT_TRUE(ReadKeptLines(KeptTextOf(KeptLines{.first = 0, .lines = std::vector<Instruction>(200)})));
  EXPECT_FALSE(ReadKeptLines(KeptTextOf(KeptLines{.first = 0, .lines = std::vector<Instruction>(201)})));
}

TEST(KeptText, RandomBytesAreNotReadAndDoNoHarm) {
  std::mt19937 random(20261122);
  const std::string good = KeptTextOf(KeptProgram{.program = Different(-1), .file_name = ""});
  for (int i = 0; i < 2000; ++i) {
    std::string bad = good;
    const std::size_t changes = 1 + random() % 4;
    for (std::size_t change = 0; change < changes; ++change) bad[random() % bad.size()] ^= 1 << random() % 8;
    EXPECT_EQ(ReadKeptProgram(bad).has_value(), bad == good);
  }
}

}  // namespace
}  // namespace tavlo::testing
