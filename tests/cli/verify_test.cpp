// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <nlohmann/json.hpp>

#include "cli/companion.h"
#include "cli/desk/comparison.h"
#include "codegen/compile.h"
#include "programs.h"
#include "support/bytes.h"

namespace tavlo::testing {
namespace {

using cli::CompareSettings;
using cli::CompareWithHub;
using cli::SettingDifference;
using hubsim::Failure;

class VerifyCommand : public Companion {
 protected:
  VerifyCommand() {
    Line(1).Type = FL;
    Line(2).Type = MMI;
    Line(2).SubType = DisplayOnly;
    Line(2).Text = "Ready";
    Line(3).Type = GT;
  }
  Outcome Verify(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"verify", File(), "--port", "1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  [[nodiscard]] std::string HubImage() const {
    const auto memory = hub.port.hub.MemoryImage();
    return {memory.begin(), memory.end()};
  }
};

TEST_F(VerifyCommand, TheProgramThatWasSentIsTheSame) {
  PutIntoHub();
  EXPECT_EQ(Verify(), (Outcome{0, "The hub holds this program\n", ""}));
  EXPECT_EQ(hub.port.sent, "SCCU");
  EXPECT_EQ(Verify({"--json"}), (Outcome{0, "{\"same\":true,\"lines\":[],\"settings\":[]}\n", ""}));
}

TEST_F(VerifyCommand, EveryExampleIsTheSameOnTheHubThatItWasSentTo) {
  for (const auto& example : examples::ExamplePrograms()) {
    SCOPED_TRACE(example.file_name);
    for (const int firmware : {8, 9, 38}) {
      hubsim::HubOptions options;
      options.firmware = firmware;
      if (example.program.HubIndex == HubQuad) options.model = hubsim::HubModel::Quad;
      SimHub sim(options);
      std::ostringstream out;
      std::ostringstream err;
      cli::Environment environment{out, err, false, nullptr,
                                   [&](const cli::PortName&) { return sim.Line(); }};
      program = example.program;
      const std::string file = File();
      if (cli::RunTavlo({"download", file, "--port", "1", "--yes"}, environment) != cli::ExitCode::Done) {
        EXPECT_LT(firmware, 38) << err.str();
        continue;
      }
      out.str("");
      EXPECT_EQ(cli::RunTavlo({"verify", file, "--port", "1"}, environment), cli::ExitCode::Done);
      EXPECT_EQ(out.str(), "The hub holds this program\n");
    }
  }
}

TEST_F(VerifyCommand, LinesAndSettingsThatDifferAreToldInTheOperatorsWords) {
  program.Axis.DriveCurrent[2] = 0.9F;
  program.Axis.AxisName[1] = "";
  PutIntoHub();
  const std::string before = HubImage();
  program.Axis.DriveCurrent[2] = 1.2F;
  program.Axis.AxisName[1] = "Lift";
  program.LimitList = BranchToLine;
  Line(2).Text = "Steady";
  Line(3).LineNum = 41;
  Line(4).Type = RT;
  const std::string file = folder.Read("program.TVH");
  EXPECT_EQ(Verify(), (Outcome{7,
                               "The hub holds another program: 3 lines and 3 settings differ\n"
                               "Line 2\n"
                               "  file  MMI: \"Steady\"\n"
                               "  hub   MMI: \"Ready\"\n"
                               "Line 3\n"
                               "  file  Go to line 42\n"
                               "  hub   Go to line 1\n"
                               "Line 4\n"
                               "  file  Return from subroutine\n"
                               "  hub   (empty)\n"
                               "Axis 2 axis name: file Lift, hub (none)\n"
                               "Axis 3 current: file 1.20 A, hub 0.90 A\n"
                               "limit action: file branch to line number, hub halt program\n",
                               ""}));
  EXPECT_TRUE(HubImage() == before) << "nothing is changed";
}

TEST_F(VerifyCommand, JsonGivesBothSidesAndTheBytes) {
  PutIntoHub();
  Line(3).LineNum = 41;
  program.Axis.LimitKind[7] = 1;
  program.Axis.SameUnits = !program.Axis.SameUnits;
  const Outcome outcome = Verify({"--json"});
  EXPECT_EQ(outcome.code, 7);
  const std::string hub_same = program.Axis.SameUnits ? "no" : "yes";
  const std::string file_same = program.Axis.SameUnits ? "yes" : "no";
  EXPECT_EQ(
      outcome.out,
      "{\"same\":false,\"lines\":[{\"line\":3,\"file\":\"Go to line 42\",\"hub\":\"Go to line "
      "1\",\"fileBytes\":\"0629\",\"hubBytes\":\"0600\"}],"
      "\"settings\":[{\"axis\":8,\"field\":\"limit switches\",\"file\":\"open\",\"hub\":\"closed\"},"
      "{\"axis\":null,\"field\":\"same units for all axes\",\"file\":\"" +
          file_same + "\",\"hub\":\"" + hub_same +
          "\"}],\"error\":{\"code\":7,\"message\":\"the sum differs, or the hub holds another program\"}}\n");
}

TEST_F(VerifyCommand, ALineThatReadsTheSameIsToldByItsBytes) {
  PutIntoHub();
  Line(1).Decel = 99;
  EXPECT_EQ(Verify(), (Outcome{7,
                               "The hub holds another program: 1 line and 0 settings differ\n"
                               "Line 1 differs only in bytes: Axis 1:CW 1.0 rev, 3.0 rps\n"
                               "  file  0000007800640063004e2000\n"
                               "  hub   0000007800640064004e2000\n",
                               ""}));
}

TEST_F(VerifyCommand, ALineOfTheHubThatCannotBeReadIsToldAsSuch) {
  Line(3).Type = SO;
  Line(3).State = 2;
  Line(3).Time = 5000;
  PutIntoHub();
  Line(3).Type = NO;
  EXPECT_EQ(Verify(), (Outcome{7,
                               "The hub holds another program: 1 line and 0 settings differ\n"
                               "Line 3\n"
                               "  file  (empty)\n"
                               "  hub   cannot be read: its pulse is too long\n",
                               ""}));
}

TEST_F(VerifyCommand, TheMasksOfAHubQuadAreCutAsADownloadCutsThem) {
  QuadCompanion quad;
  program.HubIndex = HubQuad;
  Line(4).Type = WII;
  Line(4).Drive = kHubQuadIO;
  Line(4).InMask = 0xF3;
  const std::string file = File();
  ASSERT_EQ(cli::RunTavlo({"download", file, "--port", "1"}, quad.environment), cli::ExitCode::Done)
      << quad.err.str();
  EXPECT_EQ(cli::RunTavlo({"verify", file, "--port", "1"}, quad.environment), cli::ExitCode::Done)
      << quad.out.str();
}

TEST_F(VerifyCommand, EachFailureEndsByItsExitCode) {
  struct Row {
    Failure mode;
    int at;
    int code;
    std::string message;
  };
  const std::vector<Row> rows = {
      {Failure::SilentU, 1, 6, "The Tavlo Hub stopped responding after 0 chars."},
      {Failure::ShortU, 100, 6, "The Tavlo Hub stopped responding after 100 chars."},
      {Failure::WrongU, 1, 7, "Your program did not upload correctly."},
      {Failure::SilentC, 1, 6, kGivesTime + "Communication Error: The Tavlo Hub is not communicating."},
      {Failure::UnplugTx, 1000, 5, ""},
  };
  PutIntoHub();
  for (const Row& row : rows) {
    hub.clock.now += 10;
    hub.port.hub.SetFailure({row.mode, row.at});
    const Outcome outcome = Verify();
    EXPECT_EQ(outcome.code, row.code) << hubsim::RowOf(row.mode).name;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.substr(0, row.message.size()), row.message);
  }
}

TEST_F(VerifyCommand, AFileThatCannotBeCompiledIsRefused) {
  PutIntoHub();
  Line(12).Type = FL;
  Line(12).Accel = -1;
  const Outcome outcome = Verify();
  EXPECT_EQ(outcome.code, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err.substr(0, 28), "Line 12 cannot be compiled: ");
}

TEST_F(VerifyCommand, AFileThatCannotBeReadLeavesThePortAlone) {
  EXPECT_EQ(Tavlo({"verify", folder.Path("none"), "--port", "1"}).code, 4);
  EXPECT_EQ(hub.name.comm, 0) << "no line was made";
}

class CompareImage : public VerifyCommand {
 protected:
  CompareImage() { program.HubVersion = 1.38F; }
  cli::Comparison Compare(const std::string& image) { return CompareWithHub(program, compiled_, image); }
  std::string Image() {
    compiled_ = CompileProgram(program);
    return ImageOf(compiled_);
  }

 private:
  CompiledProgram compiled_;
};

TEST_F(CompareImage, WhatStandsBehindLinesAndTextsIsTheHubsOwn) {
  Line(5).Type = CM;
  Line(5).Text = std::string(27, 'x');
  std::string image = Image();
  image[0 * 32 + 12] = 'x';
  image[1 * 32 + 31] = 'x';
  image[4 * 32 + 28] = 'x';
  image[6656 + 7] = 'x';
  image[8191] = 'x';
  EXPECT_TRUE(Compare(image).Same());
}

TEST_F(CompareImage, EveryByteThatCountsIsToldWhenItDiffers) {
  Line(5).Type = FE;
  Line(5).CountIsMMI = true;
  Line(5).Text = "a text that is longer than its line";
  const std::string image = Image();
  const CompiledProgram compiled = CompileProgram(program);
  std::vector<std::size_t> counting;
  for (std::size_t line = 0; line < kLines; ++line) {
    for (std::size_t at = 0; at < compiled.lines[line].size(); ++at) counting.push_back(line * 32 + at);
  }
  for (std::size_t at = 6400; at < 6656 + compiled.pool.size(); ++at) counting.push_back(at);
  int untold = 0;
  for (const std::size_t at : counting) {
    for (const int bit : {1, 64}) {
      std::string other = image;
      other[at] = static_cast<char>(other[at] ^ bit);
      if (Compare(other).Same()) ++untold;
    }
  }
  EXPECT_GT(counting.size(), 480U);
  EXPECT_EQ(untold, 0);
}

TEST_F(CompareImage, BytesOfThePoolThatNoPromptTellsAreToldThemselves) {
  Line(2).Type = NO;
  Line(5).Type = FE;
  Line(5).CountIsMMI = true;
  Line(5).Text = "a text that is longer than its line";
  std::string image = Image();
  image[6656 + 3] = 'X';
  const cli::Comparison found = Compare(image);
  EXPECT_TRUE(found.lines.empty());
  ASSERT_EQ(found.settings.size(), 1U);
  EXPECT_EQ(found.settings[0].field, "prompt texts from byte 4 on");
  EXPECT_EQ(found.settings[0].hub.substr(0, 4), "586c");
}

TEST(CompareSettings, EachFieldIsNamedWithBothValues) {
  struct Row {
    std::size_t at;
    std::string bytes;
    SettingDifference told;
  };
  const std::string file(256, '\0');
  const std::vector<Row> rows = {
      {0, Bytes({1, 20}), {1, "current", "0.00 A", "1.20 A"}},
      {32 + 2, Bytes({16}), {2, "idle setting", "0", "16"}},
      {64 + 3, "5", {3, "limit switches", "0", "closed"}},
      {64 + 3, "6", {3, "limit switches", "0", "open"}},
      {64 + 3, "3", {3, "limit switches", "0", "not used"}},
      {96 + 4, Bytes({15}), {4, "drive model", "none", "Zenu-A-p (15)"}},
      {96 + 4, Bytes({200}), {4, "drive model", "none", "unknown type (200)"}},
      {128 + 5, Bytes({78, 32}), {5, "steps per revolution", "0", "20000"}},
      {160 + 7, Bytes({3}), {6, "drive kind", "0", "3"}},
      {192 + 8, Bytes({1, 0, 2}), {7, "steps per unit", "0", "65538"}},
      {224 + 11, Bytes({2}) + "mm  ", {8, "unit name", "", "mm"}},
      {224 + 11, Bytes({255}) + "abcd", {8, "unit name", "", "abcd"}},
      {11, Bytes({0}) + "mm  ", {1, "unit name", " (bytes 0000000000)", " (bytes 006d6d2020)"}},
      {16, "Lift    ", {1, "axis name", std::string(8, '\0'), "Lift"}},
      {24, Bytes({0, 0, 40}), {1, "speed factor", "0", "40"}},
      {27, Bytes({0, 5}), {1, "second current", "0.00 A", "0.05 A"}},
      {29, Bytes({255, 255}), {1, "third current", "0.00 A", "257.55 A"}},
      {0, Bytes({0, 100}), {1, "current", "0.00 A", "1.00 A"}},
      {31, Bytes({1}), {std::nullopt, "operator terminal used", "no", "yes"}},
      {63, Bytes({9}), {2, "spare byte", "0", "9"}},
      {95, Bytes({1}), {std::nullopt, "same units for all axes", "no", "yes"}},
      {95, Bytes({2}), {std::nullopt, "same limits for all axes", "no", "yes"}},
      {95, Bytes({4}), {std::nullopt, "same spare setting for all axes", "no", "yes"}},
      {95, Bytes({8}), {std::nullopt, "spare bits", "0", "1"}},
      {127, Bytes({2}), {std::nullopt, "limit action", "halt program", "continue program"}},
      {127, Bytes({3}), {std::nullopt, "limit action", "halt program", "3"}},
      {159, Bytes({199}), {std::nullopt, "limit line", "1", "200"}},
      {255, Bytes({1}), {8, "spare byte", "0", "1"}},
  };
  for (const Row& row : rows) {
    std::string hub = file;
    hub.replace(row.at, row.bytes.size(), row.bytes);
    const auto found = CompareSettings(file, hub);
    ASSERT_EQ(found.size(), 1U) << row.told.field;
    EXPECT_EQ(found[0].axis, row.told.axis) << row.told.field;
    EXPECT_EQ(found[0].field, row.told.field);
    EXPECT_EQ(found[0].file, row.told.file);
    EXPECT_EQ(found[0].hub, row.told.hub);
  }
}

TEST(CompareSettings, ValuesThatReadTheSameShowTheirBytes) {
  std::string file(256, '\0');
  std::string hub = file;
  file[0] = 1;
  hub[1] = 100;
  EXPECT_EQ(CompareSettings(file, hub),
            (std::vector<SettingDifference>{{1, "current", "1.00 A (bytes 0100)", "1.00 A (bytes 0064)"}}));
}

}  // namespace
}  // namespace tavlo::testing
