// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_bar.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "desk/grid.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

RunBar& Bar(WindowSession& session) {
  return *session.Find<RunBar>("RunBar");
}

/// Runs a run window and does this once it is up.
void WhileRunning(WindowSession& session, RunWindow window, const std::function<void()>& meanwhile) {
  QTimer::singleShot(0, &session.Main(), meanwhile);
  session.Handlers().run.ShowModal(window);
}

void ClickStop(WindowSession& session) {
  QTest::mouseClick(Bar(session).findChild<QPushButton*>(QStringLiteral("btnStop")), Qt::LeftButton);
}

TEST(RunBar, StartsTheRunOnceAndStopsItByTheButton) {
  RunningSession session;
  bool was_up = false;
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    was_up = Bar(session).isVisible();
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::ExecStatus);
    EXPECT_EQ(Bar(session).windowTitle(), QStringLiteral("Execute"));
    EXPECT_EQ(session.fakes.port.AllSent(), "X");
    ClickStop(session);
  });
  EXPECT_TRUE(was_up);
  EXPECT_EQ(session.fakes.port.AllSent(), "XS");
  EXPECT_EQ(session.fakes.loop.waits, std::vector<double>{0.05});
  EXPECT_FALSE(Bar(session).isVisible());
  EXPECT_EQ(session.Handlers().run.Active(), RunWindow::None);
}

TEST(RunBar, StopHasAKeyAndASecondClickSendsNothing) {
  RunningSession session;
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &Bar(session); }));
    PressMnemonic(&Bar(session), Qt::Key_S);
    EXPECT_FALSE(Bar(session).isVisible());
    ClickStop(session);
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "XS");
}

TEST(RunBar, TheTerminalsTextStandsInItsLines) {
  RunningSession session;
  QString line;
  WhileRunning(session, RunWindow::fakeMMI, [&] {
    EXPECT_EQ(Bar(session).windowTitle(), QStringLiteral("MMI emulator"));
    session.fakes.port.Receive("Length?");
    auto* label = Bar(session).findChild<QLabel*>(QStringLiteral("textline0"));
    line = label->text();
    EXPECT_TRUE(label->isVisible());
    ClickStop(session);
  });
  EXPECT_EQ(line, QStringLiteral("Length?"));
  EXPECT_EQ(session.fakes.port.AllSent(), "MS");
  EXPECT_FALSE(session.Session().MMIActive);
}

TEST(RunBar, TheStatusWindowShowsNoTerminal) {
  RunningSession session;
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    EXPECT_FALSE(Bar(session).findChild<QLabel*>(QStringLiteral("textline0"))->isVisible());
    ClickStop(session);
  });
}

TEST(RunBar, ClosingTheStatusWindowByItsFrameStopsTheHubAndTheTerminalsDoesNot) {
  RunningSession session;
  WhileRunning(session, RunWindow::ExecStatus, [&] { Bar(session).close(); });
  EXPECT_EQ(session.fakes.port.AllSent(), "XS");
  session.fakes.port.sent.clear();
  WhileRunning(session, RunWindow::fakeMMI, [&] { Bar(session).close(); });
  EXPECT_EQ(session.fakes.port.AllSent(), "M");
}

TEST(RunBar, OnlyTheGridCanBeUsedMeanwhileAndTheWindowStays) {
  RunningSession session;
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    for (const char* name : {"Load", "Download", "execbutton", "Quit", "OptCom1", "ModelList"}) {
      EXPECT_FALSE(session.Find<QWidget>(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(session.Pane().isEnabled());
    QTest::keyClick(&session.Pane(), Qt::Key_End);
    EXPECT_EQ(session.Pane().CurrentRow(), 199);
    EXPECT_FALSE(session.Main().close());
    ClickStop(session);
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "XIS");
  EXPECT_TRUE(session.Main().isVisible());
  EXPECT_TRUE(session.Find<QWidget>("Load")->isEnabled());
  EXPECT_FALSE(session.Find<QWidget>("Print")->isEnabled());
}

TEST(RunBar, LosingTheFocusClearsTheRowsAndGettingItBackStartsNothing) {
  RunningSession session;
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    ShowLine(session.Handlers(), 4);
    QEvent left(QEvent::WindowDeactivate);
    QApplication::sendEvent(&Bar(session), &left);
    EXPECT_EQ(session.Session().rows[4].state, RowState::Normal);
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::ExecStatus);
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(&Bar(session), &back);
    ShowLine(session.Handlers(), 5);
    ClickStop(session);
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "XS");
  EXPECT_EQ(session.Session().rows[5].state, RowState::Normal);
}

TEST(RunBar, AHaltTakesTheWindowAwayBeforeItAsks) {
  RunningSession session;
  session.fakes.boxes.setNextAnswer(Answer::No);
  bool asked = false;
  session.fakes.boxes.on_box = [&](const ShownBox& box) {
    asked = true;
    EXPECT_EQ(box.title, "STOP");
    EXPECT_FALSE(Bar(session).isVisible());
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::None);
  };
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    session.fakes.port.Receive({static_cast<char>(251), 0, 0, 0});
  });
  EXPECT_TRUE(asked);
  EXPECT_TRUE(session.Find<QWidget>("Load")->isEnabled());
}

TEST(RunBar, MessagesInsideABoxArePaintedWhileItStands) {
  RunningSession session;
  session.fakes.boxes.on_box = [&](const ShownBox&) {
    session.fakes.boxes.on_box = nullptr;
    session.fakes.port.Receive(LineMessage(254, 7));
    EXPECT_EQ(session.Session().rows[7].state, RowState::Executing);
  };
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    session.fakes.port.Receive({static_cast<char>(240), 2, 0, 0});
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::ExecStatus);
    ClickStop(session);
  });
  ASSERT_EQ(session.fakes.boxes.shown.size(), 1u);
  EXPECT_EQ(session.fakes.boxes.shown[0].text, "Drive 3 is not responding.");
  EXPECT_EQ(session.fakes.port.AllSent(), "XIS");
}

TEST(RunBar, AFaultNamesWhatItsCodeSaysAndEndsTheRun) {
  RunningSession session;
  WhileRunning(session, RunWindow::ExecStatus, [&] {
    session.fakes.port.Receive({static_cast<char>(211), 1, 0, 0x0a});
  });
  ASSERT_EQ(session.fakes.boxes.shown.size(), 1u);
  const ShownBox& box = session.fakes.boxes.shown[0];
  EXPECT_EQ(box.title, "Drive Error");
  EXPECT_EQ(box.icon, Icon::Stop);
  EXPECT_EQ(box.text,
            "We are experiencing a servo fault on axis 2. The program has been halted.\n\nCCW Limit\n"
            "drive overtemp\n\nYou must cycle power to reset this error.");
}

TEST(RunBar, AFaultDuringAFaultIsShownAfterItAndNotBesideIt) {
  RunningSession session;
  int standing = 0;
  session.fakes.boxes.on_box = [&](const ShownBox&) {
    EXPECT_EQ(++standing, 1);
    if (session.fakes.boxes.shown.size() == 1) session.fakes.port.Receive({static_cast<char>(211), 2, 0, 1});
    --standing;
  };
  session.fakes.port.Receive({static_cast<char>(211), 1, 0, 1});
  ASSERT_EQ(session.fakes.boxes.shown.size(), 2u);
  EXPECT_NE(session.fakes.boxes.shown[1].text.find("axis 3"), std::string::npos);
}

TEST(RunBar, AGreetingInMidRunClosesTheWindow) {
  RunningSession session;
  WhileRunning(session, RunWindow::fakeMMI, [&] {
    session.fakes.port.Receive({static_cast<char>(255), 38, 8, 0});
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "M*0");
  EXPECT_FALSE(session.Session().MMIActive);
}

}  // namespace
}  // namespace tavlo::testing
