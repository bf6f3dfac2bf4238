// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/mmi_form.h"

#include <QLabel>

#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

QString Line(RunSession& session, int row) {
  session.Settle();
  const std::string name = "textline" + std::to_string(row);
  return session.Find<QLabel>("fakeMMI", name.c_str()).text();
}

struct KeypadCase {
  const char* button;
  Qt::Key keyboard;
  char sent;
};
const std::vector<KeypadCase> kKeyCases = {
    {"number0", Qt::Key_0, '0'},        {"number1", Qt::Key_1, '1'},      {"number2", Qt::Key_2, '2'},
    {"number3", Qt::Key_3, '3'},        {"number4", Qt::Key_4, '4'},      {"number5", Qt::Key_5, '5'},
    {"number6", Qt::Key_6, '6'},        {"number7", Qt::Key_7, '7'},      {"number8", Qt::Key_8, '8'},
    {"number9", Qt::Key_9, '9'},        {"dot", Qt::Key_Period, '.'},     {"yes", Qt::Key_Y, '+'},
    {"yes", Qt::Key_Plus, '+'},         {"no", Qt::Key_N, '-'},           {"no", Qt::Key_Minus, '-'},
    {"enter", Qt::Key_Return, '\r'},    {"enter", Qt::Key_Enter, '\r'},   {"bksp", Qt::Key_Backspace, '\b'},
    {"arrowup", Qt::Key_Up, 'A'},       {"arrowdown", Qt::Key_Down, 'B'}, {"arrowleft", Qt::Key_Left, 'C'},
    {"arrowright", Qt::Key_Right, 'D'},
};

TEST(MmiForm, EachKeySendsItsByteFromTheKeypadAndFromTheKeyboard) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    for (const KeypadCase& c : kKeyCases) {
      session.fakes.port.sent.clear();
      session.Click("fakeMMI", c.button);
      EXPECT_EQ(session.fakes.port.AllSent(), std::string(1, c.sent)) << c.button;
      session.fakes.port.sent.clear();
      QTest::keyClick(&session.Form("fakeMMI"), c.keyboard);
      EXPECT_EQ(session.fakes.port.AllSent(), std::string(1, c.sent)) << c.button;
    }
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, TheKeyboardIsTheKeypadWhateverControlHasTheFocus) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    for (const char* name : {"Play", "Pause", "SingleStep", "btnReset", "btnStop"}) {
      auto& button = session.Find<QToolButton>("fakeMMI", name);
      button.setFocus();
      session.fakes.port.sent.clear();
      for (const Qt::Key key : {Qt::Key_5, Qt::Key_Left, Qt::Key_Return}) QTest::keyClick(&button, key);
      EXPECT_EQ(session.fakes.port.AllSent(), "5C\r") << name;
      EXPECT_EQ(session.Form("fakeMMI").focusWidget(), &button);
    }
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, KeysWithControlOrAltAreNotTheKeypads) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.fakes.port.sent.clear();
    QTest::keyClick(&session.Form("fakeMMI"), Qt::Key_1, Qt::ControlModifier);
    QTest::keyClick(&session.Form("fakeMMI"), Qt::Key_X);
    EXPECT_EQ(session.fakes.port.AllSent(), "");
    QTest::keyClick(&session.Form("fakeMMI"), Qt::Key_1, Qt::KeypadModifier);
    EXPECT_EQ(session.fakes.port.AllSent(), "1");
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, AHeldKeyRepeatsOnlyWhereItJogsOrRubsOut) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    for (const KeypadCase& c : kKeyCases) {
      session.fakes.port.sent.clear();
      QKeyEvent held(QEvent::KeyPress, c.keyboard, Qt::NoModifier, QString(), true);
      QApplication::sendEvent(&session.Form("fakeMMI"), &held);
      const bool repeats = std::string("ABCD\b").find(c.sent) != std::string::npos;
      EXPECT_EQ(session.fakes.port.AllSent(), repeats ? std::string(1, c.sent) : "") << c.button;
    }
    session.Click("fakeMMI", "btnStop");
  });
}

/// A press or a release as it comes from X.
void SendKeyAt(QWidget* focus, QEvent::Type type, Qt::Key key, quint64 milliseconds) {
  QKeyEvent event(type, key, Qt::NoModifier);
  event.setTimestamp(milliseconds);
  QApplication::sendEvent(focus, &event);
}

TEST(MmiForm, AHeldKeyIsKnownWhereTheWindowSystemDoesNotMarkIt) {
  struct Case {
    const char* what;
    Qt::Key key;
    quint64 released;
    quint64 pressed;
    const char* sent;
  };
  for (const Case& c : {
           Case{"a repeat", Qt::Key_Return, 5000, 5000, "\r"},
           Case{"a repeat over a tick of the clock", Qt::Key_7, 5000, 5001, "7"},
           Case{"a second press", Qt::Key_Return, 5000, 5030, "\r\r"},
           Case{"an arrow jogs on", Qt::Key_Up, 5000, 5000, "AA"},
           Case{"events without a time", Qt::Key_7, 0, 0, "77"},
       }) {
    RunSession session;
    session.WhileRunning(RunWindow::fakeMMI, [&] {
      session.fakes.port.sent.clear();
      QWidget* focus = session.Form("fakeMMI").focusWidget();
      SendKeyAt(focus, QEvent::KeyPress, c.key, 4000);
      SendKeyAt(focus, QEvent::KeyRelease, c.key, c.released);
      SendKeyAt(focus, QEvent::KeyPress, c.key, c.pressed);
      EXPECT_EQ(session.fakes.port.AllSent(), c.sent) << c.what;
      session.Click("fakeMMI", "btnStop");
    });
  }
}

TEST(MmiForm, ShowsWhatTheHubWritesAndNothingOfItsOwn) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.fakes.port.Receive(
        "\x1b"
        "ELength?\n12");
    session.Click("fakeMMI", "number3");
    EXPECT_EQ(Line(session, 0), "Length?");
    EXPECT_EQ(Line(session, 1), "12");
    session.fakes.port.Receive("\x1bY\" Last");
    EXPECT_EQ(Line(session, 2), "Last");
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, TextThatOverrunsTheLastLineIsNotCut) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    const std::string text(300, 'x');
    const int width = session.Form("fakeMMI").width();
    session.fakes.port.Receive("\x1bY# " + text);
    EXPECT_EQ(Line(session, 3), QString::fromStdString(text));
    EXPECT_EQ(session.Form("fakeMMI").width(), width);
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, LineThreeShowsItsNewestTextAndTheOthersStayWhereTheyAre) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    const auto painted = [&](int row) {
      session.Settle();
      const std::string name = "textline" + std::to_string(row);
      return session.Find<QLabel>("fakeMMI", name.c_str()).grab().toImage();
    };
    session.fakes.port.Receive("Prompt\x1bY# " + std::string(20, 'x'));
    const QImage prompt = painted(0);
    for (int length = 20; length < 60; ++length) {
      const QImage before = painted(3);
      session.fakes.port.Receive("W");
      EXPECT_NE(painted(3), before) << "a character more can be seen at column " << length;
      session.fakes.port.Receive("\b");
      session.fakes.port.Receive("x");
    }
    EXPECT_EQ(painted(0), prompt);
    EXPECT_EQ(session.Find<QLabel>("fakeMMI", "textline0").visibleRegion().boundingRect(),
              session.Find<QLabel>("fakeMMI", "textline0").rect());
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, OfAFloodOfTextTheNewestIsShownAndAllOfItKept) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.fakes.port.Receive("\x1bY# " + std::string(100000, 'x') + "newest");
    EXPECT_EQ(Line(session, 3).size(), 1000);
    EXPECT_TRUE(Line(session, 3).endsWith(QStringLiteral("xnewest")));
    EXPECT_EQ(session.Session().display.textline[3].size(), 100006u);
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, ABlankThatIsTypedReachesNoControl) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.fakes.port.sent.clear();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
      QTest::keyClick(session.Form("fakeMMI").focusWidget(), key);
    }
    EXPECT_EQ(session.fakes.port.AllSent(), "\r\r");
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::fakeMMI);
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(MmiForm, TheKeypadSaysWhatItsKeysAre) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    EXPECT_EQ(session.Find<QAbstractButton>("fakeMMI", "arrowup").accessibleName(), "up");
    EXPECT_EQ(session.Find<QAbstractButton>("fakeMMI", "yes").accessibleName(), "yes, plus");
    EXPECT_EQ(session.Find<QAbstractButton>("fakeMMI", "dot").accessibleName(), "point");
    session.Click("fakeMMI", "btnStop");
  });
}

}  // namespace
}  // namespace tavlo::testing
