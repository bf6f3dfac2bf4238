// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <nlohmann/json.hpp>
#include <random>
#include <set>

#include "cli/companion.h"
#include "codegen/compile.h"
#include "model/kinds.h"
#include "programs.h"

namespace tavlo::testing {
namespace {

constexpr std::size_t kImage = 8192;

class DecodeCommand : public Companion {
 protected:
  [[nodiscard]] std::string Copy() const { return folder.Path("copy.TVH"); }
  Outcome Decode(const std::string& image, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"decode", folder.Write("image", image), "-o", Copy()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  /// The image of the program, made by the companion itself.
  std::string Compiled(const std::string& firmware = "1.38") {
    EXPECT_EQ(Tavlo({"compile", File(), "--firmware", firmware, "-o", folder.Path("compiled")}).code, 0);
    return folder.Read("compiled");
  }
  nlohmann::json Bytes(const std::string& path) {
    return nlohmann::json::parse(Tavlo({"compile", path, "--json"}).out);
  }
};

TEST_F(DecodeCommand, WritesTheProgramAndPrintsNothing) {
  Line(1).Type = GT;
  Line(1).LineNum = 6;
  Line(7).Type = MMI;
  Line(7).SubType = DisplayOnly;
  Line(7).Text = "Ready";
  EXPECT_EQ(Decode(Compiled()), (Outcome{0, "", ""}));
  EXPECT_EQ(Tavlo({"show", Copy()}), (Outcome{0, "1\tGo to line 7\n7\tMMI: \"Ready\"\n", ""}));
}

TEST_F(DecodeCommand, JsonCountsTheLines) {
  Line(3).Type = FL;
  EXPECT_EQ(Decode(Compiled("1.19"), {"--firmware", "1.19", "--json"}),
            (Outcome{0, "{\"firmware\":\"1.19\",\"lineCount\":1,\"file\":\"" + Copy() + "\"}\n", ""}));
}

// What no image carries comes back as a fresh line has it, and a comment of the full length loses its head:
// these kinds compile to other bytes.
TEST_F(DecodeCommand, EveryExampleComesBackButForWhatNoImageCarries) {
  std::map<std::string, std::set<std::string>> changed;
  for (const auto& example : examples::ExamplePrograms()) {
    const std::string name(example.file_name);
    SCOPED_TRACE(name);
    program = example.program;
    EXPECT_EQ(Decode(Compiled()), (Outcome{0, "", ""}));
    const auto before = Bytes(File());
    const auto after = Bytes(Copy());
    EXPECT_EQ(after["system"], before["system"]);
    // A knob line's text is not read back, so its rest in the pool is gone.
    const bool knob_text = name == "every-line.TVH";
    EXPECT_EQ(after["pool"] == before["pool"], !knob_text);
    for (int line = 0; line < kLines; ++line) {
      if (after["lines"][line] == before["lines"][line]) continue;
      changed[name].emplace(Mnemonic(program.Prog[line].Type));
    }
  }
  const std::map<std::string, std::set<std::string>> expected = {{"every-line.TVH", {"CC", "FE", "IM"}},
                                                                 {"hub-quad.TVH", {"CM"}},
                                                                 {"nested-repeats.TVH", {"IM"}},
                                                                 {"pick-and-place.TVH", {"CM"}}};
  EXPECT_EQ(changed, expected);
}

/// A line whose test asks inputs 1 and 2 of its drive, and X1 from firmware 1.09 on.
std::string ImageWithDriveInputs() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  program.HubVersion = 1.09F;
  program.Axis.DriveModel[0] = 11;
  program.Prog[0].Type = III;
  program.Prog[0].InMask = 3;
  program.Prog[0].DrvMask = 2;
  return ImageOf(CompileProgram(program));
}

/// Sets the drive model of an axis, 0-based, in an image.
void SetModel(std::string& image, int axis, char code) {
  constexpr std::size_t kSystem = 6400;
  constexpr std::size_t kAxisBytes = 32;
  constexpr std::size_t kModel = 4;
  image[kSystem + kAxisBytes * static_cast<std::size_t>(axis) + kModel] = code;
}

TEST_F(DecodeCommand, ADriveModelThatThereIsNotIsRefused) {
  std::string image = Compiled();
  SetModel(image, 0, 50);
  EXPECT_EQ(Decode(image).code, 0);
  SetModel(image, 2, 51);
  SetModel(image, 7, '\xff');
  std::filesystem::remove(Copy());
  const std::string name = "tavlo: " + folder.Path("image");
  EXPECT_EQ(Decode(image), (Outcome{4, "",
                                    name + ": axis 3 has the drive model 51, which there is not\n" + name +
                                        ": axis 8 has the drive model 255, which there is not\n"}));
  EXPECT_FALSE(std::filesystem::exists(Copy()));
}

TEST_F(DecodeCommand, WhatAProgramFileDoesNotHoldIsTold) {
  EXPECT_EQ(Decode(ImageWithDriveInputs(), {"--firmware", "1.09"}),
            (Outcome{0, "",
                     "tavlo: line 1 tests inputs of the drive itself (X), which a program file does not "
                     "hold: enter them again\n"}));
  EXPECT_EQ(Tavlo({"show", Copy()}).out, "1\tAxis 1:If input 1,2 low goto 1\n");
}

TEST_F(DecodeCommand, TheFirmwareDecidesWhatIsRead) {
  EXPECT_EQ(Decode(ImageWithDriveInputs(), {"--firmware", "1.08"}), (Outcome{0, "", ""}));
}

TEST_F(DecodeCommand, AFileOfAnotherSizeIsNoImage) {
  struct Row {
    std::size_t size;
    std::string words;
  };
  const std::vector<Row> rows = {{0, "0 bytes"},       {1, "1 byte"},
                                 {8191, "8191 bytes"}, {8193, "8193 bytes"},
                                 {8194, "8194 bytes"}, {2000000, "at least 1048576 bytes"}};
  for (const Row& row : rows) {
    EXPECT_EQ(Decode(std::string(row.size, '\0')),
              (Outcome{4, "",
                       "tavlo: " + folder.Path("image") + ": has " + row.words +
                           "; an image of the hub's memory has 8192\n"}));
  }
  EXPECT_FALSE(std::filesystem::exists(Copy()));
}

TEST_F(DecodeCommand, WhatCannotBeReadIsToldWithTheReason) {
  EXPECT_EQ(Tavlo({"decode", folder.Path("none"), "-o", Copy()}),
            (Outcome{4, "", "tavlo: cannot read " + folder.Path("none") + ": No such file or directory\n"}));
  EXPECT_EQ(Tavlo({"decode", folder.Path(), "-o", Copy()}),
            (Outcome{4, "", "tavlo: cannot read " + folder.Path() + ": Is a directory\n"}));
}

TEST_F(DecodeCommand, ALineThatCannotBeReadIsNamedAndNothingIsWritten) {
  Line(3).Type = SO;
  Line(3).State = 2;
  Line(3).Time = 5000;
  folder.Write("copy.TVH", "what is there");
  EXPECT_EQ(Decode(Compiled()), (Outcome{4, "", "Line 3 cannot be read: its pulse is too long.\n"}));
  EXPECT_EQ(folder.Read("copy.TVH"), "what is there");
}

TEST_F(DecodeCommand, AProgramThatCannotBeWrittenEndsWithFour) {
  const std::string file = folder.Path("no/such/copy.TVH");
  EXPECT_EQ(Tavlo({"decode", folder.Write("image", Compiled()), "-o", file}),
            (Outcome{4, "", "tavlo: cannot write " + file + ": No such file or directory\n"}));
}

TEST_F(DecodeCommand, AnyBytesGiveAProgramThatLoadsOrAMessage) {
  std::mt19937 random(20);
  int written = 0;
  for (int round = 0; round < 60; ++round) {
    std::string image(kImage, '\0');
    for (char& c : image) c = static_cast<char>(random());
    for (int axis = 0; axis < kAxes; ++axis) SetModel(image, axis, static_cast<char>(random() % 51));
    const Outcome outcome = Decode(image);
    if (outcome.code == 0) {
      ++written;
      EXPECT_EQ(Tavlo({"show", Copy()}).code, 0);
    } else {
      EXPECT_EQ(outcome.code, 4);
      EXPECT_TRUE(outcome.err.ends_with("cannot be read: its pulse is too long.\n"));
    }
  }
  EXPECT_GT(written, 0);
}

}  // namespace
}  // namespace tavlo::testing
