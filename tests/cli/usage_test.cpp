// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/companion.h"
#include "cli/console/options.h"

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
  for (const char* word : {"show", "check", "simulate", "compile", "decode", "convert", "download", "upload",
                           "verify", "run", "terminal", "identify", "stop", "ports", "help", "130"}) {
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
      {{"convert"}, "OLD is required"},
      {{"convert", "x.OSK"}, "NEW is required"},
      {{"convert", "x.OSK", "y.OSK"}, "NEW: 'y.OSK' does not end in .TVH"},
      {{"compile", "x.TVH", "-o", ""}, "--output: the name is empty"},
      {{"compile", "x.TVH", "--output="}, "--output: 1 required IMAGE missing"},
      {{"decode", "image", "-o", ""}, "--output: the name is empty"},
      {{"upload", "", "--port", "1"}, "FILE: the name is empty"},
      {{"verify", "x.TVH"}, "--port is required"},
      {{"simulate"}, "FILE is required"},
      {{"terminal"}, "--port is required"},
      {{"terminal", "--port", "1", "--wait", "soon"}, "--wait: 'soon' is no number of seconds"},
      {{"ports", "--port", "1"}, "The following arguments were not expected: 1 --port"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Tavlo(row.arguments),
              (Outcome{2, "", row.reason + "\nRun with --help for more information.\n"}));
  }
}

TEST_F(Usage, AMistypedCommandIsToldWithTheOneThatWasMeant) {
  struct Row {
    std::string typed;
    std::string meant;
  };
  const std::vector<Row> rows = {{"downlaod", "download"}, {"Show", "show"},        {"rum", "run"},
                                 {"port", "ports"},        {"idetify", "identify"}, {"stp", "stop"},
                                 {"hlep", "help"}};
  for (const Row& row : rows) {
    EXPECT_EQ(Tavlo({row.typed}), (Outcome{2, "",
                                           "tavlo: there is no command '" + row.typed + "'; did you mean '" +
                                               row.meant + "'?\nRun with --help for more information.\n"}));
  }
  for (const std::string far : {"frobnicate", "x", "ab", "", "ruled out"}) {
    EXPECT_EQ(Tavlo({far}),
              (Outcome{2, "",
                       "tavlo: there is no command '" + far + "'\nRun with --help for more information.\n"}));
  }
}

TEST_F(Usage, HelpOfACommandIsThatOfItsOption) {
  const Outcome download = Tavlo({"download", "--help"});
  EXPECT_EQ(download.code, 0);
  EXPECT_NE(download.out.find("TAVLO_PORT"), std::string::npos);
  EXPECT_EQ(Tavlo({"help", "download"}), download);
  EXPECT_EQ(Tavlo({"help"}), Tavlo({"--help"}));
  EXPECT_EQ(Tavlo({"help", "downlod"}).err.substr(0, 63),
            "tavlo: there is no command 'downlod'; did you mean 'download'?\n");
}

TEST_F(Usage, ThePortMayComeFromTheEnvironment) {
  ASSERT_EQ(setenv("TAVLO_PORT", "3", 1), 0);
  EXPECT_EQ(Tavlo({"identify"}).code, 0);
  EXPECT_EQ(hub.name.comm, 3);
  EXPECT_EQ(Tavlo({"identify", "-p", "4"}).code, 0);
  EXPECT_EQ(hub.name.comm, 4) << "what is told on the command line rules";
  ASSERT_EQ(setenv("TAVLO_PORT", "9", 1), 0);
  EXPECT_EQ(Tavlo({"identify"}).code, 2);
  ASSERT_EQ(unsetenv("TAVLO_PORT"), 0);
  EXPECT_EQ(Tavlo({"identify"}).code, 2);
}

TEST_F(Usage, WithJsonEveryFailureIsAnObjectWithCodeAndMessage) {
  struct Row {
    std::vector<std::string> arguments;
    int code;
    std::string message;
  };
  hub.open_error = "there is no device";
  const std::vector<Row> rows = {
      {{"nothing"}, 2, "there is no command 'nothing'"},
      {{"show"}, 2, "FILE is required"},
      {{"show", folder.Path("none")},
       4,
       "Error: could not open file.\\n" + folder.Path("none") + ": No such file or directory"},
      {{"identify", "--port", "1"}, 5, "cannot open Comm 1: there is no device"},
      {{"stop", "--port", "1"},
       5,
       "cannot open Comm 1: there is no device\\nnothing was sent; if the machine moves, use its own stop"},
  };
  for (Row row : rows) {
    row.arguments.emplace_back("--json");
    const Outcome outcome = Tavlo(row.arguments);
    EXPECT_EQ(outcome.code, row.code);
    EXPECT_EQ(outcome.out, "{\"error\":{\"code\":" + std::to_string(row.code) + ",\"message\":\"" +
                               row.message + "\"}}\n");
  }
}

TEST(Firmware, ReadsWithOneAndWithTwoPlaces) {
  EXPECT_EQ(cli::ParseFirmware("1.4"), 40);
  EXPECT_EQ(cli::ParseFirmware("1.40"), 40);
  EXPECT_EQ(cli::ParseFirmware("1.04"), 4);
  EXPECT_EQ(cli::ParseFirmware("2"), 100);
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
