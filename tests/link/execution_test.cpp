// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/execution.h"

#include <gtest/gtest.h>

#include "link/receive.h"
#include "link/scripted_hub.h"
#include "session/grid.h"

namespace tavlo::testing {
namespace {

struct ExecutionDesk : FakeDesk {
  ExecutionDesk() {
    port.OnComm = [this] { NewOnComm(desk); };
  }
  ScriptedHub hub{port};
};

const ShownBox kChangedBox = {
    "You have changed your program since the last time you downloaded it.  Do you want to execute anyway?",
    std::string(kApplicationTitle), Buttons::YesNo, Icon::None};
const ShownBox kNoAnswerBox = {
    "The Tavlo Hub is not responding to the execute (E) command.  Is it connected to the right port and "
    "turned "
    "on?",
    std::string(kApplicationTitle), Buttons::OK, Icon::Question};

TEST(Execute, ACleanProgramGoesStraightToTheStopWithoutAQuestion) {
  ExecutionDesk d;
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.port.sent, (std::vector<std::string>{"S", "C", "D", "R", "E"}));
}

TEST(Execute, TheHubChoosesTheWindow) {
  struct Case {
    const char* reply;
    RunWindow window;
  };
  for (const Case& c : {Case{"X", RunWindow::ExecStatus}, Case{"M", RunWindow::fakeMMI}}) {
    for (const bool used : {false, true}) {
      ExecutionDesk d;
      d.hub.window = c.reply;
      d.source.program.MMIused = used;
      EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
      EXPECT_EQ(d.run.shown, std::vector<RunWindow>{c.window});
    }
  }
}

TEST(Execute, AChangedProgramIsAskedAbout) {
  ExecutionDesk d;
  d.source.Changed = true;
  d.boxes.setNextAnswer(Answer::Yes);
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kChangedBox});
  EXPECT_TRUE(d.source.Changed) << "a run saves nothing";
}

TEST(Execute, ANoSendsNothing) {
  ExecutionDesk d;
  d.source.Changed = true;
  d.boxes.setNextAnswer(Answer::No);
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Declined);
  EXPECT_TRUE(d.port.sent.empty());
  EXPECT_FALSE(d.source.link.Busy);
}

TEST(Execute, KeepsOutWhileTheHubIsBusy) {
  ExecutionDesk d;
  d.source.link.Busy = true;
  d.source.Changed = true;
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Busy);
  EXPECT_TRUE(d.port.sent.empty());
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_TRUE(d.source.link.Busy) << "the other operation still runs";
}

TEST(Execute, KeepsOthersOutWhileItTalksToTheHub) {
  ExecutionDesk d;
  bool always = true;
  d.hub.on_place = [&](const std::string&) { always = always && d.source.link.Busy; };
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_TRUE(always);
}

TEST(Execute, AFailedQuestionWhoEndsIt) {
  ExecutionDesk d;
  d.hub.instead["C"] = "";
  EXPECT_EQ(Execute(d.desk), ExecuteResult::HubSilent);
  EXPECT_EQ(d.port.AllSent(), "SC");
  EXPECT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_TRUE(d.run.shown.empty());
  EXPECT_FALSE(d.source.link.Busy);
}

TEST(Execute, AFailedDriveCheckEndsIt) {
  ExecutionDesk d;
  d.hub.instead["D"] = "";
  EXPECT_EQ(Execute(d.desk), ExecuteResult::DrivesNotOK);
  EXPECT_EQ(d.port.AllSent(), "SCD");
  EXPECT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_TRUE(d.run.shown.empty());
  EXPECT_FALSE(d.source.link.Busy);
}

TEST(Execute, AnAnswerThatDoesNotComeInASecondYieldsTheMessageAndNoWindow) {
  for (const char* reply : {"", "x", "m", "XM", "XX", "X\xfe", "\n"}) {
    ExecutionDesk d;
    d.hub.instead["E"] = reply;
    EXPECT_EQ(Execute(d.desk), ExecuteResult::NoAnswer) << reply;
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kNoAnswerBox}) << reply;
    EXPECT_TRUE(d.run.shown.empty()) << reply;
    EXPECT_FALSE(d.source.link.Busy) << reply;
    EXPECT_GT(d.port.RThreshold(), 0) << reply;
  }
}

TEST(Execute, AnAnswerJustInTimeCountsAndALaterOneDoesNot) {
  ExecutionDesk d;
  d.hub.delays["E"] = 0.95;
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  ExecutionDesk late;
  late.hub.delays["E"] = 1.05;
  EXPECT_EQ(Execute(late.desk), ExecuteResult::NoAnswer);
}

TEST(Execute, ALaterReadReplacesWhatWasReadBefore) {
  ExecutionDesk d;
  d.hub.on_place = [&](const std::string& place) {
    if (place == "E") d.port.Reply("noise", 0.1);
  };
  d.hub.delays["E"] = 0.4;
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
}

TEST(Execute, EventsAreOffWhileAnswersAreAwaitedAndOnForTheRun) {
  for (const int before : {0, 1, 3}) {
    ExecutionDesk d;
    d.port.threshold = before;
    int on = 0;
    d.hub.on_place = [&](const std::string&) { on += d.port.RThreshold(); };
    int in_run = -1;
    d.run.on_show = [&](RunWindow) { in_run = d.port.RThreshold(); };
    EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
    EXPECT_EQ(on, 0);
    EXPECT_EQ(in_run, 1);
  }
}

TEST(Execute, TheHubsVersionIsTaken) {
  ExecutionDesk d;
  d.hub.revision = 52;
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_EQ(d.source.program.HubVersion, 1.52F);
}

TEST(Execute, TheWindowStartsTheProgramAndNothingElseDoes) {
  ExecutionDesk d;
  d.run.on_show = [&](RunWindow window) { StartRun(d.desk, window); };
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_EQ(d.port.AllSent(), "SCDREX");
}

TEST(Execute, ABoxDuringTheRunDoesNotStartTheProgramAgain) {
  ExecutionDesk d;
  d.hub.window = "M";
  d.run.on_show = [&](RunWindow window) {
    StartRun(d.desk, window);
    d.port.Receive(Bytes({240, 3, 0, 0}));
    d.port.Receive(Bytes({254, 0, 3, 0}));
  };
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_EQ(d.port.AllSent(), "SCDREMI");
}

TEST(Execute, CanBeDoneAgainAfterARun) {
  ExecutionDesk d;
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_FALSE(d.source.link.Busy);
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
}

TEST(StartRun, TheStatusWindowSendsX) {
  FakeDesk d;
  StartRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(d.port.sent, std::vector<std::string>{"X"});
  EXPECT_FALSE(d.source.display.MMIActive);
}

TEST(StartRun, TheTerminalSendsMWithEventsOnAndAnEmptyDisplay) {
  FakeDesk d;
  d.port.threshold = 3;
  d.source.display.CurRow = 2;
  d.source.display.textline = {"a", "b", "c", "d"};
  d.source.display.EscPending = d.source.display.RowPending = d.source.display.RowGot = true;
  bool active_when_sent = false;
  int threshold_when_sent = -1;
  d.port.on_output = [&](const std::string&) {
    active_when_sent = d.source.display.MMIActive;
    threshold_when_sent = d.port.RThreshold();
  };
  StartRun(d.desk, RunWindow::fakeMMI);
  EXPECT_EQ(d.port.sent, std::vector<std::string>{"M"});
  EXPECT_TRUE(active_when_sent);
  EXPECT_EQ(threshold_when_sent, 1);
  EXPECT_EQ(d.source.display.CurRow, 0);
  for (const std::string& line : d.source.display.textline) EXPECT_EQ(line, "");
  EXPECT_FALSE(d.source.display.EscPending);
  EXPECT_FALSE(d.source.display.RowPending);
  EXPECT_FALSE(d.source.display.RowGot);
  EXPECT_GT(d.run.text_changes, 0);
}

TEST(StopRun, SendsStopWaitsAndHidesMarkerAndWindow) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    FakeDesk d;
    d.run.active = window;
    StopRun(d.desk, window);
    EXPECT_EQ(d.port.sent, std::vector<std::string>{"S"});
    EXPECT_EQ(d.loop.waits, std::vector<double>{0.05});
    ASSERT_FALSE(d.view.counters.empty());
    EXPECT_EQ(d.view.counters.back(), std::nullopt);
    EXPECT_EQ(d.run.hides, 1);
    EXPECT_TRUE(d.view.rows.empty()) << "line -1 paints nothing";
  }
}

TEST(StopRun, TheTerminalsTextEndsBeforeTheWait) {
  FakeDesk d;
  d.source.display.MMIActive = true;
  d.port.threshold = 3;
  d.run.active = RunWindow::fakeMMI;
  d.port.OnComm = [&d] { NewOnComm(d.desk); };
  d.port.Receive("before ");
  d.loop.on_wait = [&] {
    EXPECT_FALSE(d.source.display.MMIActive);
    EXPECT_EQ(d.port.RThreshold(), 1);
    d.port.Receive("after");
  };
  StopRun(d.desk, RunWindow::fakeMMI);
  EXPECT_EQ(d.loop.waits.size(), 1u);
  EXPECT_EQ(d.source.display.textline[0], "before ");
}

TEST(StopRun, LinesInExecutionStayPaintedUntilTheWindowIsLeft) {
  FakeDesk d;
  d.run.active = RunWindow::ExecStatus;
  ShowLine(d.desk.grid(), 5);
  ShowRedLine(d.desk.grid(), 6);
  StopRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(d.source.shown.rows[5].state, RowState::Executing);
  EXPECT_EQ(d.source.shown.rows[6].state, RowState::WentOn);
  LeaveRun(d.desk);
  for (const Row& row : d.source.shown.rows) EXPECT_EQ(row.state, RowState::Normal);
}

TEST(CloseRun, ClosingTheStatusWindowStopsTheProgram) {
  FakeDesk d;
  d.run.active = RunWindow::ExecStatus;
  CloseRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(d.port.sent, std::vector<std::string>{"S"});
}

TEST(CloseRun, ClosingTheTerminalSendsNothing) {
  FakeDesk d;
  d.run.active = RunWindow::fakeMMI;
  CloseRun(d.desk, RunWindow::fakeMMI);
  EXPECT_TRUE(d.port.sent.empty());
}

TEST(LeaveRun, PutsEveryRowToRest) {
  FakeDesk d;
  d.source.program.LimitList = BranchToLine;
  d.source.program.LimitBranch = 8;
  for (const int line : {0, 7, 199}) ShowLine(d.desk.grid(), line);
  LeaveRun(d.desk);
  for (int line = 0; line < 200; ++line) {
    EXPECT_EQ(d.source.shown.rows[line].state, line == 7 ? RowState::LimitTarget : RowState::Normal) << line;
  }
}

const ShownBox kCantResetBox = {
    "I sent the reset command to the drive, but it did not respond.  Please reset the drive manually by "
    "turning "
    "it off.",
    "Can't reset", Buttons::OK, Icon::Exclamation};

TEST(ResetDrive, SendsTenRAndAwaitsAYForEach) {
  FakeDesk d;
  d.port.on_output = [&](const std::string&) { d.port.Reply("Y", 0.5); };
  ResetDrive(d.desk.link(), d.desk.loop);
  EXPECT_EQ(d.port.sent, std::vector<std::string>(10, "R"));
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.loop.yields, 1);
}

TEST(ResetDrive, AllTenGoOutThoughTheFirstYCameAtOnce) {
  FakeDesk d;
  d.port.on_output = [&](const std::string&) { d.port.Reply("Y"); };
  const double start = d.clock.now;
  ResetDrive(d.desk.link(), d.desk.loop);
  EXPECT_EQ(d.port.sent.size(), 10u);
  EXPECT_LT(d.clock.now - start, 0.1);
}

TEST(ResetDrive, WithNoHubAtAllItWaitsSixSecondsAndSaysSoOnce) {
  FakeDesk d;
  const double start = d.clock.now;
  ResetDrive(d.desk.link(), d.desk.loop);
  EXPECT_EQ(d.port.sent, std::vector<std::string>{"R"});
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kCantResetBox});
  EXPECT_GE(d.clock.now - start, 6.0);
  EXPECT_LT(d.clock.now - start, 6.1);
}

TEST(ResetDrive, TheSixSecondsAreOneBudgetForAllTen) {
  FakeDesk d;
  d.port.on_output = [&](const std::string&) { d.port.Reply("Y", 0.7); };
  const double start = d.clock.now;
  ResetDrive(d.desk.link(), d.desk.loop);
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kCantResetBox});
  EXPECT_EQ(d.port.sent.size(), 9u);
  EXPECT_LT(d.clock.now - start, 6.1);
}

TEST(ResetDrive, OnlyAReadOfExactlyYCounts) {
  for (const char* reply : {"YY", "y", "189189189189189189189189", "\xffY"}) {
    FakeDesk d;
    d.port.on_output = [&](const std::string&) { d.port.Reply(reply); };
    ResetDrive(d.desk.link(), d.desk.loop);
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kCantResetBox}) << reply;
  }
}

TEST(ResetDrive, EventsAreOffWhileTheYIsAwaitedAndBackAfterwards) {
  for (const int before : {1, 3}) {
    for (const bool answered : {false, true}) {
      FakeDesk d;
      d.port.threshold = before;
      int on = 0;
      d.port.on_output = [&](const std::string&) {
        on += d.port.RThreshold();
        if (answered) d.port.Reply("Y");
      };
      ResetDrive(d.desk.link(), d.desk.loop);
      EXPECT_EQ(on, 0);
      EXPECT_EQ(d.port.RThreshold(), before);
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
