// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <vector>

#include "road.h"
#include "terminal_process.h"

namespace tavlo::testing {
namespace {

const std::string kRuns = "tavlo: the program runs; Ctrl-C stops it\n";

/// A run whose results go into a pipe that the test holds the other end of and does not read.
class PipedRun {
 public:
  explicit PipedRun(const std::string& link) {
    EXPECT_EQ(pipe2(ends_.data(), O_CLOEXEC), 0);
    pid_ = fork();
    if (pid_ != 0) {
      close(ends_[1]);
      return;
    }
    dup2(ends_[1], STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    execl(TAVLO_CLI, "tavlo", "run", "--port", link.c_str(), nullptr);
    _exit(127);
  }
  ~PipedRun() { CloseReader(); }
  PipedRun(const PipedRun&) = delete;
  PipedRun& operator=(const PipedRun&) = delete;

  void Interrupt() const { ::kill(pid_, SIGINT); }
  void CloseReader() {
    if (ends_[0] >= 0) close(ends_[0]);
    ends_[0] = -1;
  }
  /// The exit code; -1 if a signal ended it.
  [[nodiscard]] int Wait() const {
    int status = 0;
    EXPECT_EQ(waitpid(pid_, &status, 0), pid_);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  std::array<int, 2> ends_{-1, -1};
  pid_t pid_ = -1;
};

class RunRoad : public CompanionRoad {
 protected:
  /// Starts a hub with the program in it.
  void StartHubWithProgram(const QStringList& options = {}) {
    StartHub(options);
    ASSERT_EQ(Download().code, 0);
  }
  [[nodiscard]] QStringList RunArguments(const QStringList& more = {}) const {
    return QStringList{"run", "--port", hub->Link()} + more;
  }
  /// Sends the command to the hub while the program runs.
  Ended RunAndThen(const QByteArray& command, const QStringList& more = {}) {
    TavloProcess tavlo(RunArguments(more));
    EXPECT_TRUE(tavlo.Says("the program runs"));
    // The program starts with the byte that follows the message.
    EXPECT_TRUE(HubGotLast("I"));
    hub->Command(command);
    return tavlo.Wait();
  }
};

TEST_F(RunRoad, EachLineIsPrintedAsItStartsAndFinishes) {
  for (const int line : {1, 3}) {
    Line(line).Type = WT;
    Line(line).Time = 10;
  }
  StartHubWithProgram();
  EXPECT_EQ(Tavlo(RunArguments({File(), "--for", "0.6"})), (Ended{0,
                                                                  "1\tstarted\tWait 0.01 seconds\n"
                                                                  "1\tfinished\tWait 0.01 seconds\n"
                                                                  "3\tstarted\tWait 0.01 seconds\n"
                                                                  "3\tfinished\tWait 0.01 seconds\n",
                                                                  kRuns}));
  EXPECT_TRUE(HubGotLast("SCKSCDREXIIS"));
}

/// A line event: seconds since the program was started, what, and the line's number.
struct LineRow {
  double seconds;
  QByteArray what;
  int line;
};

/// Those of the hub's journal, from the command that starts the program on.
std::vector<LineRow> LinesOfJournal(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  std::vector<LineRow> rows;
  std::optional<double> start;
  QByteArray said;
  while (!file.atEnd()) {
    const QJsonObject entry = QJsonDocument::fromJson(file.readLine()).object();
    const QByteArray bytes = QByteArray::fromHex(entry["bytes"].toString().toLatin1());
    const double at = entry["t"].toDouble();
    if (entry["dir"].toString() == "rx") {
      if (bytes == "X") start = at;
      continue;
    }
    for (const char c : bytes) {
      if (static_cast<unsigned char>(c) >= 128) said.clear();
      said += c;
      if (!start || said.size() != 4) continue;
      const auto header = static_cast<unsigned char>(said[0]);
      if (header == 254) rows.push_back({at - *start, "line started", said[1] * 16 + said[2] + 1});
      if (header == 237) rows.push_back({at - *start, "line finished", said[1] * 16 + said[2] + 1});
    }
  }
  return rows;
}

/// Those of a log.
std::vector<LineRow> LinesOfLog(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  std::vector<LineRow> rows;
  while (!file.atEnd()) {
    const QList<QByteArray> fields = file.readLine().split(',');
    if (fields[1].startsWith("line ")) rows.push_back({fields[0].toDouble(), fields[1], fields[2].toInt()});
  }
  return rows;
}

TEST_F(RunRoad, TheLogOfAnInterruptedRunHasTheLinesOfTheHubsJournalAtTheirTimes) {
  // A loaded machine may be late; a wrong clock or a lost row would be far from this.
  constexpr double kLate = 0.5;
  Line(1).Type = WT;
  Line(1).Time = 60;
  Line(2).Type = GT;
  Line(2).LineNum = 0;
  StartHubWithProgram();
  const QString log = folder_.filePath("run.csv");
  TavloProcess tavlo(RunArguments({"--log", log}));
  ASSERT_TRUE(tavlo.Says("the program runs"));
  ASSERT_TRUE(Eventually([&] { return LinesOfJournal(folder_.filePath("journal")).size() >= 8; }));
  tavlo.Signal(SIGINT);
  EXPECT_EQ(tavlo.Wait().code, 130);
  ASSERT_TRUE(HubGotLast("S"));
  const auto hubs = LinesOfJournal(folder_.filePath("journal"));
  const auto ours = LinesOfLog(log);
  // What the hub said while the stop was on its way was not read any more.
  ASSERT_GE(ours.size(), 8U);
  ASSERT_LE(ours.size(), hubs.size());
  EXPECT_GE(ours.size() + 2, hubs.size());
  for (std::size_t i = 0; i < ours.size(); ++i) {
    EXPECT_EQ(ours[i].what, hubs[i].what) << i;
    EXPECT_EQ(ours[i].line, hubs[i].line) << i;
    EXPECT_NEAR(ours[i].seconds, hubs[i].seconds, kLate) << i;
  }
}

TEST_F(RunRoad, EverySignalThatEndsAProgramStopsTheMachineFirst) {
  LongMove();
  StartHubWithProgram();
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    TavloProcess tavlo(RunArguments());
    ASSERT_TRUE(tavlo.Says("the program runs"));
    ASSERT_TRUE(HubGotLast("I"));
    tavlo.Signal(signal);
    EXPECT_EQ(tavlo.Wait(), (Ended{130, "1\tstarted\n", kRuns}));
    EXPECT_TRUE(HubGotLast("S"));
  }
}

TEST_F(RunRoad, AReaderThatGoesAwayStopsTheMachineToo) {
  LongMove();
  StartHubWithProgram();
  PipedRun run(hub->Link().toStdString());
  run.CloseReader();
  EXPECT_EQ(run.Wait(), 1) << "not by the signal of the broken pipe";
  EXPECT_TRUE(HubGotLast("S"));
}

TEST_F(RunRoad, HaltsAndFaultsEndTheRunWithEightAndTheirWords) {
  LongMove();
  StartHubWithProgram();
  struct Row {
    QByteArray command;
    std::string message;
  };
  const std::string no = "tavlo: answered No because there is nobody to ask; --yes answers Yes\n";
  const std::vector<Row> rows = {
      {"stop", "STOP: The STOP button on the drive has been pressed. Should I reset the drive now?\n" + no},
      {"limit 1",
       "LIMIT: Program halted: drive 1 (Axis 1) hit a limit.  Should I reset the hub now?. If one of the "
       "drives is "
       "a servo and has faulted, its LED will be displaying an error code.  That condition can only be reset "
       "by "
       "interrupting power to the system.\n" +
           no},
      {"fault 2 514",
       "Drive Error: We are experiencing a servo fault on axis 2. The program has been halted.\n  CCW "
       "Limit\n  bad "
       "encoder\n"},
      {"greet", "tavlo: the hub has been switched off and on; its program does not run any more\n"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(RunAndThen(row.command), (Ended{8, "1\tstarted\n", kRuns + row.message}))
        << row.command.toStdString();
  }
}

TEST_F(RunRoad, YesResetsTheHaltedHub) {
  LongMove();
  StartHubWithProgram();
  const Ended ended = RunAndThen("stop", {"--yes"});
  EXPECT_EQ(ended.code, 8);
  EXPECT_TRUE(ended.err.ends_with("tavlo: answered Yes (--yes)\n")) << ended.err;
  EXPECT_TRUE(HubGotLast("IRRRRRRRRRR"));
}

TEST_F(RunRoad, TheOperatorAnswersOnTheTerminal) {
  LongMove();
  StartHubWithProgram();
  TerminalProcess tavlo({TAVLO_CLI, "run", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(tavlo.Shows("the program runs"));
  ASSERT_TRUE(HubGotLast("I"));
  hub->Command("stop");
  ASSERT_TRUE(tavlo.Shows("Should I reset the drive now? [y/N] "));
  tavlo.Type("y\n");
  EXPECT_EQ(tavlo.Wait(), 8);
  EXPECT_TRUE(HubGotLast("IRRRRRRRRRR"));
}

TEST_F(RunRoad, CtrlCOnTheTerminalStopsTheMachineAlsoAtAQuestion) {
  LongMove();
  StartHubWithProgram();
  {
    TerminalProcess tavlo({TAVLO_CLI, "run", "--port", hub->Link().toStdString()});
    ASSERT_TRUE(tavlo.Shows("the program runs"));
    ASSERT_TRUE(HubGotLast("I"));
    tavlo.Type("\x03");
    EXPECT_EQ(tavlo.Wait(), 130);
    EXPECT_TRUE(HubGotLast("S"));
  }
  TerminalProcess tavlo({TAVLO_CLI, "run", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(tavlo.Shows("the program runs"));
  ASSERT_TRUE(HubGotLast("I"));
  hub->Command("stop");
  ASSERT_TRUE(tavlo.Shows("[y/N] "));
  tavlo.Type("\x03");
  EXPECT_EQ(tavlo.Wait(), 130);
  EXPECT_TRUE(HubGotLast("S"));
}

TEST_F(RunRoad, ALineThatIsLostEndsTheRunWithFive) {
  LongMove();
  StartHubWithProgram();
  EXPECT_EQ(
      RunAndThen("unplug"),
      (Ended{5, "1\tstarted\n",
             kRuns + "tavlo: the port has gone; check the cable. The hub's program may still be running\n"}));
}

TEST_F(RunRoad, AWaitingRunTakesNoProcessorTime) {
  LongMove();
  StartHubWithProgram();
  TerminalProcess tavlo({TAVLO_CLI, "run", "--port", hub->Link().toStdString(), "--for", "2"});
  EXPECT_EQ(tavlo.Wait(), 0);
  EXPECT_LT(tavlo.ProcessorSeconds(), 0.1);
}

/// Questions of four kinds, as an operator meets them.
class PromptRoad : public RunRoad {
 protected:
  void Prompts() {
    Line(1).Type = MMI;
    Line(1).SubType = WaitEnter;
    Line(1).Text = "Load the part";
    Line(2).Type = MMI;
    Line(2).SubType = GetCount;
    Line(2).Text = "How many?";
    Line(2).DistVar = kFirstCount;
    Line(2).LowerInt = 1;
    Line(2).UpperInt = 10;
    Line(3).Type = WT;
    Line(3).Time = 30;
    Line(4).Type = MMI;
    Line(4).SubType = Menu;
    Line(4).Text = "1 cut  2 drill";
    Line(4).MenuKey[2] = true;
    Line(4).MenuLine[2] = 4;
    Line(5).Type = MMI;
    Line(5).SubType = BranchYesNo;
    Line(5).Text = "Once more?";
    Line(5).LineNum = 0;
    Line(6).Type = MMI;
    Line(6).SubType = DisplayOnly;
    Line(6).Text = "Done";
    StartHubWithProgram();
  }
  QString Script(const QByteArray& lines) {
    const QString path = folder_.filePath("script");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(lines);
    return path;
  }
  static constexpr std::int16_t kFirstCount = 35;
};

TEST_F(PromptRoad, AScriptAnswersEachPromptInItsTurn) {
  Prompts();
  TavloProcess tavlo(RunArguments({"--for", "6", "--no-status"}),
                     Script("\n99\n5\nkey 2\nyes\nenter\n3\nkey 2\nno\n"));
  const Ended ended = tavlo.Wait();
  EXPECT_EQ(ended.code, 0);
  EXPECT_EQ(ended.err, kRuns);
  EXPECT_TRUE(ended.out.ends_with("display\t1\tDone\n") || ended.out.ends_with("6\tfinished\n")) << ended.out;
  EXPECT_NE(ended.out.find("display\t4\t1 to 10\n"), std::string::npos) << ended.out;
  EXPECT_TRUE(HubGotLast("SCDREMI\rI99\r5\rII2I+I\rI3\rII2I-IS")) << Received().constData();
}

TEST_F(PromptRoad, AnOperatorAnswersThemOnTheTerminalAndPausesStepsAndStops) {
  Prompts();
  TerminalProcess tavlo({TAVLO_CLI, "run", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(tavlo.Shows("keys: 0-9"));
  ASSERT_TRUE(tavlo.Shows("Load the part"));
  tavlo.Type("\r");
  ASSERT_TRUE(tavlo.Shows("How many?"));
  tavlo.Type(
      "3\x7f"
      "4\r");
  ASSERT_TRUE(tavlo.Shows("1 cut  2 drill"));
  tavlo.Type("2");
  ASSERT_TRUE(tavlo.Shows("Once more?"));
  tavlo.Type("p");
  ASSERT_TRUE(tavlo.Shows("paused"));
  ASSERT_TRUE(HubGotLast("P"));
  tavlo.Type("s");
  EXPECT_EQ(tavlo.Wait(), 0);
  EXPECT_TRUE(HubGotLast("SCDREMI\rI3\b4\rII2IPS")) << Received().constData();
  EXPECT_EQ(tavlo.Shown().find("44"), std::string::npos) << "keys are not echoed";
}

TEST_F(PromptRoad, StepsOfAPausedProgramOnTheTerminal) {
  for (const int line : {1, 2, 3, 4, 5, 6, 7}) {
    Line(line).Type = WT;
    Line(line).Time = 100;
  }
  StartHubWithProgram();
  TerminalProcess tavlo({TAVLO_CLI, "run", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(tavlo.Shows("1\tstarted"));
  tavlo.Type("p");
  ASSERT_TRUE(tavlo.Shows("1\tfinished"));
  for (int step = 2; step <= 6; ++step) {
    tavlo.Type("t");
    ASSERT_TRUE(tavlo.Shows(std::to_string(step) + "\tfinished")) << tavlo.Shown();
    QThread::msleep(50);
  }
  tavlo.Type("r");
  ASSERT_TRUE(tavlo.Shows("7\tfinished"));
  tavlo.Type("\x03");
  EXPECT_EQ(tavlo.Wait(), 130);
  EXPECT_TRUE(HubGotLast("SCDREXIPTITITITITIrIS")) << Received().constData();
}

TEST_F(PromptRoad, TheTerminalIsAsBeforeAfterwards) {
  LongMove();
  StartHubWithProgram();
  const std::string run = std::string(TAVLO_CLI) + " run --port " + hub->Link().toStdString();
  for (const std::string& command : {run + " --for 0.3", "timeout --foreground -s TERM 1 " + run,
                                     "timeout --foreground -s HUP 1 " + run}) {
    TerminalProcess shell(
        {"/bin/sh", "-c",
         "before=$(stty -g); " + command + "; [ \"$before\" = \"$(stty -g)\" ] && echo unchanged"});
    EXPECT_TRUE(shell.Shows("unchanged")) << command << shell.Shown();
    EXPECT_EQ(shell.Wait(), 0);
    EXPECT_NE(shell.Shown().find("keys: p pause"), std::string::npos);
    EXPECT_TRUE(HubGotLast("S"));
  }
}

TEST_F(PromptRoad, ARunInTheBackgroundOfATerminalIsNotHeldUpByIt) {
  LongMove();
  StartHubWithProgram();
  const std::string run = std::string(TAVLO_CLI) + " run --for 0.5 --port " + hub->Link().toStdString();
  TerminalProcess shell({"/bin/bash", "-c", "set -m; " + run + " & wait $!; echo ended $?"});
  EXPECT_TRUE(shell.Shows("ended 0")) << shell.Shown();
  EXPECT_EQ(shell.Wait(), 0);
}

class RunFailure : public RunRoad, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(RunFailure, IsToldInItsWordsAndByItsExitCode) {
  LongMove();
  program.Axis.DriveModel[0] = 15;
  for (int axis = 1; axis < 8; ++axis) program.Axis.DriveModel[axis] = 0;
  StartHubWithProgram();
  hub->Command("fail " + QByteArray(GetParam().mode));
  EXPECT_EQ(Tavlo(RunArguments()), (Ended{GetParam().code, "", GetParam().message + "\n"}));
}

const std::string kNoDrives =
    "The Tavlo Hub is not responding to the D command.  Is it connected to the right port and turned on?";
const std::string kNoExecute =
    "The Tavlo Hub is not responding to the execute (E) command.  Is it connected to the right port and "
    "turned on?";

INSTANTIATE_TEST_SUITE_P(
    EveryMode, RunFailure,
    ::testing::Values(
        FailureCase{"silent-c", 6, kGivesTime + kNotCommunicating},
        FailureCase{"one-byte-c", 6, kGivesTime + kNotCommunicating}, FailureCase{"silent-d", 6, kNoDrives},
        FailureCase{"short-d", 6, kNoDrives}, FailureCase{"silent-e", 6, kNoExecute},
        FailureCase{"late-e", 6, kNoExecute}, FailureCase{"noise-e", 6, kNoExecute},
        FailureCase{
            "missing-drive:1", 3,
            "Missing drive: The drive connected to port 1 is not responding.  You must have a drive on "
            "port 1."},
        FailureCase{
            "unknown-drive:1", 3,
            "Wrong drive: The drive connected to port 1 is a unknown type.  Your program expects drive 1 to "
            "be a Zenu-A-p.  Do you want to run anyway?\ntavlo: answered No because there is nobody to ask; "
            "--yes answers Yes"}),
    NameOfMode);

}  // namespace
}  // namespace tavlo::testing
