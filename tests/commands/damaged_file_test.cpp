// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "codegen/compile.h"
#include "commands/program_files.h"
#include "model/hand_file.h"
#include "model/program_file.h"
#include "session/grid.h"
#include "support/fake_desk.h"
#include "text/short_desc.h"

namespace tavlo {
namespace {

using testing::FakeDesk;
using testing::HandFile;

/// Shows and compiles everything of a program that came from outside.
void UseWholeProgram(Program& program) {
  for (int line = 0; line < kLines; ++line) {
    const auto text = ShortDesc(program, line);
    ASSERT_LT(text.value_or("").size(), 1000000U);
    StringPool pool;
    try {
      ASSERT_FALSE(Compile(program, line, pool).empty());
    } catch (const EncodeError& error) {
      ASSERT_NE(std::string(error.what()), "");
    }
  }
  for (const Arrow& arrow : ArrowsOf(program)) {
    ASSERT_TRUE(arrow.from >= 0 && arrow.from < kLines && arrow.to >= 0 && arrow.to < kLines);
    ASSERT_TRUE(arrow.lane >= 0 && arrow.lane < arrow.lanes);
  }
  ASSERT_EQ(LabelColoursOf(program).size(), 200U);
  ASSERT_EQ(ChainFramesOf(program)[0], kPlainFrame);
  for (int axis = 0; axis < kAxes; ++axis) (void)DriveDescOf(program, axis);
  try {
    ASSERT_EQ(ImageOf(CompileProgram(program)).size(), 8192U);
  } catch (const EncodeError& error) {
    ASSERT_NE(std::string(error.what()), "");
  }
}

class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  /// A file that differs from a good one in a few bytes, items or stretches, or is rubbish altogether.
  std::string Damaged(const std::string& good) {
    if (Below(20) == 0) return Rubbish();
    std::string text = good;
    for (std::size_t edits = 1 + Below(6); edits > 0; --edits) Edit(text);
    return text;
  }

 private:
  std::size_t Below(std::size_t n) { return random_() % n; }

  std::string Rubbish() {
    std::string text(Below(3000), '\0');
    const bool likely = Below(2) == 0;
    for (char& c : text) c = likely ? "0123456789.,-#\"\r\nTRUE"[Below(21)] : static_cast<char>(Below(256));
    return text;
  }

  void Edit(std::string& text) {
    static const std::vector<std::string> kItems = {
        "",      "32767",  "-32768", "32768",      "200",         "201",         "-1",
        "1000",  "255",    "256",    "#TRUE#",     "#FALSE#",     "\"\"",        "\"",
        "1E+38", "-1E+38", "1E39",   "2147483647", "-2147483648", "99999999999", "nan",
        "inf",   ".5",     "2.5",    "\"a\xff\"",  "26",          "18",          "31",
        "14",    "6",      "\r\n",   ",",          "\"x,\r\n\""};
    const std::size_t at = Below(text.size() + 1);
    switch (Below(6)) {
      case 0: text.resize(at); break;
      case 1:
        if (at < text.size()) text[at] = static_cast<char>(Below(256));
        break;
      case 2: text.erase(at, Below(50)); break;
      case 3: text.insert(at, text.substr(Below(text.size() + 1), Below(200))); break;
      default: {
        // Another value for an item near the place.
        const std::size_t start = std::min(text.find_first_of(",\n", at), text.size());
        const std::size_t first = std::min(start + 1, text.size());
        const std::size_t last = std::min(text.find_first_of(",\r", first), text.size());
        text.replace(first, last - first, kItems[Below(kItems.size())]);
      }
    }
  }

  std::mt19937 random_;
};

/// A good file of 200 lines of mixed types, without the version text.
std::string MixedFile() {
  HandFile file;
  int index = 0;
  for (HandFile::Line& line : file.lines) {
    line.type = std::to_string(index % 32);
    line.text = "\"Line " + std::to_string(index) + "\"";
    line.limits = std::to_string(index % 7) + ",50,0,1,0";
    ++index;
  }
  return file.Body();
}

/// Four times five thousand files, by the seed.
class DamagedFiles : public ::testing::TestWithParam<unsigned> {};
constexpr int kFilesOfASeed = 5000;

TEST_P(DamagedFiles, AreReadToAnEndAndLeaveAUsableProgram) {
  const std::string whole = MixedFile();
  // Most files end after some lines: what is missing is visited all the same, and quickly.
  const std::string head = whole.substr(0, 16000);
  constexpr float kRevisions[] = {0.0F, 1.0F, 1.1F, 1.13F, 1.16F, 1.2F, 1.2106F, 1.2901F};
  Mutator mutator(GetParam());
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  for (int run = 0; run < kFilesOfASeed; ++run) {
    const std::string text = mutator.Damaged(run % 20 == 0 ? whole : head);
    ItemReader items(text);
    (void)LoadHubProg(items, run % 3 == 0 ? kRevisions[run % 8] : 1.2901F, program);
    // Looking at all of it costs more than reading it, so that not every file is looked at whole.
    if (run % 20 == 0) {
      UseWholeProgram(program);
      if (HasFatalFailure()) FAIL() << "run " << run;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, DamagedFiles, ::testing::Values(1U, 22U, 333U, 4444U));

TEST(DamagedFile, RandomValuesInEveryItemLeaveAUsableProgram) {
  std::mt19937 random(77);
  constexpr int kValues[] = {-32768, -1,  0,   1,   2,   5,   8,   14,   31,
                             49,     128, 199, 200, 201, 255, 256, 1000, 32767};
  const std::string good = MixedFile();
  for (int run = 0; run < 60; ++run) {
    std::string text;
    std::size_t start = 0;
    while (start < good.size()) {
      const std::size_t end = std::min(good.find_first_of(",\n", start), good.size() - 1);
      std::string item = good.substr(start, end - start);
      const bool number = item.find_first_not_of("-.0123456789\r ") == std::string::npos;
      if (number && random() % 2 == 0) {
        const bool line_end = !item.empty() && item.back() == '\r';
        item = std::to_string(kValues[random() % std::size(kValues)]) + (line_end ? "\r" : "");
      }
      text += item + good[end];
      start = end + 1;
    }
    Program program;
    InitHardware(program.Axis);
    InitProg(program);
    program.HubVersion = 1.38F;
    ItemReader items(text);
    (void)LoadHubProg(items, 1.2901F, program);
    UseWholeProgram(program);
    if (HasFatalFailure()) FAIL() << "run " << run;
  }
}

TEST(DamagedFile, TheLoadHandlerEndsWithOneMessageOrNone) {
  const std::string good = "1.29.1\r\n" + MixedFile();
  Mutator mutator(5);
  FakeDesk fake;
  for (int run = 0; run < 300; ++run) {
    fake.boxes.shown.clear();
    fake.files.files["/p/a.tvh"] = mutator.Damaged(good);
    const bool loaded = LoadFile(fake.desk, "/p/a.tvh");
    EXPECT_EQ(fake.boxes.shown.size(), loaded ? 0U : 1U) << run;
    EXPECT_FALSE(fake.source.Changed);
    EXPECT_EQ(fake.source.file_name, loaded ? "/p/a.tvh" : "untitled");
  }
}

TEST(DamagedFile, AFileOfRubbishOfManyMegabytesEndsQuickly) {
  std::string text(8u << 20, ',');
  Program program;
  ItemReader commas(text);
  EXPECT_FALSE(LoadHubProg(commas, 1.2901F, program));
  text.assign(text.size(), '"');
  ItemReader quotes(text);
  EXPECT_FALSE(LoadHubProg(quotes, 1.2901F, program));
  text.assign(text.size(), '9');
  ItemReader digits(text);
  EXPECT_FALSE(LoadHubProg(digits, 1.2901F, program));
}

}  // namespace
}  // namespace tavlo
