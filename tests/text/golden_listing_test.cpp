// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "model/kinds.h"
#include "programs.h"
#include "text/shown_listing.h"

// Whole listings are kept in tests/text/golden. After a change that is meant,
//   TAVLO_REBASE=1 build/ci/bin/text_tests --gtest_filter='GoldenListings.*'
// writes them anew: read what git shows, and commit them by themselves.

namespace tavlo {
namespace {

bool Rebases() {
  return std::getenv("TAVLO_REBASE") != nullptr;
}

void ExpectGolden(const std::string& name, const std::string& text) {
  const std::string path = std::string(TAVLO_GOLDEN_DIR) + "/" + name + ".txt";
  if (Rebases()) {
    std::ofstream(path, std::ios::binary) << text;
    return;
  }
  std::ifstream file(path, std::ios::binary);
  ASSERT_TRUE(file) << path;
  std::ostringstream golden;
  golden << file.rdbuf();
  EXPECT_EQ(text, golden.str()) << name;
}

class GoldenListings : public ::testing::Test {
 protected:
  void TearDown() override {
    if (Rebases()) GTEST_SKIP() << "written anew, nothing compared";
  }
};

std::string WholeListing(const Program& program, std::string_view file_name) {
  return AsText(MakeListing(program, file_name), SectionsOf(MakeCrossReference(program)));
}

TEST_F(GoldenListings, OfTheExamples) {
  for (const auto& example : examples::ExamplePrograms()) {
    const std::string name(example.file_name);
    ExpectGolden(name.substr(0, name.find('.')), WholeListing(example.program, name));
  }
}

/// A program with a line of each type in each of its forms, the axes in turn.
class EveryForm {
 public:
  EveryForm() {
    InitHardware(program.Axis);
    InitProg(program);
    program.LimitList = BranchToLine;
    program.LimitBranch = 3;
    Types();
    States();
    SubTypes();
    Variables();
    Inputs();
    ScanLoops(program);
  }

  Program program;

 private:
  Instruction& Add(int type) {
    Instruction& line = program.Prog[next_];
    line.Type = static_cast<std::int16_t>(type);
    line.Drive = static_cast<std::int16_t>(next_ % kAxes);
    line.LineNum = static_cast<std::int16_t>(next_ / 2);
    line.Text = "Text of line " + std::to_string(next_ + 1);
    ++next_;
    return line;
  }
  void Types() {
    for (int type = 0; type < kTypes; ++type) Add(type);
  }
  void States() {
    for (const int type : {FS, FSR, WI, SO, II, SH, FE, FLSO, FSS}) {
      for (std::int16_t state = 0; state <= 4; ++state) Add(type).State = state;
    }
  }
  void SubTypes() {
    for (std::int16_t sub = GetDistance; sub <= Menu + 1; ++sub) Add(MMI).SubType = sub;
    for (std::int16_t sub = StopAll; sub <= StartAxis + 1; ++sub) Add(SS).SubType = sub;
  }
  void Variables() {
    for (const Kind& kind : kKinds) {
      const bool by_flag = kind.terminal == Terminal::ByFlag;
      if (kind.operands == 0 && !by_flag) continue;
      Instruction& line = Add(kind.type);
      for (const OperandRow& row : kOperands)
        line.*row.from_variable = by_flag || (kind.operands & row.operand);
    }
  }
  void Inputs() {
    for (const int input : {7, 8, 6, 128, 135}) {
      for (const int type : {FS, SH, SO}) Add(type).IONum = static_cast<std::int16_t>(input);
    }
    for (const int type : {III, WII}) {
      for (const bool all : {false, true}) {
        Instruction& line = Add(type);
        line.InMask = 0b1111;
        line.InState = 0b0011;
        line.DrvMask = 0b101;
        line.DrvState = 0b100;
        line.WaitAND = all;
      }
    }
  }

  int next_ = 0;
};

constexpr int kModels = 51;

/// Gives the axes eight models, from this one on.
void SetModels(Program& program, int first) {
  for (int axis = 0; axis < kAxes; ++axis) {
    program.Axis.DriveModel[axis] = static_cast<std::int16_t>(first + axis < kModels ? first + axis : 0);
  }
}

TEST_F(GoldenListings, OfAProgramWithEveryTypeInEveryForm) {
  ExpectGolden("every-form", WholeListing(EveryForm().program, "untitled"));
}

TEST_F(GoldenListings, OfTheSameInSteps) {
  Program program = EveryForm().program;
  program.Axis.UseUnits.fill(false);
  ExpectGolden("every-form-in-steps", WholeListing(program, "untitled"));
}

/// Of the lines only those that read otherwise than on the drives of a new program.
TEST_F(GoldenListings, OfTheSameOnEveryModel) {
  Program program = EveryForm().program;
  const Listing plain = MakeListing(program, "untitled");
  std::string text;
  for (int first = 1; first < kModels; first += kAxes) {
    SetModels(program, first);
    Listing listing = MakeListing(program, "untitled");
    ASSERT_EQ(listing.lines.size(), plain.lines.size());
    Listing shown = {.heading = {},
                     .hardware_heading = listing.hardware_heading,
                     .hardware = listing.hardware,
                     .lines = {}};
    for (std::size_t i = 0; i < plain.lines.size(); ++i) {
      if (listing.lines[i].rows != plain.lines[i].rows) shown.lines.push_back(listing.lines[i]);
    }
    text += AsText(shown) + "\n";
  }
  ExpectGolden("every-model", text);
}

}  // namespace
}  // namespace tavlo
