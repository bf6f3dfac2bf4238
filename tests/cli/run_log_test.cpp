// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <filesystem>
#include <regex>

#include "cli/companion.h"

namespace tavlo::testing {
namespace {

using hubsim::Failure;

const std::string kHeader = "time_s,event,line,axis,what,value\r\n";

class LoggedRun : public Companion {
 protected:
  LoggedRun() {
    Line(1).Type = WT;
    Line(1).Time = 50;
    Line(2).Type = FL;
    Line(2).Dist = 2000000;
  }
  Outcome RunIt(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"run", "--port", "1", "--log", Log()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  [[nodiscard]] std::string Log() const { return folder.Path("run.csv"); }
  /// The file without the time of day, and without the status of axes, which hangs on their drives.
  [[nodiscard]] std::string Logged() const {
    std::string csv = folder.Read("run.csv");
    csv = std::regex_replace(csv, std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d"), "NOW");
    return std::regex_replace(csv, std::regex("[^\n]*,(state|program counter),[^\n]*\n"), "");
  }
};

TEST_F(LoggedRun, HasTheEventsOfTheRunWithTheTextsOfItsLines) {
  PutIntoHub();
  const std::string file = File();
  EXPECT_EQ(RunIt({file, "--for", "0.75"}).code, 0);
  EXPECT_EQ(Logged(), kHeader + "0.000,begin,,," + file +
                          ",NOW\r\n"
                          "0.000,line started,1,,Wait 0.05 seconds,\r\n"
                          "0.500,line finished,1,,Wait 0.05 seconds,\r\n"
                          "0.500,line started,2,,\"Axis 1:CW 100.0 rev, 3.0 rps\",\r\n"
                          "0.750,control,,,stop,\r\n"
                          "0.750,end,,,stopped,\r\n");
}

TEST_F(LoggedRun, ChangesNeitherOutputNorBytesOfTheRun) {
  PutIntoHub();
  const Outcome plain = Tavlo({"run", "--port", "1", "--for", "0.75"});
  const std::string sent = std::exchange(hub.port.sent, {});
  EXPECT_EQ(RunIt({"--for", "0.75"}), plain);
  EXPECT_EQ(hub.port.sent, sent);
}

TEST_F(LoggedRun, WithoutTheProgramHasNumbersAlone) {
  PutIntoHub();
  EXPECT_EQ(RunIt({"--for", "0.25"}).code, 0);
  EXPECT_EQ(Logged(), kHeader +
                          "0.000,begin,,,,NOW\r\n0.000,line started,1,,,\r\n0.250,control,,,stop,\r\n"
                          "0.250,end,,,stopped,\r\n");
}

TEST_F(LoggedRun, IsWrittenHoweverTheRunEnds) {
  struct Case {
    std::string name;
    std::function<void()> end;
    int code;
    std::string rows;
  };
  const std::vector<Case> cases = {
      {"Ctrl-C", [this] { hub.interrupted = true; }, 130,
       "0.250,control,,,stop,\r\n0.250,end,,,stopped,\r\n"},
      {"stop button", [this] { hub.port.hub.PressStop(hub.clock.now); }, 8,
       "0.250,stop button,,,,\r\n0.250,end,,,halted,\r\n"},
      {"fault", [this] { hub.port.hub.Fail(2, 32, hub.clock.now); }, 8,
       "0.250,drive fault,,3,over voltage,32\r\n0.250,end,,,halted,\r\n"},
      {"power", [this] { hub.port.hub.PowerUp(hub.clock.now); }, 8,
       "0.250,hub switched on,,,,\"Tavlo Hub-Octo, firmware 1.38\"\r\n0.250,end,,,hub switched on,\r\n"},
      {"cable", [this] { hub.port.hub.Unplug(); }, 5, "0.250,end,,,port gone,\r\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    hub.port.hub.Replug();
    PutIntoHub();
    // The run begins when the program has been started.
    hub.port.on_traffic = [&, armed = true](bool to_hub, std::string_view bytes, double) mutable {
      if (armed && to_hub && bytes == "X") hub.In(0.25, c.end), armed = false;
    };
    EXPECT_EQ(RunIt({"--no"}).code, c.code);
    hub.port.on_traffic = nullptr;
    hub.interrupted = false;
    EXPECT_EQ(Logged(), kHeader + "0.000,begin,,,,NOW\r\n0.000,line started,1,,,\r\n" + c.rows);
  }
}

TEST_F(LoggedRun, AFileThatCannotBeWrittenKeepsTheMachineFromMoving) {
  PutIntoHub();
  const std::string file = folder.Path("no/such/run.csv");
  EXPECT_EQ(Tavlo({"run", "--port", "1", "--log", file}),
            (Outcome{4, "", "tavlo: cannot write " + file + ": No such file or directory\n"}));
  EXPECT_EQ(hub.port.sent, "") << "nothing was started";
}

TEST_F(LoggedRun, ARunThatDoesNotBeginLeavesAnEmptyLog) {
  PutIntoHub();
  hub.port.hub.SetFailure({Failure::SilentE, 1});
  EXPECT_EQ(RunIt().code, 6);
  EXPECT_EQ(Logged(), kHeader);
}

TEST_F(LoggedRun, StandardOutputAndTheProgramsOwnFileAreRefused) {
  PutIntoHub();
  EXPECT_EQ(Tavlo({"run", "--port", "1", "--log", "-"}),
            (Outcome{2, "", "tavlo: the log and the rows of the run both want standard output\n"}));
  const std::string file = File();
  EXPECT_EQ(Tavlo({"run", file, "--port", "1", "--log", file}),
            (Outcome{4, "", "tavlo: cannot write " + file + ": it is the file that is read\n"}));
  EXPECT_EQ(folder.Read("program.TVH"), WriteHubProg(program, 0));
  EXPECT_EQ(hub.port.sent, "");
}

TEST_F(LoggedRun, ThatTheLogCouldNotBeWrittenInTheEndIsAFailureOfItsOwn) {
  PutIntoHub();
  hub.In(0.3, [this] {
    std::filesystem::remove(Log());
    std::filesystem::create_directory(Log());
  });
  EXPECT_EQ(RunIt({"--for", "0.75"}),
            (Outcome{4, "1\tstarted\n1\tfinished\n2\tstarted\n",
                     kRuns + "tavlo: cannot write " + Log() + ": Is a directory\n"}));
}

}  // namespace
}  // namespace tavlo::testing
