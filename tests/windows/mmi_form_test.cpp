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

struct KeyCase {
  const char* button;
  Qt::Key keyboard;
  char sent;
};
const std::vector<KeyCase> kKeyCases = {
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
    for (const KeyCase& c : kKeyCases) {
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
    for (const KeyCase& c : kKeyCases) {
      session.fakes.port.sent.clear();
      QKeyEvent held(QEvent::KeyPress, c.keyboard, Qt::NoModifier, QString(), true);
      QApplication::sendEvent(&session.Form("fakeMMI"), &held);
      const bool repeats = std::string("ABCD\b").find(c.sent) != std::string::npos;
      EXPECT_EQ(session.fakes.port.AllSent(), repeats ? std::string(1, c.sent) : "") << c.button;
    }
    session.Click("fakeMMI", "btnStop");
  });
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

TEST(MmiForm, AFloodOfTextIsKeptAndNotPaintedWithoutEnd) {
  RunSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.fakes.port.Receive("\x1bY# " + std::string(100000, 'x'));
    EXPECT_EQ(Line(session, 3).size(), 1000);
    EXPECT_EQ(session.Session().textline[3].size(), 100000u);
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
