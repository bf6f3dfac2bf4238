// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <nlohmann/json.hpp>

#include "cli/companion.h"
#include "codegen/compile.h"
#include "link/drive_check.h"

namespace tavlo::testing {
namespace {

using hubsim::Failure;

class DownloadCommand : public Companion {
 protected:
  DownloadCommand() {
    Line(1).Type = FL;
    Line(2).Type = MMI;
    Line(2).SubType = DisplayOnly;
    Line(2).Text = "Ready";
  }

  Outcome Download(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"download", File(), "--port", "1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  CompiledProgram Compiled() {
    Program copy = program;
    copy.HubVersion = RevisionOf(38);
    copy.MMIused = true;
    return CompileProgram(copy);
  }
  static int Bytes(const CompiledProgram& compiled) {
    std::size_t bytes = compiled.system.size() + compiled.pool.size();
    for (const std::string& line : compiled.lines) bytes += line.size();
    return static_cast<int>(bytes);
  }
};

TEST_F(DownloadCommand, PutsTheProgramIntoTheHubAndShowsTheProof) {
  const CompiledProgram compiled = Compiled();
  EXPECT_EQ(Download(), (Outcome{0,
                                 "Downloaded " + std::to_string(Bytes(compiled)) +
                                     " bytes to the Tavlo Hub-Octo, firmware 1.38; it confirms the sum " +
                                     std::to_string(compiled.checksum) + "\n",
                                 ""}));
  const auto memory = hub.port.hub.MemoryImage();
  const std::string image(memory.begin(), memory.end());
  EXPECT_EQ(image.substr(0, 8192), ImageOf(compiled));
  EXPECT_EQ(hub.name.comm, 1);
}

TEST_F(DownloadCommand, JsonGivesTheProof) {
  const CompiledProgram compiled = Compiled();
  const Outcome outcome = Download({"--json"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "");
  const auto json = nlohmann::ordered_json::parse(outcome.out);
  EXPECT_EQ(json.dump(), "{\"firmware\":\"1.38\",\"model\":\"Tavlo Hub-Octo\",\"bytes\":" +
                             std::to_string(Bytes(compiled)) +
                             ",\"checksum\":" + std::to_string(compiled.checksum) +
                             ",\"seconds\":" + json["seconds"].dump() + "}");
  EXPECT_GE(json["seconds"].get<double>(), 0);
}

TEST_F(DownloadCommand, NamesTheHubThatIsThere) {
  hubsim::HubOptions options;
  options.model = hubsim::HubModel::Quad;
  options.firmware = 19;
  SimHub quad(options);
  std::ostringstream out;
  std::ostringstream err;
  cli::Environment environment{out, err, false, nullptr, [&](const cli::PortName&) { return quad.Line(); }};
  EXPECT_EQ(cli::RunTavlo({"download", File(), "--port", "/dev/hub"}, environment), cli::ExitCode::Done);
  EXPECT_NE(out.str().find(" bytes to the Hub Quad, firmware 1.19; it confirms"), std::string::npos);
}

TEST_F(DownloadCommand, ATerminalSeesPhaseAndSecondsLeftAndThenNothingOfIt) {
  err_is_terminal = true;
  const Outcome outcome = Download();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.err.find("] program lines, 1 s left"), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.err.find("[##############################] prompt texts, 0 s left"), std::string::npos);
  EXPECT_EQ(outcome.err.substr(outcome.err.size() - 4), "\r\x1b[K");
}

TEST_F(DownloadCommand, EachFailureOfTheHubIsToldInItsWordsAndByItsExitCode) {
  struct Row {
    Failure mode;
    int at;
    int code;
    std::string message;
  };
  const std::vector<Row> rows = {
      {Failure::SilentC, 1, 6,
       kGivesTime +
           "Communication Error: The Tavlo Hub is not communicating.  Is it connected to the right port and "
           "turned "
           "on?  Do you have the right comm port selected?  Perhaps cycling power will help."},
      {Failure::OneByteC, 1, 6,
       kGivesTime +
           "Communication Error: The Tavlo Hub is not communicating.  Is it connected to the right port and "
           "turned "
           "on?  Do you have the right comm port selected?  Perhaps cycling power will help."},
      {Failure::SilentF, 1, 6,
       "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and "
       "turned "
       "on?"},
      {Failure::SilentLine, 1, 6,
       "The Tavlo Hub has stopped responding during transfer of program line 1. Is it connected and turned "
       "on?"},
      {Failure::SilentLine, 200, 6,
       "The Tavlo Hub has stopped responding during transfer of program line 200. Is it connected and turned "
       "on?"},
      {Failure::NoiseLine, 57, 6,
       "The Tavlo Hub has stopped responding during transfer of program line 57. Is it connected and turned "
       "on?"},
      {Failure::WrongLine, 3, 6,
       "The Tavlo Hub has stopped responding during transfer of program line 3. Is it connected and turned "
       "on?"},
      {Failure::SilentSystem, 8, 6, "The Tavlo Hub has stopped responding during system info transfer."},
      {Failure::NoiseSystem, 1, 6, "The Tavlo Hub has stopped responding during system info transfer."},
      {Failure::SilentPool, 1, 6, "The Tavlo Hub has stopped responding during string pool transfer."},
      {Failure::NoSum, 1, 6,
       "The Tavlo Hub did not provide a checksum.  There may be a problem with the download."},
      {Failure::ShortSum, 1, 6,
       "The Tavlo Hub did not provide a checksum.  There may be a problem with the download."},
      {Failure::LongSum, 1, 6,
       "The Tavlo Hub did not provide a checksum.  There may be a problem with the download."},
      {Failure::WrongSum, 1, 7,
       "Your program did not download correctly.  Make sure the cable connections are secure, less than 50 "
       "feet "
       "long, and that you are not working around electrical noise, such as a welder, a high powered motor "
       "or "
       "big relays."},
  };
  for (const Row& row : rows) {
    hub.clock.now += 10;
    hub.port.hub.SetFailure({row.mode, row.at});
    EXPECT_EQ(Download(), (Outcome{row.code, "", row.message + "\n"}))
        << hubsim::RowOf(row.mode).name << ":" << row.at;
  }
  hub.clock.now += 10;
  hub.port.hub.SetFailure({});
  EXPECT_EQ(Download().code, 0) << "the hub takes a whole program again";
}

TEST_F(DownloadCommand, ALineThatHasNoBytesIsRefusedBeforeTheHubIsTouched) {
  Line(12).Type = FL;
  Line(12).Accel = -1;
  const Outcome outcome = Download();
  EXPECT_EQ(outcome.code, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err.substr(0, 28), "Line 12 cannot be compiled: ");
  EXPECT_EQ(hub.port.sent, "SC");
}

TEST_F(DownloadCommand, APortThatCannotBeOpenedIsToldWithWhatToDo) {
  hub.open_error = "there is no device /dev/hub; connect the hub or choose another port";
  EXPECT_EQ(
      Tavlo({"download", File(), "--port", "3"}),
      (Outcome{5, "",
               "tavlo: cannot open Comm 3: there is no device /dev/hub; connect the hub or choose another "
               "port\n"}));
  EXPECT_EQ(Tavlo({"download", File(), "--port", "/dev/hub"}).err.substr(0, 29),
            "tavlo: cannot open /dev/hub: ");
  EXPECT_EQ(hub.port.sent, "");
}

TEST_F(DownloadCommand, AFileThatCannotBeReadLeavesThePortAlone) {
  EXPECT_EQ(Tavlo({"download", folder.Path("none"), "--port", "1"}).code, 4);
  EXPECT_EQ(hub.name.comm, 0) << "no line was made";
}

TEST_F(DownloadCommand, ACableThatComesOffIsToldAsTheLossOfThePort) {
  hub.port.hub.SetFailure({Failure::Unplug, 40});
  EXPECT_EQ(Download(), (Outcome{5, "", "tavlo: the port has gone; check the cable\n"}));
}

TEST_F(DownloadCommand, AnInterruptionEndsItAndTellsThatTheHubsProgramIsNotWhole) {
  hub.port.hub.SetFailure({Failure::SilentLine, 5});
  hub.InterruptIn(0.3);
  EXPECT_EQ(Download(),
            (Outcome{130, "",
                     "tavlo: the program in the hub is not whole; download it again before you run "
                     "it\ntavlo: interrupted\n"}));
}

TEST_F(DownloadCommand, AnInterruptionBeforeTheTransferHarmsNothing) {
  hub.port.hub.SetFailure({Failure::SilentC, 1});
  hub.InterruptIn(0.3);
  EXPECT_EQ(Download(), (Outcome{130, "", "tavlo: interrupted\n"}));
}

TEST_F(DownloadCommand, TheTraceShowsWhatPassesOverTheLine) {
  const Outcome outcome = Download({"--trace"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.err.find("    0.025 -> 53                                               S\n"
                             "    0.050 -> 43                                               C\n"
                             "    0.050 <- 26 08                                            &.\n"
                             "    0.050 -> 46                                               F\n"
                             "    0.050 <- 59                                               Y\n"),
            std::string::npos)
      << outcome.err;
}

}  // namespace
}  // namespace tavlo::testing
