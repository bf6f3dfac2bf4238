// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/execution.h"
#include "link/receive.h"
#include "link/scripted_hub.h"
#include "session/grid.h"

namespace tavlo::testing {
namespace {

using Strings = std::vector<std::string>;

constexpr std::array kWindows = {RunWindow::ExecStatus, RunWindow::fakeMMI};
constexpr std::string_view kByTime = "Status updated about 10 times/second";

std::string_view ByLine(RunWindow window) {
  return window == RunWindow::ExecStatus ? "Status updated at start of each line"
                                         : "Status updated at start of each instruction";
}

const std::string kStepDone = Bytes({253, 0, 0, 0});
/// A program runs, the window that shows it is up; what was sent to get there is forgotten.
struct ControlledDesk : FakeDesk {
  explicit ControlledDesk(RunWindow window) {
    port.OnComm = [this] { NewOnComm(desk); };
    run.active = window;
    StartRun(desk, window);
    Forget();
  }
  void Forget() {
    port.sent.clear();
    loop.waits.clear();
    view.rows.clear();
    view.scrolls.clear();
    view.counters.clear();
    run.control_changes = 0;
  }
  [[nodiscard]] const RunPanel& Panel() const { return source.run.panel; }
};

void ExpectPictures(const RunPanel& panel, Picture play, Picture pause, Picture step) {
  EXPECT_EQ(panel.Play, play);
  EXPECT_EQ(panel.Pause, pause);
  EXPECT_EQ(panel.SingleStep, step);
}

TEST(StartRun, ShowsARunningProgramWithTheWordsOfItsWindow) {
  for (const RunWindow window : kWindows) {
    FakeDesk d;
    d.run.active = window;
    d.source.run.panel = {};
    d.source.run.panel.Pause = Picture::PauseRed;
    d.source.run.panel.SingleStep = Picture::StepYellow;
    StartRun(d.desk, window);
    EXPECT_TRUE(d.source.run.panel.Running);
    ExpectPictures(d.source.run.panel, Picture::PlayGreen, Picture::PauseGray, Picture::StepGray);
    EXPECT_EQ(d.source.run.panel.lblUpdate, ByLine(window));
    EXPECT_GT(d.run.control_changes, 0);
  }
}

TEST(StartRun, PutsTheLightsToRest) {
  FakeDesk d;
  d.source.program.Axis.DriveModel[0] = 1;
  d.source.program.Axis.DriveModel[1] = 16;
  for (auto& lights : d.source.run.panel.INlo) lights.fill(Led::Green);
  for (auto& lights : d.source.run.panel.OUTY) lights.fill(Led::Unknown);
  StartRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(d.source.run.panel.INlo[0][0], Led::GreenOff);
  EXPECT_EQ(d.source.run.panel.INlo[0][7], Led::RedOff);
  EXPECT_EQ(d.source.run.panel.INlo[1][7], Led::GreenOff);
  EXPECT_EQ(d.source.run.panel.INX[1][6], Led::RedOff);
  EXPECT_EQ(d.source.run.panel.OUTY[0][0], Led::GreenOff);
  EXPECT_EQ(d.run.statuses, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST(Pause, SendsOnePWaitsAndClearsThePainting) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ShowLine(d.desk.grid(), 5);
    ClickPause(d.desk);
    EXPECT_EQ(d.port.sent, Strings{"P"});
    EXPECT_EQ(d.loop.waits, std::vector<double>{0.05});
    EXPECT_EQ(d.source.shown.rows[5].state, RowState::Normal);
    EXPECT_FALSE(d.Panel().Running);
    ExpectPictures(d.Panel(), Picture::PlayGray, Picture::PauseRed, Picture::StepGray);
    EXPECT_EQ(d.Panel().lblUpdate, kByTime);
    EXPECT_GT(d.run.control_changes, 0);
  }
}

/// What stands at the moment that the wait begins, which lets the hub and the operator in.
class WatchedLoop : public FakeLoop {
 public:
  using FakeLoop::FakeLoop;
  void WaitSecs(double seconds) override {
    if (on_wait) on_wait();
    FakeLoop::WaitSecs(seconds);
  }
  std::function<void()> on_wait;
};

/// As ControlledDesk, with something to do in the waits.
struct WaitingDesk : ControlledDesk {
  explicit WaitingDesk(RunWindow window) : ControlledDesk(window) {}
  WatchedLoop watched{clock};
  Desk watched_desk{source, port,    boxes, clock,    watched, beeper, view,
                    run,    downbox, upbox, settings, dialogs, files,  loading};
};

TEST(Pause, TheStatusWindowTurnsRedBehindTheWaitAndTheTerminalBeforeIt) {
  for (const RunWindow window : kWindows) {
    WaitingDesk d(window);
    ShowLine(d.desk.grid(), 5);
    Picture during = Picture::StepGray;
    bool painted = false;
    bool running = true;
    d.watched.on_wait = [&] {
      during = d.Panel().Pause;
      running = d.Panel().Running;
      painted = d.source.shown.rows[5].state == RowState::Executing;
    };
    ClickPause(d.watched_desk);
    EXPECT_EQ(during, window == RunWindow::fakeMMI ? Picture::PauseRed : Picture::PauseGray);
    EXPECT_TRUE(painted);
    EXPECT_FALSE(running);
    EXPECT_EQ(d.Panel().Pause, Picture::PauseRed);
  }
}

TEST(Pause, PressedTwiceSendsOnePAndRewritesTheLabel) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickPause(d.desk);
    d.source.run.panel.lblUpdate = "";
    d.run.control_changes = 0;
    ClickPause(d.desk);
    EXPECT_EQ(d.run.control_changes, 1) << "the label is seen";
    EXPECT_EQ(d.port.sent, Strings{"P"});
    EXPECT_EQ(d.loop.waits.size(), 1u);
    EXPECT_EQ(d.Panel().lblUpdate, kByTime);
    EXPECT_EQ(d.Panel().Pause, Picture::PauseRed);
  }
}

TEST(Pause, ASecondPressDuringTheWaitSendsNothing) {
  for (const RunWindow window : kWindows) {
    WaitingDesk d(window);
    d.watched.on_wait = [&] { ClickPause(d.desk); };
    ClickPause(d.watched_desk);
    EXPECT_EQ(d.port.sent, Strings{"P"});
  }
}

TEST(Pause, AResumeDuringItsWaitWins) {
  for (const RunWindow window : kWindows) {
    WaitingDesk d(window);
    d.watched.on_wait = [&] { ClickPlay(d.desk); };
    ClickPause(d.watched_desk);
    EXPECT_EQ(d.port.sent, (Strings{"P", "r"}));
    EXPECT_TRUE(d.Panel().Running);
    ExpectPictures(d.Panel(), Picture::PlayGreen, Picture::PauseGray, Picture::StepGray);
  }
}

TEST(Pause, OfARunThatAHaltEndsDuringItsWaitPaintsNothingMore) {
  for (const RunWindow window : kWindows) {
    WaitingDesk d(window);
    d.boxes.setNextAnswer(Answer::No);
    d.watched.on_wait = [&] {
      d.port.Receive(Bytes({251, 0, 0, 0}));
      ShowLine(d.desk.grid(), 9);
      d.run.control_changes = 0;
    };
    ClickPause(d.watched_desk);
    EXPECT_EQ(d.run.control_changes, 0);
    EXPECT_EQ(d.source.shown.rows[9].state, RowState::Executing);
  }
}

TEST(Play, ResumesAPausedProgram) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickPause(d.desk);
    d.Forget();
    ClickPlay(d.desk);
    EXPECT_EQ(d.port.sent, Strings{"r"});
    EXPECT_TRUE(d.Panel().Running);
    ExpectPictures(d.Panel(), Picture::PlayGreen, Picture::PauseGray, Picture::StepGray);
    EXPECT_EQ(d.Panel().lblUpdate, ByLine(window));
    EXPECT_GT(d.run.control_changes, 0);
    EXPECT_TRUE(d.loop.waits.empty());
  }
}

TEST(Play, WhileRunningSendsNothingAndRewritesTheLabel) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    d.source.run.panel.lblUpdate = "";
    d.source.run.panel.SingleStep = Picture::StepYellow;
    ClickPlay(d.desk);
    EXPECT_TRUE(d.port.sent.empty());
    EXPECT_EQ(d.Panel().lblUpdate, ByLine(window));
    EXPECT_EQ(d.Panel().SingleStep, Picture::StepGray);
    EXPECT_EQ(d.Panel().Play, Picture::PlayGreen);
  }
}

TEST(Play, DuringASingleStepResumes) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickPause(d.desk);
    ClickSingleStep(d.desk);
    d.Forget();
    ClickPlay(d.desk);
    EXPECT_EQ(d.port.sent, Strings{"r"});
    ExpectPictures(d.Panel(), Picture::PlayGreen, Picture::PauseGray, Picture::StepGray);
  }
}

TEST(SingleStep, OfAPausedProgramSendsTAndWaitsForNothing) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickPause(d.desk);
    d.Forget();
    ClickSingleStep(d.desk);
    EXPECT_EQ(d.port.sent, Strings{"T"});
    ExpectPictures(d.Panel(), Picture::PlayGray, Picture::PauseGray, Picture::StepYellow);
    EXPECT_TRUE(d.loop.waits.empty());
    EXPECT_GT(d.run.control_changes, 0);
  }
}

TEST(SingleStep, OfARunningProgramDoesNothing) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickSingleStep(d.desk);
    EXPECT_TRUE(d.port.sent.empty());
    ExpectPictures(d.Panel(), Picture::PlayGreen, Picture::PauseGray, Picture::StepGray);
  }
}

TEST(SingleStep, ASecondOneWaitsForTheEndOfTheFirst) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickPause(d.desk);
    d.Forget();
    ClickSingleStep(d.desk);
    ClickSingleStep(d.desk);
    EXPECT_EQ(d.port.sent, Strings{"T"});
    d.port.Receive(kStepDone);
    ExpectPictures(d.Panel(), Picture::PlayGray, Picture::PauseRed, Picture::StepGray);
    EXPECT_FALSE(d.Panel().Running);
    ClickSingleStep(d.desk);
    EXPECT_EQ(d.port.sent, (Strings{"T", "T"}));
  }
}

TEST(SingleStep, BegunInTheWaitOfThePauseKeepsItsPictures) {
  for (const RunWindow window : kWindows) {
    WaitingDesk d(window);
    d.watched.on_wait = [&] { ClickSingleStep(d.desk); };
    ClickPause(d.watched_desk);
    EXPECT_EQ(d.port.sent, (Strings{"P", "T"}));
    ExpectPictures(d.Panel(), Picture::PlayGray, Picture::PauseGray, Picture::StepYellow);
    d.port.Receive(kStepDone);
    ExpectPictures(d.Panel(), Picture::PlayGray, Picture::PauseRed, Picture::StepGray);
  }
}

TEST(SingleStep, FivePauseAndResumeInOrder) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickPause(d.desk);
    for (int step = 0; step < 5; ++step) {
      ClickSingleStep(d.desk);
      d.port.Receive(LineMessage(254, step) + kStepDone);
    }
    ClickPlay(d.desk);
    EXPECT_EQ(d.port.AllSent(), "PTITITITITIr");
    EXPECT_EQ(d.view.scrolls, (std::vector<int>{0, 1, 2, 3, 4}));
  }
}

TEST(Reset, SendsAZeroAndShowsTheFirstLine) {
  for (const RunWindow window : kWindows) {
    for (const bool paused : {false, true}) {
      ControlledDesk d(window);
      if (paused) ClickPause(d.desk);
      const Picture play = d.Panel().Play;
      d.Forget();
      ClickReset(d.desk);
      EXPECT_EQ(d.port.sent, Strings{"0"});
      EXPECT_EQ(d.view.scrolls, std::vector<int>{0});
      EXPECT_EQ(d.Panel().Play, play);
      EXPECT_EQ(d.Panel().Running, !paused);
    }
  }
}

struct KeyRow {
  MmiKey key;
  char sent;
};
const std::vector<KeyRow> kKeys = {
    {MmiKey::Digit0, '0'},    {MmiKey::Digit1, '1'},    {MmiKey::Digit2, '2'},    {MmiKey::Digit3, '3'},
    {MmiKey::Digit4, '4'},    {MmiKey::Digit5, '5'},    {MmiKey::Digit6, '6'},    {MmiKey::Digit7, '7'},
    {MmiKey::Digit8, '8'},    {MmiKey::Digit9, '9'},    {MmiKey::dot, '.'},       {MmiKey::yes, '+'},
    {MmiKey::no, '-'},        {MmiKey::enter, 13},      {MmiKey::bksp, 8},        {MmiKey::arrowup, 'A'},
    {MmiKey::arrowdown, 'B'}, {MmiKey::arrowleft, 'C'}, {MmiKey::arrowright, 'D'}};

TEST(Keypad, EachKeyGoesOutAtOnceAsItsOwnByteAndWithoutEcho) {
  ASSERT_EQ(kKeys.size(), 19u);
  for (const KeyRow& row : kKeys) {
    ControlledDesk d(RunWindow::fakeMMI);
    PressKey(d.desk, row.key);
    EXPECT_EQ(d.port.sent, Strings{std::string(1, row.sent)});
    EXPECT_TRUE(d.loop.waits.empty());
    for (const std::string& line : d.source.display.textline) EXPECT_EQ(line, "");
    EXPECT_EQ(KeyByte(row.key), row.sent);
  }
}

TEST(Keypad, IsDeadWhileNoTerminalRunsAProgram) {
  for (const KeyRow& row : kKeys) {
    ControlledDesk status(RunWindow::ExecStatus);
    PressKey(status.desk, row.key);
    EXPECT_TRUE(status.port.sent.empty());
    FakeDesk idle;
    PressKey(idle.desk, row.key);
    EXPECT_TRUE(idle.port.sent.empty());
  }
}

TEST(Keypad, WorksWhilePaused) {
  ControlledDesk d(RunWindow::fakeMMI);
  ClickPause(d.desk);
  d.Forget();
  PressKey(d.desk, MmiKey::Digit7);
  EXPECT_EQ(d.port.sent, Strings{"7"});
}

/// Everything the operator can do in a run window but Stop, and the line events that would be answered.
void TryEverything(ControlledDesk& d) {
  for (const KeyRow& row : kKeys) PressKey(d.desk, row.key);
  ClickPlay(d.desk);
  ClickPause(d.desk);
  ClickSingleStep(d.desk);
  ClickReset(d.desk);
  for (const int header : {254, 236, 237, 235, 253, 241, 213, 221}) d.port.Receive(LineMessage(header, 3));
  ClickPlay(d.desk);
  ClickSingleStep(d.desk);
}

TEST(Stop, NotOneMoreByteGoesOutAfterIt) {
  for (const RunWindow window : kWindows) {
    for (const bool paused : {false, true}) {
      ControlledDesk d(window);
      if (paused) ClickPause(d.desk);
      d.Forget();
      StopRun(d.desk, window);
      TryEverything(d);
      EXPECT_EQ(d.port.sent, Strings{"S"});
      EXPECT_EQ(d.run.active, RunWindow::None);
    }
  }
}

TEST(Stop, NothingThatIsStillSaidOfTheRunIsPainted) {
  for (const RunWindow window : kWindows) {
    for (const int header : {254, 236, 237, 235}) {
      ControlledDesk d(window);
      ShowLine(d.desk.grid(), 40);
      d.Forget();
      // The window is still there while the hub takes the command in.
      d.loop.on_wait = [&] {
        d.port.Receive(header == 235 ? Bytes({235, 1, 2, 8}) : LineMessage(header, 40));
        d.port.Receive(LineMessage(header, 41));
      };
      StopRun(d.desk, window);
      EXPECT_TRUE(d.view.rows.empty()) << header;
      EXPECT_TRUE(d.view.scrolls.empty()) << header;
      EXPECT_EQ(d.view.counters, std::vector<std::optional<int>>{std::nullopt}) << header;
      EXPECT_EQ(d.source.shown.rows[40].state, RowState::Executing) << header;
      EXPECT_EQ(d.source.shown.rows[41].state, RowState::Normal) << header;
    }
  }
}

TEST(Stop, AHubThatIsSwitchedOnAfterItIsHeardAgain) {
  ControlledDesk d(RunWindow::ExecStatus);
  StopRun(d.desk, RunWindow::ExecStatus);
  d.port.Receive(Bytes({255, 38, 8, 0}));
  d.Forget();
  d.port.Receive(LineMessage(254, 3));
  EXPECT_EQ(d.view.scrolls, std::vector<int>{3});
  EXPECT_EQ(d.port.AllSent(), "I");
}

TEST(Stop, NotOneMoreByteGoesOutDuringItsWaitEither) {
  for (const RunWindow window : kWindows) {
    WaitingDesk d(window);
    d.watched.on_wait = [&] { TryEverything(d); };
    StopRun(d.watched_desk, window);
    EXPECT_EQ(d.port.sent, Strings{"S"});
  }
}

TEST(Stop, DuringTheWaitOfAPauseEndsIt) {
  for (const RunWindow window : kWindows) {
    WaitingDesk d(window);
    d.watched.on_wait = [&] { StopRun(d.desk, window); };
    ClickPause(d.watched_desk);
    TryEverything(d);
    EXPECT_EQ(d.port.sent, (Strings{"P", "S"}));
  }
}

TEST(Stop, ClosingTheStatusWindowByItsFrameSilencesTheLineToo) {
  ControlledDesk d(RunWindow::ExecStatus);
  CloseRun(d.desk, RunWindow::ExecStatus);
  d.run.Hide();
  TryEverything(d);
  EXPECT_EQ(d.port.sent, Strings{"S"});
}

TEST(Stop, TheNextRunIsOneLikeTheFirst) {
  for (const RunWindow window : kWindows) {
    ControlledDesk d(window);
    ClickPause(d.desk);
    ClickSingleStep(d.desk);
    if (window == RunWindow::fakeMMI) d.port.Receive("old text\x1bY");
    StopRun(d.desk, window);
    d.Forget();
    d.run.active = window;
    StartRun(d.desk, window);
    EXPECT_EQ(d.port.AllSent(), window == RunWindow::fakeMMI ? "M" : "X");
    EXPECT_TRUE(d.Panel().Running);
    ExpectPictures(d.Panel(), Picture::PlayGreen, Picture::PauseGray, Picture::StepGray);
    for (const std::string& line : d.source.display.textline) EXPECT_EQ(line, "");
    d.Forget();
    d.port.Receive(LineMessage(254, 3));
    ClickPause(d.desk);
    ClickSingleStep(d.desk);
    d.port.Receive(kStepDone);
    ClickReset(d.desk);
    ClickPlay(d.desk);
    EXPECT_EQ(d.port.AllSent(), "IPT0r");
    if (window == RunWindow::fakeMMI) {
      d.Forget();
      PressKey(d.desk, MmiKey::enter);
      d.port.Receive("new");
      EXPECT_EQ(d.port.AllSent(), "\r");
      EXPECT_EQ(d.source.display.textline[0], "new");
    }
  }
}

TEST(Keypad, AHaltAFaultOrAGreetingSilencesIt) {
  for (const std::string& end :
       {Bytes({252, 0, 0, 0}), Bytes({251, 0, 0, 0}), Bytes({239, 0, 0, 0}), Bytes({238, 0, 0, 0}),
        Bytes({212, 0, 0, 0}), Bytes({211, 0, 0, 0}), Bytes({255, 38, 8, 0})}) {
    ControlledDesk d(RunWindow::fakeMMI);
    d.boxes.on_box = [&](const ShownBox& box) {
      if (box.buttons == Buttons::YesNo) d.boxes.setNextAnswer(Answer::No);
    };
    d.port.Receive(end);
    d.Forget();
    for (const KeyRow& row : kKeys) PressKey(d.desk, row.key);
    EXPECT_TRUE(d.port.sent.empty()) << static_cast<int>(static_cast<unsigned char>(end[0]));
  }
}

}  // namespace
}  // namespace tavlo::testing
