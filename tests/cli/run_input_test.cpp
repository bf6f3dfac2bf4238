// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <algorithm>
#include <sstream>

#include "cli/companion.h"
#include "cli/piecewise_feed.h"
#include "cli/run/axis_status.h"
#include "cli/run/run_reporter.h"
#include "session/source.h"
#include "support/bytes.h"

namespace tavlo::testing {
namespace {

const std::string kClear = "\x1b\x45";

std::string LineEventOf(int header, int number) {
  return LineMessage(header, number - 1);
}

/// A machine that moves for long, while the test says in the hub's name what else is going on.
class RunInput : public Companion {
 protected:
  RunInput() { feed = &input; }

  void Start(bool uses_terminal) {
    Line(1).Type = FL;
    Line(1).Dist = 2000000;
    if (uses_terminal) {
      Line(2).Type = MMI;
      Line(2).SubType = WaitEnter;
      Line(2).Text = "Press Enter";
    }
    PutIntoHub();
    input.reads = 0;
  }
  Outcome RunFor(const std::string& seconds, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"run", "--port", "1", "--for", seconds};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  void SayIn(double seconds, const std::string& bytes) {
    hub.In(seconds, [this, bytes] { hub.port.hub.Say(bytes); });
  }
  void FeedIn(double seconds, const std::string& bytes) {
    hub.In(seconds, [this, bytes] { input.pieces.push_back(bytes); });
  }
  void PromptIn(double seconds, int number) { SayIn(seconds, LineEventOf(254, number) + kClear + "Length?"); }
  void FinishIn(double seconds, int number) { SayIn(seconds, LineEventOf(237, number)); }
  void ExpectSentIn(double seconds, const std::string& expected) {
    hub.In(seconds, [this, seconds, expected] { EXPECT_EQ(Sent(), expected) << seconds; });
  }
  /// What went out after the start of the program.
  [[nodiscard]] std::string Sent() const {
    const std::size_t start = hub.port.sent.find('E');
    return start == std::string::npos ? hub.port.sent : hub.port.sent.substr(start + 2);
  }

  PiecewiseFeed input;
};

TEST_F(RunInput, ALineGoesOutOnceTheProgramAsksAndHasComeToRest) {
  Start(true);
  input.pieces = {"12.5\n"};
  PromptIn(1, 5);
  ExpectSentIn(0.9, "I");
  ExpectSentIn(1.19, "II");
  ExpectSentIn(1.21, "II12.5\r");
  const Outcome outcome = RunFor("2");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, kRuns);
  EXPECT_EQ(Sent(), "II12.5\rS");
}

TEST_F(RunInput, AScriptThatComesAtOnceLosesNoKey) {
  Start(true);
  input.pieces = {"1\n2\n", "3\nyes\n"};
  input.ended = true;
  for (const int number : {5, 6, 7, 8}) {
    PromptIn(number, number);
    FinishIn(number + 0.25, number);
    // What runs between the prompts takes its time.
    SayIn(number + 0.3, LineEventOf(254, 20));
    FinishIn(number + 0.9, 20);
  }
  EXPECT_EQ(RunFor("10").code, 0);
  EXPECT_EQ(Sent(), "II1\rII2\rII3\rII+IS");
}

TEST_F(RunInput, TextThatStillComesHoldsALineBack) {
  Start(true);
  input.pieces = {"7\n"};
  PromptIn(1, 5);
  for (int i = 1; i <= 10; ++i) SayIn(1 + i * 0.15, "x");
  ExpectSentIn(2.69, "II");
  ExpectSentIn(2.71, "II7\r");
  EXPECT_EQ(RunFor("3").code, 0);
}

TEST_F(RunInput, AnEntryThatIsRefusedIsFollowedByTheNextLine) {
  Start(true);
  input.pieces = {"99\n5\n"};
  PromptIn(1, 5);
  SayIn(1.22, "\x1bY# \x1bK0 to 10");
  ExpectSentIn(1.41, "II99\r");
  ExpectSentIn(1.43, "II99\r5\r");
  EXPECT_EQ(RunFor("2").code, 0);
}

TEST_F(RunInput, TheEchoOfAnEntryIsNoQuestionOnceItsLineIsOver) {
  Start(true);
  input.pieces = {"1\n2\n"};
  PromptIn(1, 5);
  SayIn(1.22, "1");
  FinishIn(1.24, 5);
  EXPECT_EQ(RunFor("5").code, 0);
  EXPECT_EQ(Sent(), "II1\rS");
}

TEST_F(RunInput, ATextThatItsLineDoesNotWaitForIsNoQuestion) {
  Start(true);
  input.pieces = {"1\n"};
  PromptIn(1, 5);
  FinishIn(1.05, 5);
  SayIn(1.1, LineEventOf(254, 6));
  EXPECT_EQ(RunFor("4").code, 0);
  EXPECT_EQ(Sent(), "IIIS");
}

TEST_F(RunInput, AMoveThatEndsWhileTheProgramAsksTakesNothingAway) {
  Start(true);
  input.pieces = {"1\n"};
  SayIn(0.5, LineEventOf(254, 4) + LineEventOf(236, 4));
  PromptIn(1, 5);
  FinishIn(1.05, 4);
  EXPECT_EQ(RunFor("2").code, 0);
  EXPECT_EQ(Sent(), "IIII1\rS");
}

TEST_F(RunInput, APromptThatIsKnownNeedsNoText) {
  Line(5).Type = MMI;
  Line(5).SubType = WaitEnter;
  Start(true);
  input.pieces = {"\n"};
  SayIn(1, LineEventOf(254, 5));
  EXPECT_EQ(RunFor("2", {File()}).code, 0);
  EXPECT_EQ(Sent(), "II\rS");
}

TEST_F(RunInput, WordsAreSingleKeysEachAtRest) {
  Start(true);
  input.pieces = {"up\ndown\nleft\nright\nno\nbksp\nenter\n"};
  PromptIn(1, 5);
  ExpectSentIn(1.3, "IIA");
  ExpectSentIn(1.5, "IIAB");
  EXPECT_EQ(RunFor("4").code, 0);
  EXPECT_EQ(Sent(), "IIABCD-\b\rS");
}

TEST_F(RunInput, WhatIsNoEntryIsToldAndNotSent) {
  Start(true);
  input.pieces = {"12a\n\x1b[A\n" + std::string(201, '1') + "\n3\n"};
  PromptIn(1, 5);
  const Outcome outcome = RunFor("2");
  EXPECT_EQ(Sent(), "II3\rS");
  EXPECT_EQ(outcome.err, kRuns +
                             "tavlo: '12a' is neither an entry nor a word; nothing was sent\n"
                             "tavlo: '\\x1b[A' is neither an entry nor a word; nothing was sent\n"
                             "tavlo: a line of more than 200 characters was not sent\n");
}

TEST_F(RunInput, AtTheEndOfInputTheRunGoesOn) {
  Start(true);
  input.pieces = {"1\n2"};
  input.ended = true;
  PromptIn(1, 5);
  EXPECT_EQ(RunFor("3").code, 0);
  EXPECT_EQ(Sent(), "II1\r2\rS") << "a last line needs no end";
  EXPECT_LT(input.reads, 10) << "an end is an end";
}

TEST_F(RunInput, OfALongScriptNoMoreIsReadThanIsWorkedOff) {
  Start(true);
  for (int i = 0; i < 100; ++i) input.pieces.push_back("1\n");
  EXPECT_EQ(RunFor("3").code, 0);
  EXPECT_EQ(input.pieces.size(), 99u);
}

TEST_F(RunInput, PauseResumeAndResetGoOutAtOnce) {
  for (const bool uses_terminal : {false, true}) {
    Start(uses_terminal);
    FeedIn(1, "pause\n");
    FeedIn(2, "resume\n");
    FeedIn(3, "reset\n");
    ExpectSentIn(1.5, "IP");
    ExpectSentIn(2.5, "IPr");
    const Outcome outcome = RunFor("4");
    EXPECT_TRUE(Sent().starts_with("IPr0")) << Sent();
    EXPECT_EQ(outcome.err, kRuns +
                               "tavlo: paused\ntavlo: the program goes on\n"
                               "tavlo: the program goes back to its first line\n");
  }
}

TEST_F(RunInput, StepsWaitForOneAnother) {
  for (const int line : {1, 2, 3, 4}) {
    Line(line).Type = WT;
    Line(line).Time = 50;
  }
  PutIntoHub();
  input.pieces = {"pause\nstep\nstep\nresume\n"};
  FeedIn(2, "stop\n");
  const Outcome outcome = RunFor("5");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(std::count(hub.port.sent.begin(), hub.port.sent.end(), 'T'), 2);
  EXPECT_LT(hub.port.sent.find('P'), hub.port.sent.find('T'));
  EXPECT_LT(hub.port.sent.rfind('T'), hub.port.sent.find('r'));
  EXPECT_EQ(hub.port.sent.back(), 'S');
  for (const char* row : {"1\tstarted\n", "1\tfinished\n", "2\tstarted\n", "2\tfinished\n"}) {
    EXPECT_NE(outcome.out.find(row), std::string::npos) << row << outcome.out;
  }
}

TEST_F(RunInput, AStepOfARunningProgramIsRefusedWithAWord) {
  Start(false);
  input.pieces = {"step\n"};
  EXPECT_EQ(RunFor("1").err, kRuns + "tavlo: a single step needs a program that is paused\n");
  EXPECT_EQ(Sent(), "IS");
}

TEST_F(RunInput, StopStopsTheMachineAndIsNoFailure) {
  Start(true);
  FeedIn(1, "stop\n1\n");
  const Outcome outcome = RunFor("5", {"--json"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_TRUE(outcome.out.ends_with("\"reason\":\"stopped\"}\n")) << outcome.out;
  EXPECT_EQ(Sent(), "IS");
  EXPECT_EQ(hub.port.hub.State(), hubsim::HubState::Idle);
}

TEST_F(RunInput, AProgramWithoutTheTerminalGetsNoKeyAndSaysSoOnce) {
  Start(false);
  input.pieces = {"1\nyes\n2\n"};
  EXPECT_EQ(RunFor("1").err,
            kRuns + "tavlo: this program does not use the operator terminal; its keys are not sent\n");
  EXPECT_EQ(Sent(), "IS");
}

class RunTerminal : public RunInput {
 protected:
  RunTerminal() { input.terminal = true; }
};

const std::string kControlsHint = "p pause, r resume, t one line, z first line, s stop\n";
const std::string kKeysHint =
    "tavlo: keys: 0-9 . Enter Backspace arrows, y or + yes, n or - no; " + kControlsHint;

TEST_F(RunTerminal, KeysGoOutAsTheyArePressed) {
  Start(true);
  FeedIn(1, "1");
  ExpectSentIn(1.01, "I1");
  FeedIn(1.1, "2\x7f.\r");
  FeedIn(1.2, "\x1b");
  FeedIn(1.3, "[");
  FeedIn(1.4, "CyN");
  const Outcome outcome = RunFor("2");
  EXPECT_EQ(Sent(), "I12\b.\rD+-S");
  EXPECT_EQ(outcome.err, kRuns + kKeysHint);
}

TEST_F(RunTerminal, ControlsAreLettersThatNoKeyHas) {
  Start(false);
  FeedIn(1, "p");
  FeedIn(2, "7");
  FeedIn(2.1, "8");
  FeedIn(3, "r");
  FeedIn(4, "s");
  const Outcome outcome = RunFor("9");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(Sent(), "IPrS");
  EXPECT_EQ(outcome.err, kRuns + "tavlo: keys: " + kControlsHint +
                             "tavlo: paused\n"
                             "tavlo: this program does not use the operator terminal; its keys are not sent\n"
                             "tavlo: the program goes on\n");
}

TEST_F(RunTerminal, ATerminalThatGoesAwayLeavesTheRunAlone) {
  Start(true);
  hub.In(1, [this] { input.ended = true; });
  EXPECT_EQ(RunFor("3").code, 0);
  EXPECT_LT(input.reads, 10);
}

TEST_F(RunTerminal, AHaltIsAnsweredAsALine) {
  Start(true);
  hub.In(1, [this] { hub.port.hub.PressStop(hub.clock.now); });
  read_line = [] { return "y"; };
  EXPECT_EQ(RunFor("3").code, 8);
  EXPECT_EQ(Sent(), "IRRRRRRRRRR");
}

class RunStatus : public RunInput {
 protected:
  RunStatus() {
    program.Axis.DriveModel.fill(0);
    program.Axis.DriveModel[0] = 1;
    program.Axis.DriveModel[2] = 27;
    // Nothing stands at the hub's wires but what the test says.
    feed = nullptr;
  }
  void Start() {
    Line(1).Type = WT;
    Line(1).Time = 30000;
    PutIntoHub();
  }
  /// Without the rows of lines.
  std::string StatusOf(std::vector<std::string> more = {}) {
    more.push_back(File());
    more.emplace_back("--yes");
    const std::string out = RunFor("5", more).out;
    std::string rows;
    std::istringstream lines(out);
    for (std::string row; std::getline(lines, row);) {
      if (row.find("status") != std::string::npos) rows += row + '\n';
    }
    return rows;
  }
};

TEST_F(RunStatus, InputsAndOutputsArePrintedWhenTheyChange) {
  Start();
  SayIn(1, Bytes({241, 13, 15, 11}));
  SayIn(2, Bytes({241, 13, 15, 11}));
  SayIn(3, Bytes({241, 15, 3, 15}));
  SayIn(4, Bytes({241, 15, 15, 15}));
  EXPECT_EQ(StatusOf(),
            "status\taxis 1\tin 2\tout 3\n"
            "status\taxis 1\tin 7 8\tout -\n"
            "status\taxis 1\tin -\tout -\n");
}

TEST_F(RunStatus, TheMessagesOfOneAxisMakeOneRow) {
  Start();
  SayIn(1, Bytes({243, 14, 15, 14}));
  SayIn(1.01, Bytes({215, 11, 15, 0}));
  SayIn(1.02, Bytes({223, 0x5E, 0, 0}));
  EXPECT_EQ(StatusOf(), "status\taxis 3\tin 1 X3\tout 1 Y2\n");
}

TEST_F(RunStatus, JsonGivesTheNumbersOfEachKind) {
  Start();
  SayIn(1, Bytes({243, 14, 15, 14}) + Bytes({215, 11, 15, 0}) + Bytes({223, 0x5E, 0, 0}));
  EXPECT_EQ(
      StatusOf({"--json"}),
      "{\"event\":\"status\",\"seconds\":0.95,\"axis\":3,\"inputs\":[1],\"xInputs\":[3],\"outputs\":[1],"
      "\"yOutputs\":[2]}\n");
}

TEST_F(RunStatus, NoStatusLeavesItOut) {
  Start();
  SayIn(1, Bytes({241, 13, 15, 11}));
  EXPECT_EQ(StatusOf({"--no-status"}), "");
}

TEST_F(RunStatus, AProgramWithoutItsFileIsKnownByTheDrivesThatTheHubExpects) {
  Start();
  SayIn(1, Bytes({241, 13, 15, 11}));
  SayIn(1.5, Bytes({243, 14, 15, 15}));
  SayIn(2, Bytes({242, 0, 0, 0}));
  const std::string out = RunFor("3", {"--yes"}).out;
  EXPECT_NE(out.find("status\taxis 1\tin 2\tout 3\n"), std::string::npos) << out;
  EXPECT_NE(out.find("status\taxis 3\tin 1"), std::string::npos) << out;
  EXPECT_EQ(out.find("axis 2\tin 1"), std::string::npos) << "there is no drive: " << out;
}

TEST_F(RunStatus, AFaultIsAnEventOfJson) {
  Start();
  hub.In(1, [this] { hub.port.hub.Fail(2, (1 << 5) + (1 << 13), hub.clock.now); });
  const Outcome outcome = RunFor("5", {File(), "--yes", "--json"});
  EXPECT_EQ(outcome.code, 8);
  EXPECT_NE(
      outcome.out.find("{\"event\":\"fault\",\"seconds\":0.9,\"axis\":3,\"code\":8224,\"message\":\"We are "
                       "experiencing a fault on axis 3. The program has been halted.\",\"alarms\":[\"over "
                       "voltage\",\"motor resistance\"]}\n"),
      std::string::npos)
      << outcome.out;
}

TEST_F(RunStatus, AStreamOfMessagesDoesNotHoldAChangeBack) {
  Start();
  for (int i = 0; i < 50; ++i) SayIn(1 + i * 0.02, Bytes({241, 13, 15, 15}));
  EXPECT_EQ(StatusOf({"--json"}),
            "{\"event\":\"status\",\"seconds\":0.95,\"axis\":1,\"inputs\":[2],\"xInputs\":[],\"outputs\":[],"
            "\"yOutputs\":[]}\n");
}

TEST(RunReporter, TheFifthColumnOfAHubQuadIsTheHub) {
  std::ostringstream out;
  cli::Environment environment{out, out, false, nullptr, nullptr};
  cli::Console console(environment);
  FakeClock clock;
  Source source;
  InitSession(source);
  source.program.HubIndex = HubQuad;
  cli::RunReporter reporter(console, clock, source, true, false);
  source.run.panel.INlo[4][1] = Led::Green;
  source.run.panel.INlo[4][5] = Led::Green;
  source.run.panel.OUTlo[4][3] = Led::Green;
  reporter.StatusChanged(4);
  reporter.Status();
  EXPECT_EQ(out.str(), "status\thub\tin 2\tout 4\n");
}

TEST(AxisStatus, WhatADriveDoesNotReportIsAQuestionMarkOrNull) {
  Source source;
  InitSession(source);
  source.program.Axis.DriveModel[1] = 11;
  source.run.panel.INX[1].fill(Led::Unknown);
  source.run.panel.OUTY[1].fill(Led::Unknown);
  source.run.panel.INlo[1][7] = Led::Red;
  const cli::AxisStatus status(source, 1);
  EXPECT_EQ(status.Text(), "in 8 X?\tout Y?");
  cli::Json json;
  status.AddTo(json);
  EXPECT_EQ(json.dump(), "{\"inputs\":[8],\"xInputs\":null,\"outputs\":[],\"yOutputs\":null}");
}

}  // namespace
}  // namespace tavlo::testing
