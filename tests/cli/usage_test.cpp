// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/companion.h"
#include "cli/options.h"

namespace tavlo::testing {
namespace {

using Usage = Companion;

TEST_F(Usage, VersionPrintsNameAndVersion) {
  EXPECT_EQ(Tavlo({"--version"}), (Outcome{0, "tavlo 1.29.1\n", ""}));
}

TEST_F(Usage, HelpNamesEveryCommandAndEveryExitCode) {
  const Outcome outcome = Tavlo({"--help"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "");
  for (const char* word : {"show", "check", "compile", "decode", "download", "upload", "verify", "run",
                           "terminal", "identify", "ports", "130"}) {
    EXPECT_NE(outcome.out.find(word), std::string::npos) << word;
  }
  for (const auto& row : cli::kExitCodes) {
    EXPECT_NE(outcome.out.find(row.meaning), std::string::npos) << row.meaning;
  }
}

TEST_F(Usage, ACommandLineThatIsNotUnderstoodEndsWithTwoAndSaysWhy) {
  struct Row {
    std::vector<std::string> arguments;
    std::string reason;
  };
  const std::vector<Row> rows = {
      {{}, "A subcommand is required"},
      {{"frobnicate"}, "The following argument was not expected: frobnicate"},
      {{"show"}, "FILE is required"},
      {{"compile"}, "FILE is required"},
      {{"download", "--port", "1"}, "FILE is required"},
      {{"download", "x.TVH"}, "--port is required"},
      {{"run"}, "--port is required"},
      {{"identify", "--port", "0"}, "--port: '0' is neither 1 to 8 nor a path"},
      {{"identify", "--port", "9"}, "--port: '9' is neither 1 to 8 nor a path"},
      {{"identify", "--port", "12"}, "--port: '12' is neither 1 to 8 nor a path"},
      {{"compile", "x", "--firmware", "0.99"}, "--firmware: '0.99' is no firmware from 1.00 to 3.55"},
      {{"compile", "x", "--firmware", "3.56"}, "--firmware: '3.56' is no firmware from 1.00 to 3.55"},
      {{"compile", "x", "--firmware", "1.385"}, "--firmware: '1.385' is no firmware from 1.00 to 3.55"},
      {{"compile", "x", "--firmware", "new"}, "--firmware: 'new' is no firmware from 1.00 to 3.55"},
      {{"run", "--port", "1", "--yes", "--no"}, "--yes excludes --no"},
      {{"run", "--port", "1", "--for", "-1"}, "--for: '-1' is no number of seconds"},
      {{"run", "--port", "1", "--for", "nan"}, "--for: 'nan' is no number of seconds"},
      {{"upload", "--port", "1"}, "FILE is required"},
      {{"upload", "x.OSK", "--port", "1"}, "FILE: 'x.OSK' does not end in .TVH"},
      {{"upload", "x.TVH"}, "--port is required"},
      {{"decode", "image"}, "--output is required"},
      {{"decode", "-o", "x.TVH"}, "IMAGE is required"},
      {{"decode", "image", "-o", "TVH"}, "--output: 'TVH' does not end in .TVH"},
      {{"compile", "x.TVH", "-o", ""}, "--output: the name is empty"},
      {{"compile", "x.TVH", "--output="}, "--output: 1 required IMAGE missing"},
      {{"decode", "image", "-o", ""}, "--output: the name is empty"},
      {{"upload", "", "--port", "1"}, "FILE: the name is empty"},
      {{"verify", "x.TVH"}, "--port is required"},
      {{"terminal"}, "--port is required"},
      {{"terminal", "--port", "1", "--wait", "soon"}, "--wait: 'soon' is no number of seconds"},
      {{"ports", "--port", "1"}, "The following arguments were not expected: 1 --port"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Tavlo(row.arguments),
              (Outcome{2, "", row.reason + "\nRun with --help for more information.\n"}));
  }
}

TEST(PortOption, OneToEightIsACommAndEverythingThatIsNoNumberADevice) {
  for (int comm = 1; comm <= 8; ++comm) {
    const auto port = cli::ParsePort(std::to_string(comm));
    ASSERT_TRUE(port);
    EXPECT_EQ(port->comm, comm);
    EXPECT_EQ(port->Label(), "Comm " + std::to_string(comm));
  }
  for (const char* device : {"/dev/ttyUSB0", "COM3", "link", "1a"}) {
    const auto port = cli::ParsePort(device);
    ASSERT_TRUE(port);
    EXPECT_EQ(port->comm, 0);
    EXPECT_EQ(port->Label(), device);
  }
  for (const char* wrong : {"", "0", "9", "01", "10"}) EXPECT_FALSE(cli::ParsePort(wrong)) << wrong;
}

TEST(NewFile, HasTheNameOfAProgramFile) {
  for (const char* name : {"x.TVH", "x.tvh", "/a/b.tVh", ".TVH"})
    EXPECT_TRUE(cli::IsProgramName(name)) << name;
  for (const char* name : {"", "x", "TVH", "x.OSK", "x.TVH ", "x.TVH/"}) {
    EXPECT_FALSE(cli::IsProgramName(name)) << name;
  }
}

TEST(FirmwareOption, GivesTheRevisionByteThatTheHubWouldSend) {
  EXPECT_EQ(cli::ParseFirmware("1.00"), 0);
  EXPECT_EQ(cli::ParseFirmware("1"), 0);
  EXPECT_EQ(cli::ParseFirmware("1.08"), 8);
  EXPECT_EQ(cli::ParseFirmware("1.1"), 10);
  EXPECT_EQ(cli::ParseFirmware("1.38"), 38);
  EXPECT_EQ(cli::ParseFirmware("3.55"), 255);
  EXPECT_EQ(cli::ParseFirmware("nan"), std::nullopt);
  EXPECT_EQ(cli::ParseFirmware("inf"), std::nullopt);
}

}  // namespace
}  // namespace tavlo::testing
