// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_windows.h"

#include <QLabel>
#include <QMessageBox>

#include "qt/gui/gui_services.h"
#include "session/grid.h"
#include "windows/run_form.h"
#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

/// Both windows, what they are called and what starts the hub.
struct WindowCase {
  RunWindow window;
  const char* name;
  const char* caption;
  const char* start;
  const char* update;
};
constexpr std::array<WindowCase, 2> kWindows = {{
    {RunWindow::ExecStatus, "ExecStatus", "Execute", "X", "Status updated at start of each line"},
    {RunWindow::fakeMMI, "fakeMMI", "MMI emulator", "M", "Status updated at start of each instruction"},
}};

TEST(RunWindows, StartTheRunOnceAndStopItByTheButton) {
  for (const WindowCase& c : kWindows) {
    RunSession session;
    bool was_up = false;
    session.WhileRunning(c.window, [&] {
      was_up = session.Form(c.name).isVisible();
      EXPECT_EQ(session.Handlers().run.Active(), c.window);
      EXPECT_EQ(session.Form(c.name).windowTitle(), QLatin1String(c.caption));
      EXPECT_EQ(session.Find<QLabel>(c.name, "lblUpdate").text(), QLatin1String(c.update));
      EXPECT_EQ(session.fakes.port.AllSent(), c.start);
      session.Click(c.name, "btnStop");
    });
    EXPECT_TRUE(was_up);
    EXPECT_EQ(session.fakes.port.AllSent(), std::string(c.start) + "S");
    EXPECT_EQ(session.fakes.loop.waits, std::vector<double>{0.05});
    EXPECT_FALSE(session.Form(c.name).isVisible());
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::None);
  }
}

TEST(RunWindows, EscapeStopsInBothAndNothingGoesOutAfterIt) {
  for (const WindowCase& c : kWindows) {
    RunSession session;
    session.WhileRunning(c.window, [&] {
      ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &session.Form(c.name); }));
      QTest::keyClick(&session.Form(c.name), Qt::Key_Escape);
      for (const char* button : {"btnStop", "Play", "Pause", "SingleStep", "btnReset"}) {
        session.Click(c.name, button);
      }
      QTest::keyClick(&session.Form(c.name), Qt::Key_Escape);
      QTest::keyClick(&session.Form(c.name), Qt::Key_7);
      session.fakes.port.Receive(LineMessage(254, 3));
      session.fakes.port.Receive(LineMessage(236, 3));
    });
    EXPECT_EQ(session.fakes.port.AllSent(), std::string(c.start) + "S");
  }
}

TEST(RunWindows, EscapeStopsFromTheMainWindowToo) {
  for (const WindowCase& c : kWindows) {
    for (const char* focus : {"ProgWindow", "LongForm"}) {
      RunSession session;
      session.WhileRunning(c.window, [&] {
        session.Main().activateWindow();
        QWidget& there = *session.Pane().window();
        QTest::keyClick(std::string(focus) == "LongForm" ? &there : &session.Pane(), Qt::Key_Escape);
      });
      EXPECT_EQ(session.fakes.port.AllSent(), std::string(c.start) + "S") << focus;
    }
  }
}

/// A session whose boxes are real ones.
struct BoxedSession : RunSession {
  BoxedSession() {
    fakes.boxes.on_box = [this](const ShownBox& box) { real.MsgBox(box); };
  }
  /// Lets the hub say something that needs a box while the machine moves on, and does this while it stands.
  void WithABox(const std::function<void(QMessageBox&)>& meanwhile) {
    QTimer::singleShot(0, &Main(), [meanwhile] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      meanwhile(*box);
    });
    fakes.port.Receive({static_cast<char>(240), 2, 0, 0});
  }
  GuiMessageBoxes real;
};

TEST(RunWindows, EscapeInABoxOverAMachineThatMovesStopsItAndLeavesTheMessage) {
  for (const WindowCase& c : kWindows) {
    BoxedSession session;
    session.WhileRunning(c.window, [&] {
      EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &session.Form(c.name); }));
      session.WithABox([&](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_EQ(session.fakes.port.AllSent(), std::string(c.start) + "S") << "in its first moments too";
        EXPECT_TRUE(box.isVisible());
        EXPECT_TRUE(box.isEnabled());
        QTest::qWait(850);
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_FALSE(box.isVisible()) << "the next one answers it";
      });
    });
    EXPECT_EQ(session.fakes.port.AllSent(), std::string(c.start) + "S");
    EXPECT_EQ(session.fakes.boxes.shown.size(), 1U);
    EXPECT_TRUE(session.fakes.boxes.shown[0].by_itself);
  }
}

TEST(RunWindows, AreActiveAgainAfterABoxWhoeverHadTheFocusInFrontOfIt) {
  for (const WindowCase& c : kWindows) {
    BoxedSession session;
    session.WhileRunning(c.window, [&] {
      QApplication::setDoubleClickInterval(0);
      session.Main().activateWindow();
      EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &session.Main(); }));
      session.WithABox([](QMessageBox& box) { box.button(QMessageBox::Ok)->click(); });
      EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &session.Form(c.name); }));
      session.Click(c.name, "btnStop");
    });
  }
}

TEST(RunWindows, AreActiveAgainAfterTheSecondClickOnExecuteAndNotAfterALaterOne) {
  const int usual = QApplication::doubleClickInterval();
  for (const bool second_click : {true, false}) {
    RunSession session;
    session.WhileRunning(RunWindow::ExecStatus, [&] {
      QWidget& form = session.Form("ExecStatus");
      EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &form; }));
      QApplication::setDoubleClickInterval(second_click ? 60000 : 0);
      session.Main().activateWindow();
      EXPECT_TRUE(QTest::qWaitFor([&] {
        session.Settle();
        return QApplication::activeWindow() == (second_click ? &form : &session.Main());
      }));
      session.Click("ExecStatus", "btnStop");
    });
  }
  QApplication::setDoubleClickInterval(usual);
}

TEST(RunWindows, APressOfStopWhileItWaitsSendsNothingMore) {
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    session.fakes.loop.on_wait = [&] {
      session.Click("ExecStatus", "btnStop");
      session.Click("ExecStatus", "btnReset");
      session.Form("ExecStatus").close();
    };
    session.Click("ExecStatus", "btnStop");
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "XS");
}

TEST(RunWindows, TheControlsPauseStepResumeAndReset) {
  for (const WindowCase& c : kWindows) {
    RunSession session;
    session.WhileRunning(c.window, [&] {
      session.Click(c.name, "Play");
      session.Click(c.name, "SingleStep");
      session.Click(c.name, "Pause");
      EXPECT_EQ(session.Find<QLabel>(c.name, "lblUpdate").text(), "Status updated about 10 times/second");
      EXPECT_EQ(session.Find<QLabel>(c.name, "lblState").text(), "pausing");
      session.fakes.port.Receive({static_cast<char>(235), 1, 0, 11});
      EXPECT_EQ(session.Find<QLabel>(c.name, "lblState").text(), "paused");
      EXPECT_EQ(session.Find<QToolButton>(c.name, "Pause").accessibleDescription(), "the program is paused");
      session.Click(c.name, "Pause");
      session.Click(c.name, "SingleStep");
      session.Click(c.name, "SingleStep");
      session.fakes.port.Receive({static_cast<char>(253), 0, 0, 0});
      session.Click(c.name, "SingleStep");
      session.Click(c.name, "btnReset");
      session.Click(c.name, "Play");
      EXPECT_EQ(session.Find<QToolButton>(c.name, "Play").accessibleDescription(), "the program runs");
      session.Click(c.name, "btnStop");
    });
    EXPECT_EQ(session.fakes.port.AllSent(), std::string(c.start) + "PTT0rS");
  }
}

TEST(RunWindows, ComeUpWhereTheMainWindowBeginsAndThenWhereTheOperatorLeftThem) {
  for (const WindowCase& c : kWindows) {
    RunSession session;
    session.Main().move(40, 30);
    const QPoint corner = session.Main().frameGeometry().topLeft();
    session.WhileRunning(c.window, [&] {
      EXPECT_EQ(session.Form(c.name).pos(),
                corner + (c.window == RunWindow::fakeMMI ? QPoint(4, 70) : QPoint()));
      session.Form(c.name).move(90, 60);
      session.Click(c.name, "btnStop");
    });
    session.WhileRunning(c.window, [&] {
      EXPECT_EQ(session.Form(c.name).pos(), QPoint(90, 60));
      session.Click(c.name, "btnStop");
    });
  }
}

TEST(RunWindows, StandBesideTheMainWindowWhereTheScreenHasRoom) {
  struct Case {
    const char* what;
    QRect main;
    QPoint place;
  };
  const QRect room(0, 20, 1920, 1060);
  const QSize size(500, 400);
  for (const Case& c : {
           Case{"room at the right", {100, 50, 1000, 720}, {1100, 50}},
           Case{"just enough", {420, 50, 1000, 720}, {1420, 50}},
           Case{"room at the left alone", {900, 50, 1000, 720}, {400, 50}},
           Case{"no room at either side", {460, 50, 1000, 720}, {464, 120}},
           Case{"over the lower edge", {100, 900, 1000, 720}, {1100, 680}},
           Case{"above the upper edge", {100, -50, 1000, 720}, {1100, 20}},
       }) {
    EXPECT_EQ(PlaceBeside(c.main, room, size, c.main.topLeft() + QPoint(4, 70)), c.place) << c.what;
  }
  EXPECT_EQ(PlaceBeside({0, 0, 640, 400}, {0, 0, 300, 200}, size, {4, 70}), QPoint(0, 0))
      << "the upper left corner of what does not fit can be seen";
}

TEST(RunWindows, FollowTheMainWindowUntilTheOperatorMovesThem) {
  RunSession session;
  for (const QPoint corner : {QPoint(10, 10), QPoint(150, 40)}) {
    session.Main().move(corner);
    session.WhileRunning(RunWindow::ExecStatus, [&] {
      EXPECT_EQ(session.Form("ExecStatus").pos(), session.Main().frameGeometry().topLeft());
      session.Click("ExecStatus", "btnStop");
    });
  }
}

TEST(RunWindows, ASecondRunStartsAfreshInTheSameWindow) {
  RunSession session;
  for (int run = 0; run < 2; ++run) {
    session.WhileRunning(RunWindow::fakeMMI, [&] {
      session.Settle();
      EXPECT_EQ(session.Find<QLabel>("fakeMMI", "textline0").text(), "");
      EXPECT_EQ(session.Session().run.panel.Play, Picture::PlayGreen);
      session.fakes.port.Receive("old text");
      session.Settle();
      EXPECT_EQ(session.Find<QLabel>("fakeMMI", "textline0").text(), "old text");
      session.Click("fakeMMI", "Pause");
      session.Click("fakeMMI", "btnStop");
    });
  }
  EXPECT_EQ(session.fakes.port.AllSent(), "MPSMPS");
}

TEST(RunWindows, BothHaveOneTabOrderThatReachesEveryControl) {
  for (const WindowCase& c : kWindows) {
    RunSession session;
    session.WhileRunning(c.window, [&] {
      QStringList reached;
      // The terminal begins at its display, the status window at Stop.
      const bool terminal = c.window == RunWindow::fakeMMI;
      for (int press = 0; press < (terminal ? 6 : 5); ++press) {
        reached << session.Form(c.name).focusWidget()->objectName();
        QTest::keyClick(&session.Form(c.name), Qt::Key_Tab);
      }
      EXPECT_EQ(reached.join(' '), terminal ? "Display Play Pause SingleStep btnReset btnStop"
                                            : "btnStop Play Pause SingleStep btnReset");
      session.Click(c.name, "btnStop");
    });
  }
}

TEST(RunWindows, ClosingTheStatusWindowByItsFrameStopsTheHubAndTheTerminalsDoesNot) {
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] { session.Form("ExecStatus").close(); });
  EXPECT_EQ(session.fakes.port.AllSent(), "XS");
  session.fakes.port.sent.clear();
  session.WhileRunning(RunWindow::fakeMMI, [&] { session.Form("fakeMMI").close(); });
  EXPECT_EQ(session.fakes.port.AllSent(), "M");
}

TEST(RunWindows, OnlyTheGridCanBeUsedMeanwhileAndTheWindowStays) {
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    for (const char* name : {"Load", "Download", "execbutton", "Quit", "OptCom1", "ModelList"}) {
      EXPECT_FALSE(session.Find<QWidget>(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(session.Pane().isEnabled());
    QTest::keyClick(&session.Pane(), Qt::Key_End);
    EXPECT_EQ(session.Pane().CurrentRow(), 199);
    EXPECT_FALSE(session.Main().close());
    session.Click("ExecStatus", "btnStop");
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "XIS");
  EXPECT_TRUE(session.Main().isVisible());
  EXPECT_TRUE(session.Find<QWidget>("Load")->isEnabled());
  EXPECT_TRUE(session.Find<QWidget>("PrintButton")->isEnabled());
}

TEST(RunWindows, LosingTheFocusClearsTheRowsAndGettingItBackStartsNothing) {
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    ShowLine(session.Handlers().grid(), 4);
    QEvent left(QEvent::WindowDeactivate);
    QApplication::sendEvent(&session.Form("ExecStatus"), &left);
    EXPECT_EQ(session.Session().shown.rows[4].state, RowState::Normal);
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::ExecStatus);
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(&session.Form("ExecStatus"), &back);
    ShowLine(session.Handlers().grid(), 5);
    session.Click("ExecStatus", "btnStop");
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "XS");
  EXPECT_EQ(session.Session().shown.rows[5].state, RowState::Normal);
}

TEST(RunWindows, AHaltTakesTheWindowAwayBeforeItAsks) {
  RunSession session;
  session.fakes.boxes.setNextAnswer(Answer::No);
  bool asked = false;
  session.fakes.boxes.on_box = [&](const ShownBox& box) {
    asked = true;
    EXPECT_EQ(box.title, "STOP");
    EXPECT_FALSE(session.Form("ExecStatus").isVisible());
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::None);
  };
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    session.fakes.port.Receive({static_cast<char>(251), 0, 0, 0});
  });
  EXPECT_TRUE(asked);
  EXPECT_TRUE(session.Find<QWidget>("Load")->isEnabled());
}

TEST(RunWindows, MessagesInsideABoxArePaintedWhileItStands) {
  RunSession session;
  session.fakes.boxes.on_box = [&](const ShownBox&) {
    session.fakes.boxes.on_box = nullptr;
    session.fakes.port.Receive(LineMessage(254, 7));
    EXPECT_EQ(session.Session().shown.rows[7].state, RowState::Executing);
  };
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    session.fakes.port.Receive({static_cast<char>(240), 2, 0, 0});
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::ExecStatus);
    session.Click("ExecStatus", "btnStop");
  });
  ASSERT_EQ(session.fakes.boxes.shown.size(), 1u);
  EXPECT_EQ(session.fakes.boxes.shown[0].text, "Drive 3 is not responding.");
  EXPECT_EQ(session.fakes.port.AllSent(), "XIS");
}

TEST(RunWindows, AGreetingInMidRunClosesTheWindow) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.fakes.port.Receive({static_cast<char>(255), 38, 8, 0});
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "M*0");
  EXPECT_FALSE(session.Session().display.MMIActive);
}

}  // namespace
}  // namespace tavlo::testing
