// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/vox_term.h"

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>

#include "support/whenever.h"
#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

struct TerminalSession : RunSession {
  TerminalSession() { Session().link.DriveVersion = "1.38"; }
  /// Opens the terminal by its key and does this while it stands.
  void InTerminal(const std::function<void()>& meanwhile) {
    const Whenever when_open = WhenInTerminal(meanwhile);
    QTest::keyClick(&Main(), Qt::Key_T, Qt::ControlModifier);
  }
  [[nodiscard]] QPlainTextEdit& Command() { return Find<QPlainTextEdit>("VOXterm", "CommandText"); }
  /// The log, once it has been painted.
  [[nodiscard]] QString History() {
    QTest::qWait(60);
    return Find<QPlainTextEdit>("VOXterm", "History").toPlainText();
  }
  void Leave(QEvent::Type type) {
    QEvent event(type);
    QApplication::sendEvent(&Form("VOXterm"), &event);
  }
  void Close() { Form("VOXterm").close(); }
};

TEST(VoxTerm, SendsTheCommandWithItsLineEndAndLogsItWithout) {
  TerminalSession session;
  bool opened = false;
  session.InTerminal([&] {
    opened = true;
    EXPECT_EQ(session.Form("VOXterm").windowTitle(), "VOX Router Terminal");
    EXPECT_EQ(session.fakes.port.AllSent(), "H");
    EXPECT_EQ(session.Form("VOXterm").focusWidget(), &session.Command());
    QTest::keyClicks(&session.Command(), "1RV");
    EXPECT_EQ(session.fakes.port.AllSent(), "H");
    QTest::keyClick(&session.Command(), Qt::Key_Return);
    EXPECT_EQ(session.fakes.port.AllSent(), "H1RV\r\n");
    EXPECT_EQ(session.Command().toPlainText(), "");
    session.fakes.port.Receive("200\r\x07");
    EXPECT_EQ(session.History(), "$1RV$\n200\n[007]");
    session.Close();
  });
  EXPECT_TRUE(opened);
  EXPECT_EQ(session.fakes.port.AllSent(), "H1RV\r\n0HM\r");
  EXPECT_FALSE(session.Session().VOXterm.TermActive);
}

TEST(VoxTerm, AnEnterThatWasPressedElsewhereSendsNothing) {
  TerminalSession session;
  session.InTerminal([&] {
    QTest::keyRelease(&session.Command(), Qt::Key_Return);
    QTest::keyClicks(&session.Command(), "abc");
    QTest::keyRelease(&session.Command(), Qt::Key_Enter);
    EXPECT_EQ(session.fakes.port.AllSent(), "H");
    session.Close();
  });
}

TEST(VoxTerm, EnterInTheMiddleOfACommandDoesNotTearIt) {
  TerminalSession session;
  session.InTerminal([&] {
    QTest::keyClicks(&session.Command(), "1RV");
    QTest::keyClick(&session.Command(), Qt::Key_Left);
    QTest::keyClick(&session.Command(), Qt::Key_Return);
    EXPECT_EQ(session.fakes.port.AllSent(), "H1RV\r\n");
    EXPECT_EQ(session.Command().toPlainText(), "");
    session.Close();
  });
}

TEST(VoxTerm, TheArrowsBringBackWhatWasSentAlsoInALaterOpening) {
  TerminalSession session;
  session.InTerminal([&] {
    for (const char* command : {"1VE5", "1FL"}) {
      QTest::keyClicks(&session.Command(), QLatin1String(command));
      QTest::keyClick(&session.Command(), Qt::Key_Return);
    }
    session.Close();
  });
  session.fakes.port.sent.clear();
  session.InTerminal([&] {
    QPlainTextEdit& command = session.Command();
    QTest::keyClicks(&command, "2");
    for (const char* shown : {"1FL", "1VE5", "1VE5"}) {
      QTest::keyClick(&command, Qt::Key_Up);
      EXPECT_EQ(command.toPlainText(), QLatin1String(shown));
    }
    for (const char* shown : {"1FL", "2", "2"}) {
      QTest::keyClick(&command, Qt::Key_Down);
      EXPECT_EQ(command.toPlainText(), QLatin1String(shown));
    }
    EXPECT_EQ(session.fakes.port.AllSent(), "H") << "nothing is sent before Enter";
    QTest::keyClick(&command, Qt::Key_Up);
    QTest::keyClick(&command, Qt::Key_Return);
    EXPECT_EQ(session.fakes.port.AllSent(), "H1FL\r\n");
    // In several lines the arrows move the caret as long as it can move.
    command.setPlainText(QStringLiteral("a\nb"));
    QTextCursor caret = command.textCursor();
    caret.movePosition(QTextCursor::End);
    command.setTextCursor(caret);
    QTest::keyClick(&command, Qt::Key_Up);
    EXPECT_EQ(command.toPlainText(), QStringLiteral("a\nb"));
    QTest::keyClick(&command, Qt::Key_Up);
    EXPECT_EQ(command.toPlainText(), QStringLiteral("1FL"));
    session.Close();
  });
}

TEST(VoxTerm, AnotherWindowEndsThePassthroughAndComingBackStartsIt) {
  TerminalSession session;
  session.InTerminal([&] {
    session.Leave(QEvent::WindowDeactivate);
    EXPECT_EQ(session.fakes.port.AllSent(), "H0HM\r");
    EXPECT_FALSE(session.Session().VOXterm.TermActive);
    session.Leave(QEvent::WindowDeactivate);
    session.Leave(QEvent::WindowActivate);
    session.Leave(QEvent::WindowActivate);
    EXPECT_EQ(session.fakes.port.AllSent(), "H0HM\rH");
    session.Close();
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "H0HM\rH0HM\r");
}

TEST(VoxTerm, OpensOnlyForAHubThatPassesThrough) {
  for (const char* version : {"?", "1.18", "1.05", "0.00"}) {
    TerminalSession session;
    session.Session().link.DriveVersion = version;
    QTest::keyClick(&session.Main(), Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(session.fakes.port.AllSent(), "") << version;
  }
  for (const char* version : {"1.19", "2.27"}) {
    TerminalSession session;
    session.Session().link.DriveVersion = version;
    session.InTerminal([&] { session.Close(); });
    EXPECT_EQ(session.fakes.port.AllSent(), "H0HM\r") << version;
  }
}

TEST(VoxTerm, DoesNotOpenWhileAProgramRunsOrIsSent) {
  TerminalSession session;
  session.Session().link.Busy = true;
  QTest::keyClick(&session.Main(), Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(session.fakes.port.AllSent(), "");
}

TEST(VoxTerm, EscapeClosesIt) {
  TerminalSession session;
  session.InTerminal([&] {
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &session.Form("VOXterm"); }));
    QTest::keyClick(&session.Form("VOXterm"), Qt::Key_Escape);
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "H0HM\r");
}

TEST(VoxTerm, HelpAndF1OpenTheReferenceOfTheCommands) {
  TerminalSession session;
  session.InTerminal([&] {
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &session.Form("VOXterm"); }));
    session.Form("VOXterm").findChild<QPushButton*>(QStringLiteral("Help"))->click();
    QTest::keyClick(&session.Form("VOXterm"), Qt::Key_F1);
    session.Close();
  });
  EXPECT_EQ(session.help.shown, std::vector<std::string>(2, "Host Command Reference.pdf"));
}

TEST(VoxTerm, EachOpeningBeginsEmpty) {
  TerminalSession session;
  for (int opening = 0; opening < 2; ++opening) {
    session.InTerminal([&] {
      EXPECT_EQ(session.History(), "");
      session.fakes.port.Receive("answer");
      EXPECT_EQ(session.History(), "answer");
      session.Close();
    });
  }
}

TEST(VoxTerm, ALogOf4001CharactersFallsTo2002) {
  TerminalSession session;
  session.InTerminal([&] {
    session.fakes.port.Receive(std::string(4000, 'a'));
    EXPECT_EQ(session.History().size(), 4000);
    session.fakes.port.Receive("b");
    EXPECT_EQ(session.History().size(), 2002);
    EXPECT_TRUE(session.History().endsWith("ab"));
    session.Close();
  });
}

TEST(VoxTerm, ACommandThatGrowsTooLongLosesItsHead) {
  TerminalSession session;
  session.InTerminal([&] {
    session.Command().setPlainText(QString(1999, 'a') + "b");
    EXPECT_EQ(session.Command().toPlainText().size(), 2000);
    QTest::keyClick(&session.Command(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(&session.Command(), "c");
    EXPECT_EQ(session.Command().toPlainText().size(), 1902);
    EXPECT_TRUE(session.Command().toPlainText().endsWith("abc"));
    session.Close();
  });
}

TEST(VoxTerm, TheFramesShowOneAmpersand) {
  TerminalSession session;
  session.InTerminal([&] {
    QStringList titles;
    for (const auto* frame : session.Form("VOXterm").findChildren<QGroupBox*>()) titles << frame->title();
    EXPECT_EQ(titles.join('|'), "Command|Previous Commands && Responses");
    session.Close();
  });
}

TEST(VoxTerm, MessagesOfTheHubAreShownAndNotObeyed) {
  TerminalSession session;
  session.InTerminal([&] {
    session.fakes.port.Receive(LineMessage(254, 3));
    EXPECT_EQ(session.History(), "[254][000][003][000]");
    session.fakes.port.Receive({static_cast<char>(255), 38, 8, 0});
    EXPECT_EQ(session.History(), "[254][000][003][000]{255-038-008}\n[000]");
    EXPECT_EQ(session.fakes.port.AllSent(), "H00");
    EXPECT_EQ(session.fakes.beeper.beeps, 1);
    session.Close();
  });
  EXPECT_EQ(session.Session().shown.rows[3].state, RowState::Normal);
}

}  // namespace
}  // namespace tavlo::testing
