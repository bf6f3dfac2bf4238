// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "model/every_field.h"
#include "model/file_examination.h"
#include "model/file_repairs.h"
#include "model/hand_file.h"
#include "model/items_of_file.h"
#include "model/legacy_import.h"
#include "model/program_file.h"
#include "oskel_writer.h"

namespace tavlo::testing {
namespace {

/// A whole file of some version of one of the two programs.
struct Whole {
  FileKind kind;
  std::string version;
  std::string text;
};

Whole HubFile(const HubRevision& revision) {
  HandFile file = HandFileOf(ProgramOfDifferentValues(1));
  file.As(revision);
  return {FileKind::HubProg, std::string(revision.version),
          std::string(revision.version) + "\r\n" + file.Body()};
}

Whole WholeOldFile(const examples::OskelRevision& revision) {
  return {FileKind::OskelProg, std::string(revision.version),
          WriteOskelProg(revision, ProgramOfDifferentValues(1), {.jog_accel = 345})};
}

/// One for each set of records that there is.
std::vector<Whole> EachLayout() {
  std::vector<Whole> wholes;
  for (const HubRevision& revision : kHubRevisions) {
    if (std::set<std::string_view>{"1", "1.1", "1.12", "1.15", "1.18", "1.19", "1.21.6", "1.29.1"}.contains(
            revision.version)) {
      wholes.push_back(HubFile(revision));
    }
  }
  for (const examples::OskelRevision& revision : examples::kOskelRevisions) {
    if (std::set<std::string_view>{"1.1", "1.2", "1.281", "1.401", "1.411", "1.5"}.contains(
            revision.version)) {
      wholes.push_back(WholeOldFile(revision));
    }
  }
  return wholes;
}

/// Reads a file onto a program as the desktop does. False if it is damaged.
bool Read(FileKind kind, std::string_view text, Program& program) {
  ItemReader items(text);
  std::string version;
  items.Read(version);
  const float r = ParseRevision(version);
  return kind == FileKind::HubProg ? LoadHubProg(items, r, program) : LoadOskelProg(items, r, program);
}

bool IsWhole(FileKind kind, std::string_view text) {
  static const Program kBefore = ProgramOfDifferentValues(-1);
  Program program = kBefore;
  const bool whole = Read(kind, text, program);
  // What is damaged leaves no line of an old program, and no settings that no file may bring.
  if (!whole && kind == FileKind::OskelProg) {
    for (int line = 0; line < kLines; ++line) EXPECT_EQ(program.Prog[line].Type, NO);
  }
  EXPECT_TRUE(program.Axis.UseUnits[0]);
  EXPECT_LE(program.Axis.DriveCurrent[0], MaxCurrent(program.Axis.DriveModel[0]));
  return whole;
}

/// Places in the file of a layout. All its records are those of its first line or stand behind its lines.
/// Layouts have most of them in common, so that each has its turn at one place of `turns` there, and at a few
/// between.
std::vector<std::size_t> Telling(std::size_t count, std::size_t first, std::size_t last, std::size_t turns,
                                 std::size_t layout) {
  constexpr std::size_t kBetween = 12;
  std::vector<std::size_t> places;
  for (std::size_t i = layout % turns; i < count;) {
    places.push_back(i);
    const bool is_between = i >= first && i + last < count;
    i += is_between ? std::max(count / kBetween, turns) : turns;
  }
  return places;
}

TEST(DamagedItems, AFileOfAnyVersionThatIsCutAtAnyByteBeforeItsLastItemIsDamaged) {
  std::size_t layout = 0;
  for (const Whole& whole : EachLayout()) {
    SCOPED_TRACE(whole.version);
    ++layout;
    ASSERT_TRUE(IsWhole(whole.kind, whole.text));
    const std::size_t last_item = whole.text.find_last_of(",\n", whole.text.size() - 3) + 1;
    // A short file at every byte, of a long one its first line.
    for (std::size_t place = 0; place <= (last_item < 8000 ? last_item : 600); ++place) {
      EXPECT_FALSE(IsWhole(whole.kind, whole.text.substr(0, place))) << place;
    }
    for (const std::size_t place : Telling(last_item + 1, 0, 700, 8, layout)) {
      EXPECT_FALSE(IsWhole(whole.kind, whole.text.substr(0, place))) << place;
    }
    // A number that lost its last digits is a number.
    for (std::size_t place = last_item + 1; place < whole.text.size(); ++place) {
      static_cast<void>(IsWhole(whole.kind, whole.text.substr(0, place)));
    }
    EXPECT_TRUE(IsWhole(whole.kind, whole.text.substr(0, whole.text.size() - 1)));
    EXPECT_TRUE(IsWhole(whole.kind, whole.text.substr(0, whole.text.size() - 2)));
  }
}

TEST(DamagedItems, AnItemOfAnyVersionThatIsReplacedByTextDamagesTheFileIfItIsNoTextItself) {
  std::size_t layout = 0;
  for (const Whole& whole : EachLayout()) {
    SCOPED_TRACE(whole.version);
    const ItemsOfFile items(whole.text);
    constexpr std::array kOthers = {"text", "\"text\"", "", "1.2.3", "#MAYBE#", "1E999"};
    // The first item is the version, by which the others are told apart.
    for (const std::size_t place : Telling(items.Count() - 1, 90, 110, 5, ++layout)) {
      const std::size_t item = place + 1;
      const bool is_text = items.Item(item).starts_with('"');
      const std::string other = kOthers[(place + layout) % kOthers.size()];
      EXPECT_EQ(IsWhole(whole.kind, items.With({{item, other}})), is_text && !other.empty())
          << "item " << item << ": " << other;
    }
  }
}

TEST(DamagedItems, ABadItemOfAFileOfTheComposerLeavesItsFieldAloneAndAllOthersAreRead) {
  const Whole whole = HubFile(kHubRevisions[std::size(kHubRevisions) - 3]);
  const ItemsOfFile items(whole.text);
  Program good = ProgramOfDifferentValues(-1);
  ASSERT_TRUE(Read(whole.kind, whole.text, good));
  const Program before = ProgramOfDifferentValues(-1);
  for (const std::size_t i : Telling(items.Count() - 1, 160, 160, 3, 0)) {
    Program program = before;
    EXPECT_FALSE(Read(whole.kind, items.With({{i + 1, ""}}), program));
    int others = 0;
    for (int line = 0; line < kLines; ++line) others += program.Prog[line] == good.Prog[line] ? 0 : 1;
    EXPECT_LE(others, 1) << "item " << i + 1;
    if (others == 1) {
      EXPECT_TRUE(program.Axis == good.Axis);
    }
  }
}

TEST(DamagedItems, AMissingQuoteDamagesTheFileUnlessTheTextStandsWithoutIt) {
  std::size_t layout = 0;
  for (const Whole& whole : EachLayout()) {
    SCOPED_TRACE(whole.version);
    std::vector<std::size_t> quotes;
    for (std::size_t at = whole.text.find('"'); at != std::string::npos; at = whole.text.find('"', at + 1)) {
      quotes.push_back(at);
    }
    for (const std::size_t quote : Telling(quotes.size(), 10, 30, 2, ++layout)) {
      std::string text = whole.text;
      text.erase(quotes[quote], 1);
      const bool closes = quote % 2 == 1;
      const bool is_whole = IsWhole(whole.kind, text);
      if (closes) {
        EXPECT_FALSE(is_whole) << "quote " << quote;
      }
    }
  }
}

TEST(DamagedItems, NulBytesAndOtherCodePagesEndAsAnyOtherDamage) {
  std::size_t layout = 0;
  const auto with_every_second_nul = [](const std::string& text, bool first) {
    std::string wide;
    for (const char c : text) wide += first ? std::string{'\0', c} : std::string{c, '\0'};
    return wide;
  };
  for (const Whole& whole : EachLayout()) {
    SCOPED_TRACE(whole.version);
    EXPECT_FALSE(IsWhole(whole.kind, "\xff\xfe" + with_every_second_nul(whole.text, false)));
    EXPECT_FALSE(IsWhole(whole.kind, "\xfe\xff" + with_every_second_nul(whole.text, true)));
    EXPECT_FALSE(IsWhole(whole.kind, with_every_second_nul(whole.text, false)));
    EXPECT_FALSE(IsWhole(whole.kind, std::string(whole.text.size(), '\0')));
    std::string of_another_machine = whole.text;
    for (char& c : of_another_machine) c = static_cast<char>(c ^ 0x80);
    EXPECT_FALSE(IsWhole(whole.kind, of_another_machine));
    for (const std::size_t place : Telling(whole.text.size(), 300, 300, 16, ++layout)) {
      std::string text = whole.text;
      text[place] = '\0';
      static_cast<void>(IsWhole(whole.kind, text));
    }
  }
}

TEST(DamagedItems, ABomOrADecimalCommaDamagesTheFileAndAccentsInATextDoNot) {
  for (const Whole& whole : EachLayout()) {
    SCOPED_TRACE(whole.version);
    // The version is then no number, so the file counts as of the oldest.
    const bool oldest = whole.version == "1" || whole.version == "1.1";
    if (!oldest) {
      EXPECT_FALSE(IsWhole(whole.kind, "\xef\xbb\xbf" + whole.text));
    }
    std::string text = whole.text;
    const std::size_t point = text.find(".25");
    text[point] = ',';
    EXPECT_FALSE(IsWhole(whole.kind, text));
    std::string accents = whole.text;
    accents.insert(accents.find('"') + 1, "L\xc3\xa4nge \xe4\xff");
    EXPECT_TRUE(IsWhole(whole.kind, accents));
  }
}

TEST(DamagedItems, ANameOfMoreThanAnybodyEntersIsABadItem) {
  for (const Whole& whole : EachLayout()) {
    SCOPED_TRACE(whole.version);
    const ItemsOfFile items(whole.text);
    for (const std::size_t length : {kLongestName, kLongestName + 1}) {
      for (std::size_t item = items.Count() - 120; item < items.Count(); ++item) {
        if (!items.Item(item).starts_with('"')) continue;
        const std::string name(length, 'x');
        // The last text of an old line, without a unit behind it, may be of any length.
        const bool is_name = whole.kind == FileKind::HubProg || item + 6 > items.Count();
        EXPECT_EQ(IsWhole(whole.kind, items.With({{item, '"' + name + '"'}})),
                  length <= kLongestName || !is_name)
            << "item " << item << ", " << length << " characters";
      }
    }
  }
}

TEST(DamagedItems, TenMegabytesOnOneLineEndInTime) {
  constexpr std::size_t kMany = 10u << 20;
  for (const Whole& whole : {HubFile(kHubRevisions.back()), WholeOldFile(examples::kOskelRevisions.back())}) {
    std::string one_line = whole.text;
    for (std::size_t at = one_line.find("\r\n"); at != std::string::npos; at = one_line.find("\r\n", at)) {
      one_line.replace(at, 2, ",");
    }
    EXPECT_TRUE(IsWhole(whole.kind, one_line + std::string(kMany, ',')));
    std::string long_text = whole.text;
    long_text.insert(long_text.find('"') + 1, std::string(kMany, 'x'));
    EXPECT_TRUE(IsWhole(whole.kind, long_text));
    for (const char c : {'1', ',', '"', '.', '#', ' ', '\r', '\n', '\0'}) {
      EXPECT_FALSE(IsWhole(whole.kind, std::string(kMany, c))) << c;
      std::string inside = whole.text;
      inside.insert(inside.find("\r\n") + 2, std::string(kMany, c));
      static_cast<void>(IsWhole(whole.kind, inside));
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
