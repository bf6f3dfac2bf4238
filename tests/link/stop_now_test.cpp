// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "link/com_port.h"
#include "link/download.h"
#include "link/drive_terminal.h"
#include "link/execution.h"
#include "link/hub_messages.h"
#include "link/polled.h"
#include "link/upload.h"
#include "session/grid.h"
#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

/// A session whose operator terminal was closed by its frame while its program runs.
struct LeftRunning : FakeDesk {
  LeftRunning() {
    StartRun(desk, RunWindow::fakeMMI);
    CloseRun(desk, RunWindow::fakeMMI);
    port.sent.clear();
  }
};

TEST(StopNow, StopsARunWhoseWindowIsGoneOnceAndLeavesTheRowsAtRest) {
  LeftRunning d;
  EXPECT_TRUE(d.source.link.HubRuns) << "the emulator's frame sends nothing";
  ShowLine(d.desk.grid(), 4);
  d.port.threshold = 3;
  StopHubNow(d.desk);
  EXPECT_EQ(d.port.AllSent(), "S");
  EXPECT_EQ(d.loop.waits, std::vector<double>{0.05});
  EXPECT_FALSE(d.source.link.HubRuns);
  EXPECT_TRUE(d.source.link.Stopped);
  EXPECT_FALSE(d.source.display.MMIActive);
  EXPECT_EQ(d.port.threshold, 1);
  EXPECT_EQ(d.view.counters, std::vector<std::optional<int>>{std::nullopt});
  EXPECT_EQ(d.source.shown.rows[4].state, RowState::Normal);
  d.port.OnComm = [&] { HandleMsg(d.desk, d.port.Input()); };
  d.port.Receive({static_cast<char>(254), 0, 7, 0});
  EXPECT_EQ(d.port.AllSent(), "S") << "what the hub still says is not answered";
  EXPECT_EQ(d.source.shown.rows[7].state, RowState::Normal);
}

TEST(StopNow, LeavesTheThresholdAloneWhereNoOperatorTerminalWasLeft) {
  FakeDesk d;
  d.port.threshold = 3;
  StopHubNow(d.desk);
  EXPECT_EQ(d.port.AllSent(), "S");
  EXPECT_TRUE(d.port.thresholds.empty());
}

TEST(StopNow, SendsNothingMoreWhileTheLastStopIsTakenIn) {
  LeftRunning d;
  d.loop.on_wait = [&] { StopHubNow(d.desk); };
  StopHubNow(d.desk);
  EXPECT_EQ(d.port.AllSent(), "S");
  d.loop.on_wait = nullptr;
  StopHubNow(d.desk);
  EXPECT_EQ(d.port.AllSent(), "SS") << "a later press is another one";
}

TEST(StopNow, SendsNothingWithoutAPortOrUnderATransfer) {
  LeftRunning d;
  d.port.is_open = false;
  EXPECT_FALSE(CanStop(d.desk));
  d.port.is_open = true;
  EXPECT_TRUE(CanStop(d.desk));
  {
    const TransferUnderWay under_way(d.desk.link());
    EXPECT_FALSE(CanStop(d.desk));
    StopHubNow(d.desk);
  }
  EXPECT_TRUE(CanStop(d.desk));
  EXPECT_EQ(d.port.AllSent(), "");
  EXPECT_TRUE(d.source.link.HubRuns);
}

TEST(StopNow, IsKeptAwayFromEachByteOfADownloadAndOfAnUpload) {
  for (const bool download : {true, false}) {
    FakeDesk d;
    int turns = 0;
    bool begun = false;
    d.port.on_output = [&](const std::string& bytes) {
      begun = begun || bytes == (download ? "F" : "U");
      if (bytes == "C") return d.port.Reply("\x26\x08");
      if (bytes == "U") return d.port.Reply(std::string(kUploadBytes, '\0'), 1);
      if (begun && bytes != "K") d.port.Reply("Y");
    };
    d.loop.on_yield = [&] {
      ++turns;
      EXPECT_EQ(CanStop(d.desk), !begun);
      StopHubNow(d.desk);
    };
    static_cast<void>(download ? Download(d.desk).has_value() : Upload(d.desk).has_value());
    EXPECT_GT(turns, 5);
    EXPECT_EQ(std::ranges::count(d.port.sent, "S"), 1) << "the transfer's own, before it begins";
    EXPECT_TRUE(CanStop(d.desk)) << "and again afterwards";
  }
}

TEST(StopNow, TakesTheLineBackFromTheDrivesFirstAndGivesItToThemAgain) {
  LeftRunning d;
  ActivateTerminal(d.desk);
  ShowLine(d.desk.grid(), 4);
  d.port.sent.clear();
  StopHubNow(d.desk);
  EXPECT_EQ(d.port.sent, (std::vector<std::string>{"0HM\r", "S", "H"}));
  EXPECT_TRUE(d.source.VOXterm.TermActive);
  EXPECT_TRUE(d.source.VOXterm.TermUsed);
  EXPECT_EQ(d.loop.yields, 0) << "nothing that is typed reaches the hub between";
  EXPECT_TRUE(d.loop.waits.empty());
  EXPECT_FALSE(d.source.link.HubRuns);
  EXPECT_EQ(d.source.shown.rows[4].state, RowState::Normal);
  LeaveTerminal(d.desk);
  EXPECT_EQ(d.port.sent.back(), "0HM\r");
}

/// What ends the possibility that something moves, and what does not.
struct EndCase {
  const char* what;
  std::function<void(Desk&)> happens;
  bool still_runs;
};

TEST(StopNow, IsOfferedUntilTheHubIsStoppedOrSaysThatItEnded) {
  const auto message = [](int header) {
    return [header](Desk& desk) { HandleMsg(desk, std::string{static_cast<char>(header), 0, 8, 0}); };
  };
  for (const EndCase& c : {
           EndCase{"the frame of the emulator", [](Desk& desk) { CloseRun(desk, RunWindow::fakeMMI); }, true},
           EndCase{"the frame of the status window",
                   [](Desk& desk) { CloseRun(desk, RunWindow::ExecStatus); }, false},
           EndCase{"Stop", [](Desk& desk) { StopRun(desk, RunWindow::fakeMMI); }, false},
           EndCase{"a line", message(254), true},
           EndCase{"a limit", message(252), false},
           EndCase{"the stop button of the machine", message(251), false},
           EndCase{"a wrong drive", message(249), true},
           EndCase{"a drive that is lost", message(240), true},
           EndCase{"a stack that runs over", message(239), false},
           EndCase{"a stack that runs under", message(238), false},
           EndCase{"a disabled drive", message(212), false},
           EndCase{"a fault", message(211), false},
           EndCase{"a greeting", message(255), false},
           EndCase{"a lost port", TellPortLost, false},
           EndCase{"another port", [](Desk& desk) { ClickOptCom(desk, 3); }, false},
       }) {
    FakeDesk d;
    d.boxes.setNextAnswer(Answer::No);
    StartRun(d.desk, RunWindow::fakeMMI);
    EXPECT_EQ(d.view.stop, 1);
    c.happens(d.desk);
    EXPECT_EQ(d.source.link.HubRuns, c.still_runs) << c.what;
    EXPECT_EQ(d.view.stop > 1, !c.still_runs) << c.what << ": the button is told";
  }
}

/// Remembers whether the hub ran when it was told to keep the session.
struct FakeKeeper : SessionKeeper {
  void Keep(const Source& source) override { ran.push_back(source.link.HubRuns); }
  std::vector<bool> ran;
};

TEST(StopNow, TheBeginningAndTheEndOfARunAreKeptOverACrash) {
  FakeDesk d;
  FakeKeeper keeper;
  d.desk.keeper = &keeper;
  StartRun(d.desk, RunWindow::fakeMMI);
  HandleMsg(d.desk, std::string{static_cast<char>(254), 0, 8, 0});
  CloseRun(d.desk, RunWindow::fakeMMI);
  EXPECT_EQ(keeper.ran, std::vector<bool>{true});
  StopHubNow(d.desk);
  StopHubNow(d.desk);
  EXPECT_EQ(keeper.ran, (std::vector<bool>{true, false}));
}

TEST(StopNow, APortThatDoesNotOpenLeavesTheRunOnTheOldOneInReach) {
  LeftRunning d;
  d.port.open_errors[4] = "no such device";
  ClickOptCom(d.desk, 3);
  EXPECT_EQ(d.source.link.ComNum, 1);
  EXPECT_TRUE(d.source.link.HubRuns);
  StopHubNow(d.desk);
  EXPECT_EQ(d.port.AllSent(), "S");
}

}  // namespace
}  // namespace tavlo::testing
