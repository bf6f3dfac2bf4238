// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/find_bar.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "session/grid.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

/// Comments on lines 11, 51 and 151 speak of glue.
struct FindSession : RunningSession {
  FindSession() {
    for (const int line : {10, 50, 150}) Lines().Prog[line] = {.Type = CM, .Text = "Glue here"};
    ShowProgram(Handlers());
    QTest::keyClick(&Pane(), Qt::Key_F, Qt::ControlModifier);
    Settle();
  }
  void Type(const char* words) {
    QTest::keyClicks(Words(), QLatin1String(words));
    Settle();
  }
  QLineEdit* Words() { return Find<QLineEdit>("FindWords"); }
  QString State() { return Find<QLabel>("FindState")->text(); }
};

TEST(FindBar, FindsWhileTheWordsAreTyped) {
  FindSession session;
  EXPECT_TRUE(session.Words()->hasFocus());
  session.Type("gl");
  EXPECT_EQ(session.Pane().CurrentRow(), 10);
  session.Type("ue");
  EXPECT_EQ(session.Pane().CurrentRow(), 10) << "further letters do not go on";
  EXPECT_EQ(session.State(), QStringLiteral("Line 11"));
  session.Type("x");
  EXPECT_EQ(session.State(), QStringLiteral("Not found"));
  EXPECT_EQ(session.Words()->accessibleDescription(), QStringLiteral("Not found"));
}

TEST(FindBar, GoesOnByItsKeysAndSaysWhenItHasGoneRound) {
  FindSession session;
  session.Type("glue");
  struct Case {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    int row;
    const char* state;
  };
  const std::vector<Case> cases = {
      {Qt::Key_F3, Qt::NoModifier, 50, "Line 51"},
      {Qt::Key_Return, Qt::NoModifier, 150, "Line 151"},
      {Qt::Key_F3, Qt::NoModifier, 10, "Line 11, from the top again"},
      {Qt::Key_F3, Qt::ShiftModifier, 150, "Line 151, from the end again"},
      {Qt::Key_F3, Qt::ShiftModifier, 50, "Line 51"},
  };
  for (const Case& c : cases) {
    QTest::keyClick(session.Words(), c.key, c.modifiers);
    session.Settle();
    EXPECT_EQ(session.Pane().CurrentRow(), c.row);
    EXPECT_EQ(session.State(), QLatin1String(c.state));
  }
  session.Find<QPushButton>("FindNext")->click();
  EXPECT_EQ(session.Pane().CurrentRow(), 150);
  session.Find<QPushButton>("FindPrevious")->click();
  EXPECT_EQ(session.Pane().CurrentRow(), 50);
}

TEST(FindBar, EscapeClosesItAndTheWordsGoOnBeingFound) {
  FindSession session;
  session.Type("glue");
  QTest::keyClick(session.Words(), Qt::Key_Escape);
  session.Settle();
  EXPECT_FALSE(session.Find<QWidget>("FindBar")->isVisible());
  EXPECT_TRUE(session.Pane().hasFocus());
  QTest::keyClick(&session.Pane(), Qt::Key_F3);
  EXPECT_EQ(session.Pane().CurrentRow(), 50);
}

TEST(FindBar, GoingOnWithoutWordsAsksForThem) {
  RunningSession session;
  QTest::keyClick(&session.Pane(), Qt::Key_F3);
  EXPECT_TRUE(session.Find<QLineEdit>("FindWords")->hasFocus());
}

TEST(FindBar, LettersThatNoRowCanHoldAreNotFound) {
  FindSession session;
  session.Lines().Prog[3] = {.Type = CM, .Text = "What?"};
  ShowProgram(session.Handlers());
  session.Words()->setText(QString(QChar(0x20AC)));
  QTest::keyClick(session.Words(), Qt::Key_Return);
  EXPECT_EQ(session.State(), QStringLiteral("Not found"));
}

}  // namespace
}  // namespace tavlo::testing
