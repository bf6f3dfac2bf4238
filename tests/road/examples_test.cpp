// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "commands/program_files.h"
#include "hubsim/program/line_codes.h"
#include "model/program_file.h"
#include "programs.h"
#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

std::string FileText(std::string_view name) {
  std::ifstream file(std::string(TAVLO_EXAMPLES_DIR) + "/" + std::string(name), std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Examples, TheFilesAreWhatTheWriterMakesOfThem) {
  for (const auto& example : examples::ExamplePrograms()) {
    EXPECT_TRUE(FileText(example.file_name) == WriteHubProg(example.program, 0))
        << example.file_name << ": remake it with make-examples";
  }
  EXPECT_TRUE(FileText(examples::kOldExample) == examples::OldExampleFile());
}

TEST(Examples, EachIsTheSameByteForByteAfterALoadAndASave) {
  for (const auto& example : examples::ExamplePrograms()) {
    SCOPED_TRACE(example.file_name);
    FakeDesk desk;
    desk.files.files["in.TVH"] = FileText(example.file_name);
    desk.dialogs.next_file_name = "in.TVH";
    Load(desk.desk);
    EXPECT_TRUE(desk.boxes.shown.empty());
    desk.dialogs.next_file_name = "out.TVH";
    Save(desk.desk);
    EXPECT_TRUE(desk.files.files["out.TVH"] == desk.files.files["in.TVH"]);
  }
}

TEST(Examples, TheOldOneLoadsWithItsHandWheelLineAsAComment) {
  FakeDesk desk;
  const std::string name(examples::kOldExample);
  desk.files.files[name] = FileText(name);
  EXPECT_TRUE(LoadFile(desk.desk, name));
  EXPECT_TRUE(desk.boxes.shown.empty());
  EXPECT_EQ(desk.Line(2).Type, CM);
  EXPECT_EQ(desk.Line(7).Time, 5);
  EXPECT_EQ(desk.Line(9).LineNum, 5) << "its loop is linked";
  EXPECT_EQ(desk.source.program.Axis.UnitName[0], "mm");
}

TEST(Examples, TheSimulatedHubHasACodeForEveryKindOfLine) {
  EXPECT_EQ(hubsim::kLineCodes, kTypes) << "a kind of line would be taken for one that means nothing";
}

TEST(Examples, TogetherTheyUseEveryKindOfLine) {
  std::array<int, kTypes> used{};
  for (const auto& example : examples::ExamplePrograms()) {
    for (const Instruction& line : example.program.Prog) ++used[line.Type];
  }
  for (int type = 0; type < kTypes; ++type) {
    EXPECT_EQ(used[type] > 0, type != MMImenu) << "no example has a line of type " << type;
  }
}

}  // namespace
}  // namespace tavlo::testing
