// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <algorithm>
#include <functional>

#include "cli/companion.h"

namespace tavlo::testing {
namespace {

using hubsim::Failure;

class Run : public Companion {
 protected:
  /// Two waits of half a second, then the program ends.
  void TwoWaits() {
    for (const int line : {1, 2}) {
      Line(line).Type = WT;
      Line(line).Time = 50;
    }
    PutIntoHub();
  }
  /// A move that takes long.
  void LongMove() {
    Line(1).Type = FL;
    Line(1).Dist = 2000000;
    PutIntoHub();
  }
  Outcome RunIt(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"run", "--port", "1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  [[nodiscard]] char LastSent() const { return hub.port.sent.back(); }
};

TEST_F(Run, PrintsEachLineAsItStartsAndFinishesWithItsText) {
  TwoWaits();
  EXPECT_EQ(RunIt({File(), "--for", "3"}), (Outcome{0,
                                                    "1\tstarted\tWait 0.05 seconds\n"
                                                    "1\tfinished\tWait 0.05 seconds\n"
                                                    "2\tstarted\tWait 0.05 seconds\n"
                                                    "2\tfinished\tWait 0.05 seconds\n",
                                                    kRuns}));
  EXPECT_EQ(hub.port.sent, "SCKSCDREXIIS") << "the sum is asked first";
}

TEST_F(Run, WithoutAFilePrintsNumbersAlone) {
  TwoWaits();
  EXPECT_EQ(RunIt({"--for", "0.75"}), (Outcome{0, "1\tstarted\n1\tfinished\n2\tstarted\n", kRuns}));
  EXPECT_EQ(LastSent(), 'S');
  EXPECT_EQ(hub.port.hub.State(), hubsim::HubState::Idle);
}

TEST_F(Run, AMoveThatGoesOnWhileTheNextLinesRunIsToldAsSuch) {
  Line(1).Type = FL;
  Line(1).Dist = 20000;
  Line(1).Proceed = true;
  Line(2).Type = WT;
  Line(2).Time = 10;
  PutIntoHub();
  EXPECT_EQ(RunIt({"--for", "20"}).out, "1\tstarted\n1\twent on\n2\tstarted\n2\tfinished\n1\tfinished\n");
}

TEST_F(Run, JsonGivesOneObjectAnEvent) {
  TwoWaits();
  EXPECT_EQ(
      RunIt({File(), "--for", "0.75", "--json"}).out,
      "{\"event\":\"started\",\"seconds\":0.0,\"line\":1,\"type\":\"WT\",\"text\":\"Wait 0.05 seconds\"}\n"
      "{\"event\":\"finished\",\"seconds\":0.5,\"line\":1,\"type\":\"WT\",\"text\":\"Wait 0.05 seconds\"}\n"
      "{\"event\":\"started\",\"seconds\":0.5,\"line\":2,\"type\":\"WT\",\"text\":\"Wait 0.05 seconds\"}\n"
      "{\"event\":\"ended\",\"seconds\":0.8,\"reason\":\"timeOver\"}\n");
}

TEST_F(Run, AnInterruptionStopsTheHubAndEndsWith130) {
  LongMove();
  hub.InterruptIn(0.5);
  EXPECT_EQ(RunIt({"--json"}), (Outcome{130,
                                        "{\"event\":\"started\",\"seconds\":0.0,\"line\":1}\n"
                                        "{\"event\":\"ended\",\"seconds\":0.5,\"reason\":\"interrupted\"}\n"
                                        "{\"error\":{\"code\":130,\"message\":\"interrupted\"}}\n",
                                        kRuns}));
  EXPECT_EQ(hub.port.sent, "SCDREXIS");
  EXPECT_EQ(hub.port.hub.State(), hubsim::HubState::Idle);
}

TEST_F(Run, AnInterruptionBeforeTheStartStartsNothing) {
  LongMove();
  hub.port.hub.SetFailure({Failure::SilentE, 1});
  hub.InterruptIn(0.5);
  EXPECT_EQ(RunIt(), (Outcome{130, "", "tavlo: interrupted\n"}));
  EXPECT_EQ(hub.port.sent, "SCDRE");
}

TEST_F(Run, TheStopButtonOfADriveEndsItAndTheQuestionGetsTheCautiousAnswer) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.PressStop(hub.clock.now); });
  EXPECT_EQ(
      RunIt(),
      (Outcome{8, "1\tstarted\n",
               kRuns + "STOP: The STOP button on the drive has been pressed. Should I reset the drive "
                       "now?\ntavlo: answered No because there is nobody to ask; --yes answers Yes\n"}));
  EXPECT_EQ(hub.port.sent, "SCDREXI");
}

TEST_F(Run, YesResetsTheHaltedHub) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.HitLimit(0, hub.clock.now); });
  EXPECT_EQ(
      RunIt({"--yes"}),
      (Outcome{
          8, "1\tstarted\n",
          kRuns + "LIMIT: Program halted: drive 1 (Axis 1) hit a limit.  Should I reset the hub now?. If one "
                  "of the drives is a servo and has faulted, its LED will be displaying an error code.  That "
                  "condition can only be reset by interrupting power to the system.\n"
                  "tavlo: answered Yes (--yes)\n"}));
  EXPECT_EQ(hub.port.sent, "SCDREXIRRRRRRRRRR");
}

TEST_F(Run, AResetThatTheHubDoesNotAnswerIsTold) {
  LongMove();
  hub.port.hub.SetFailure({Failure::SilentReset, 1});
  hub.In(0.5, [this] { hub.port.hub.PressStop(hub.clock.now); });
  const Outcome outcome = RunIt({"--yes"});
  EXPECT_EQ(outcome.code, 8);
  EXPECT_NE(outcome.err.find(
                "\nCan't reset: I sent the reset command to the drive, but it did not respond.  Please "
                "reset the drive manually by turning it off.\n"),
            std::string::npos)
      << outcome.err;
}

TEST_F(Run, TheOperatorAnswersTheQuestionOnATerminal) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.PressStop(hub.clock.now); });
  read_line = [] { return "yes"; };
  const Outcome outcome = RunIt();
  EXPECT_EQ(outcome.code, 8);
  EXPECT_EQ(outcome.err,
            kRuns +
                "STOP: The STOP button on the drive has been pressed. Should I reset the drive now? "
                "[y/N] ");
  EXPECT_NE(hub.port.sent.find("RRRRRRRRRR"), std::string::npos);
}

TEST_F(Run, AnInterruptionAtTheQuestionSendsTheStopToo) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.PressStop(hub.clock.now); });
  read_line = []() -> std::optional<std::string> { throw cli::Interrupted(); };
  EXPECT_EQ(RunIt().code, 130);
  EXPECT_EQ(LastSent(), 'S');
}

TEST_F(Run, AFaultIsToldWithTheLabelsOfItsBits) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.Fail(2, (1 << 5) + (1 << 9) + (1 << 13), hub.clock.now); });
  EXPECT_EQ(RunIt(),
            (Outcome{8, "1\tstarted\n",
                     kRuns + "Drive Error: We are experiencing a servo fault on axis 3. The program has been "
                             "halted.\n  over voltage\n  bad encoder\n  current foldback\n"}));
}

TEST_F(Run, StackErrorsEndIt) {
  Line(1).Type = RT;
  Line(9).Type = CL;  // a partner, or the download would be refused; the run never gets there
  PutIntoHub();
  const Outcome outcome = RunIt({"--no"});
  EXPECT_EQ(outcome.code, 8);
  EXPECT_EQ(outcome.err,
            kRuns +
                "Stack Underflow: Line 1 of your program has caused a stack underflow.  Your program "
                "reached a Return instruction without making a Call. Should I reset the drive now?\n"
                "tavlo: answered No (--no)\n");
}

TEST_F(Run, AHubThatRestartsEndsIt) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.PowerUp(hub.clock.now); });
  EXPECT_EQ(
      RunIt({"--json"}),
      (Outcome{
          8,
          "{\"event\":\"started\",\"seconds\":0.0,\"line\":1}\n"
          "{\"event\":\"ended\",\"seconds\":0.45,\"reason\":\"restarted\"}\n"
          "{\"error\":{\"code\":8,\"message\":\"the hub has been switched off and on; its program does not "
          "run any more\"}}\n",
          kRuns + "tavlo: the hub has been switched off and on; its program does not run any more\n"}));
}

TEST_F(Run, MessagesThatHaltNothingAreToldAndTheRunGoesOn) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.Say("\xF0\x02" + std::string(2, '\0')); });
  EXPECT_EQ(RunIt({"--for", "1"}),
            (Outcome{0, "1\tstarted\n", kRuns + "Drive not found: Drive 3 is not responding.\n"}));
}

TEST_F(Run, ACableThatComesOffEndsIt) {
  LongMove();
  hub.In(0.5, [this] { hub.port.hub.Unplug(); });
  EXPECT_EQ(
      RunIt(),
      (Outcome{
          5, "1\tstarted\n",
          kRuns + "tavlo: the port has gone; check the cable. The hub's program may still be running\n"}));
}

TEST_F(Run, ResultsThatNobodyTakesStopTheHub) {
  LongMove();
  struct NoRoom : std::streambuf {
  } no_room;
  std::ostream out(&no_room);
  std::ostringstream err;
  cli::Environment environment{out, err, false, nullptr, [this](const cli::PortName&) { return hub.Line(); }};
  EXPECT_EQ(cli::RunTavlo({"run", "--port", "1"}, environment), cli::ExitCode::Other);
  EXPECT_EQ(err.str(), kRuns + "tavlo: the result could not be written\n");
  EXPECT_EQ(LastSent(), 'S');
}

TEST_F(Run, DisplayTextIsPrintedOnceItRests) {
  Line(1).Type = MMI;
  Line(1).SubType = WaitEnter;
  Line(1).Text = "Press Enter";
  PutIntoHub();
  // Text of the display, in pieces, to rows 1 and 3.
  hub.In(0.50, [this] {
    hub.port.hub.Say(
        "\x1b"
        "EHel");
  });
  hub.In(0.52, [this] { hub.port.hub.Say("lo"); });
  hub.In(0.70, [this] { hub.port.hub.Say("\x1bY\"!W\xF0\x02" + std::string(2, '\0') + "ait"); });
  const Outcome outcome = RunIt({"--for", "1"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.out.find("display\t1\tHello\ndisplay\t3\tWait\n"), std::string::npos) << outcome.out;
  EXPECT_NE(hub.port.sent.find("EM"), std::string::npos);
}

TEST_F(Run, AHubThatDoesNotAnswerEndsItWithSix) {
  struct Row {
    Failure mode;
    std::string message;
  };
  const std::string no_execute =
      "The Tavlo Hub is not responding to the execute (E) command.  Is it connected to the right port and "
      "turned "
      "on?";
  const std::vector<Row> rows = {
      {Failure::SilentC,
       kGivesTime +
           "Communication Error: The Tavlo Hub is not communicating.  Is it connected to the right port and "
           "turned "
           "on?  Do you have the right comm port selected?  Perhaps cycling power will help."},
      {Failure::SilentD,
       "The Tavlo Hub is not responding to the D command.  Is it connected to the right port and turned on?"},
      {Failure::SilentE, no_execute},
      {Failure::NoiseE, no_execute},
      {Failure::LateE, no_execute},
  };
  LongMove();
  for (const Row& row : rows) {
    hub.clock.now += 10;
    hub.port.hub.SetFailure({row.mode, 1});
    EXPECT_EQ(RunIt(), (Outcome{6, "", row.message + "\n"})) << hubsim::RowOf(row.mode).name;
  }
}

TEST_F(Run, AMissingDriveIsARefusal) {
  LongMove();
  hub.port.hub.SetFailure({Failure::MissingDrive, 1});
  EXPECT_EQ(RunIt(),
            (Outcome{3, "",
                     "Missing drive: The drive connected to port 1 is not responding.  You must have a "
                     "drive on port 1.\n"}));
}

TEST_F(Run, AWrongDriveIsAQuestion) {
  program.Axis.DriveModel[0] = 15;
  TwoWaits();
  hub.port.hub.SetFailure({Failure::UnknownDrive, 1});
  const std::string question =
      "Wrong drive: The drive connected to port 1 is a unknown type.  Your program expects drive 1 to be a "
      "Zenu-A-p.  Do you want to run anyway?\n";
  EXPECT_EQ(
      RunIt(),
      (Outcome{3, "", question + "tavlo: answered No because there is nobody to ask; --yes answers Yes\n"}));
  EXPECT_EQ(RunIt({"--yes", "--for", "0"}),
            (Outcome{0, "", question + "tavlo: answered Yes (--yes)\n" + kRuns}));
}

TEST_F(Run, AHaltNamesItsCauseAndEveryFailureItsWords) {
  struct Row {
    std::function<void()> halt;
    std::string cause;
  };
  const std::vector<Row> rows = {
      {[this] { hub.port.hub.PressStop(hub.clock.now); }, "stopButton"},
      {[this] { hub.port.hub.HitLimit(0, hub.clock.now); }, "limit"},
      {[this] { hub.port.hub.Fail(2, 1, hub.clock.now); }, "driveFault"},
      {[this] { hub.port.hub.Say("\xEF" + std::string(3, '\0')); }, "stackOverflow"},
      {[this] { hub.port.hub.Say("\xEE" + std::string(3, '\0')); }, "stackUnderflow"},
      {[this] { hub.port.hub.Say("\xD4" + std::string(3, '\0')); }, "driveDisabled"},
  };
  LongMove();
  for (const Row& row : rows) {
    hub.In(0.5, row.halt);
    const Outcome outcome = RunIt({"--json", "--no"});
    EXPECT_EQ(outcome.code, 8);
    EXPECT_NE(
        outcome.out.find("\"reason\":\"halted\",\"cause\":\"" + row.cause + "\"}\n{\"error\":{\"code\":8,"),
        std::string::npos)
        << outcome.out;
  }
}

TEST_F(Run, AnotherProgramInTheHubIsTold) {
  TwoWaits();
  Line(3).Type = WT;
  const std::string told = "Another program: The hub holds another program: its sum is ";
  const Outcome no = RunIt({File(), "--no"});
  EXPECT_EQ(no.code, 7);
  EXPECT_EQ(no.err.substr(0, told.size()), told);
  EXPECT_EQ(hub.port.sent, "SCK") << "nothing was started";
  const Outcome yes = RunIt({File(), "--yes", "--for", "0.1"});
  EXPECT_EQ(yes.code, 0);
  EXPECT_EQ(yes.out, "1\tstarted\n") << "the texts of another program would mislead";
  const Outcome json = RunIt({File(), "--no", "--json"});
  EXPECT_TRUE(json.out.starts_with("{\"error\":{\"code\":7,\"message\":\"Another program: ")) << json.out;
}

TEST_F(Run, WithVerifyItReadsAllThatTheHubHolds) {
  TwoWaits();
  EXPECT_EQ(RunIt({File(), "--verify", "--for", "0.1"}).out, "1\tstarted\tWait 0.05 seconds\n");
  EXPECT_EQ(hub.port.sent, "SCUSCDREXIS");
  Line(3).Type = WT;
  const Outcome other = RunIt({File(), "--verify"});
  EXPECT_EQ(other.code, 7);
  EXPECT_TRUE(
      other.err.starts_with("Another program: The hub holds another program: 1 line and 0 settings differ."))
      << other.err;
  EXPECT_EQ(RunIt({"--verify"}).code, 2) << "there is nothing to compare with";
}

TEST_F(Run, AHubThatHasNoSumToTellIsReadBack) {
  TwoWaits();
  hub.port.hub.PowerUp(hub.clock.now);
  const Outcome outcome = RunIt({File(), "--for", "0.1"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.err.find("reading its program back"), std::string::npos) << outcome.err;
  EXPECT_TRUE(hub.port.sent.ends_with("SCKUSCDREXIS")) << hub.port.sent;
  EXPECT_EQ(RunIt({File(), "--for", "0.1", "--quiet"}).err, "");
}

TEST_F(Run, WhatABrokenDownloadLeftBehindIsNotTakenForTheFile) {
  TwoWaits();
  Line(1).Time = 70;
  Line(150).Type = WT;
  hub.port.hub.SetFailure({Failure::SilentLine, 100});
  ASSERT_EQ(Tavlo({"download", File(), "--port", "1"}).code, 6);
  hub.port.hub.SetFailure({});
  EXPECT_EQ(RunIt({File(), "--no"}).code, 7);
}

TEST_F(Run, AFileThatCannotBeReadLeavesThePortAlone) {
  EXPECT_EQ(RunIt({folder.Path("none")}).code, 4);
  EXPECT_EQ(hub.name.comm, 0) << "no line was made";
}

}  // namespace
}  // namespace tavlo::testing
