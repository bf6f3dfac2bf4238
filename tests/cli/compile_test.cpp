// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/compile.h"

#include <nlohmann/json.hpp>

#include "cli/companion.h"
#include "link/drive_check.h"
#include "model/program_queries.h"
#include "support/bytes.h"

namespace tavlo::testing {
namespace {

class CompileCommand : public Companion {
 protected:
  CompiledProgram Expected(int revision_byte = 38) {
    Program copy = program;
    copy.HubVersion = RevisionOf(static_cast<unsigned char>(revision_byte));
    copy.MMIused = ProgHasMMI(copy);
    return CompileProgram(copy);
  }
};

TEST_F(CompileCommand, PrintsLinesPoolAndChecksum) {
  Line(1).Type = FL;
  Line(7).Type = MMI;
  Line(7).SubType = DisplayOnly;
  Line(7).Text = "Ready";
  EXPECT_EQ(
      Tavlo({"compile", File()}),
      (Outcome{0, "Lines in use\t2\nPool bytes\t7\nChecksum\t" + std::to_string(Expected().checksum) + "\n",
               ""}));
}

TEST_F(CompileCommand, JsonGivesEveryByteInHex) {
  Line(1).Type = FL;
  Line(7).Type = MMI;
  Line(7).SubType = DisplayOnly;
  Line(7).Text = "Ready";
  const CompiledProgram expected = Expected();
  const Outcome outcome = Tavlo({"compile", File(), "--json"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out.substr(0, 28), "{\"firmware\":\"1.38\",\"lines\":[");
  const auto json = nlohmann::json::parse(outcome.out);
  EXPECT_EQ(json.size(), 5u);
  ASSERT_EQ(json["lines"].size(), 200u);
  for (int line = 0; line < kLines; ++line) EXPECT_EQ(json["lines"][line], Hex(expected.lines[line]));
  EXPECT_EQ(json["lines"][1], "0b");
  EXPECT_EQ(json["system"], Hex(expected.system));
  EXPECT_EQ(json["system"].get<std::string>().size(), 512u);
  EXPECT_EQ(json["pool"], "5265616479ff00");
  EXPECT_EQ(json["checksum"], expected.checksum);
}

TEST_F(CompileCommand, TheFirmwareDecidesTheBytes) {
  Line(1).Type = III;
  Line(1).InMask = 3;
  const std::string file = File();
  const auto line_for = [&](const std::string& firmware) {
    const auto json = nlohmann::json::parse(Tavlo({"compile", file, "--firmware", firmware, "--json"}).out);
    return json["lines"][0].get<std::string>();
  };
  EXPECT_EQ(line_for("1.08"), Hex(Expected(8).lines[0]));
  EXPECT_EQ(line_for("1.09"), Hex(Expected(9).lines[0]));
  EXPECT_NE(line_for("1.08"), line_for("1.09"));
}

TEST_F(CompileCommand, TheImageIsTheHubsMemory) {
  Line(1).Type = FL;
  Line(200).Type = MMI;
  Line(200).Text = "Last";
  EXPECT_EQ(Tavlo({"compile", File(), "-o", folder.Path("image")}), (Outcome{0, "", ""}));
  EXPECT_EQ(folder.Read("image").size(), 8192u);
  EXPECT_EQ(folder.Read("image"), ImageOf(Expected()));
}

TEST_F(CompileCommand, ImageAndJsonGoTogetherAndADeviceTakesTheImage) {
  const Outcome outcome = Tavlo({"compile", File(), "-o", "/dev/null", "--json"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(nlohmann::json::parse(outcome.out)["pool"], "00");
  EXPECT_FALSE(std::filesystem::is_regular_file("/dev/null"));
}

TEST_F(CompileCommand, AnImageThatCannotBeWrittenEndsWithFourAndSaysWhy) {
  const std::string image = folder.Path("no/such/folder/image");
  const Outcome outcome = Tavlo({"compile", File(), "-o", image});
  EXPECT_EQ(outcome.code, 4);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "tavlo: cannot write " + image + ": No such file or directory\n");
  EXPECT_EQ(Tavlo({"compile", File(), "-o", "/dev/full"}),
            (Outcome{4, "", "tavlo: cannot write /dev/full: No space left on device\n"}));
}

TEST_F(CompileCommand, ALineThatHasNoBytesIsRefused) {
  Line(12).Type = FL;
  Line(12).Accel = -1;
  const Outcome outcome = Tavlo({"compile", File(), "-o", folder.Path("image"), "--json"});
  EXPECT_EQ(outcome.code, 3);
  EXPECT_EQ(outcome.out, "{\"error\":{\"code\":3,\"message\":\"" +
                             outcome.err.substr(0, outcome.err.size() - 1) + "\"}}\n");
  EXPECT_EQ(outcome.err.substr(0, 28), "Line 12 cannot be compiled: ");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("image")));
}

TEST_F(CompileCommand, PromptTextsBeyondTheHubsPoolAreTold) {
  for (int line = 1; line <= 100; ++line) {
    Line(line).Type = MMI;
    Line(line).Text = std::string(20, 'x');
  }
  const Outcome outcome = Tavlo({"compile", File()});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "tavlo: the prompt texts take 2101 bytes; the hub keeps the first 1536\n");
}

}  // namespace
}  // namespace tavlo::testing
