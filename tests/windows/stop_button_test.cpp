// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/stop_button.h"

#include <QAccessible>
#include <QDialog>
#include <QMessageBox>
#include <QPlainTextEdit>

#include "link/execution.h"
#include "link/polled.h"
#include "qt/gui/gui_services.h"
#include "support/whenever.h"
#include "widgets/contrast.h"
#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

struct StopSession : RunSession {
  [[nodiscard]] QAbstractButton& Stop() { return *WindowSession::Find<QAbstractButton>("StopButton"); }
  [[nodiscard]] bool Lit() {
    return Stop().isEnabled() && Stop().accessibleDescription() == "the machine may be moving";
  }
  void Press() { QTest::mouseClick(&Stop(), Qt::LeftButton); }
  /// A run whose window the operator closes by its frame, which says nothing to the hub.
  void LeaveARun() {
    WhileRunning(RunWindow::fakeMMI, [this] { Form("fakeMMI").close(); });
    fakes.port.sent.clear();
    fakes.loop.waits.clear();
  }
  [[nodiscard]] std::string Sent() const { return fakes.port.AllSent(); }
};

TEST(StopButton, CanBePressedWheneverAPortIsOpenAndNoTransferIsUnderWay) {
  StopSession session;
  EXPECT_TRUE(session.Stop().isEnabled());
  EXPECT_FALSE(session.Lit());
  {
    const TransferUnderWay under_way(session.Handlers().link());
    EXPECT_FALSE(session.Stop().isEnabled());
    session.Press();
  }
  EXPECT_TRUE(session.Stop().isEnabled());
  session.fakes.port.is_open = false;
  session.fakes.port.OnLost();
  EXPECT_FALSE(session.Stop().isEnabled());
  session.Press();
  EXPECT_EQ(session.Sent(), "");
  QTest::mouseClick(session.WindowSession::Find<QAbstractButton>("OptCom2"), Qt::LeftButton);
  EXPECT_TRUE(session.Stop().isEnabled()) << "the port that is chosen next has it again";
  session.Press();
  EXPECT_EQ(session.Sent(), "S");
}

TEST(StopButton, IsOffWhereNoPortCouldBeOpened) {
  WindowSession session;
  for (int port = 1; port <= 8; ++port) session.fakes.port.open_errors[port] = "no such device";
  session.Begin();
  EXPECT_FALSE(session.Find<QAbstractButton>("StopButton")->isEnabled());
}

TEST(StopButton, DoesInARunWhatTheStopOfItsWindowDoes) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    StopSession session;
    session.WhileRunning(window, [&] {
      EXPECT_TRUE(session.Lit());
      EXPECT_FALSE(session.WindowSession::Find<QWidget>("Load")->isEnabled()) << "the commands are held";
      // A second press while the first is taken in.
      session.fakes.loop.on_wait = [&] { session.Press(); };
      session.Press();
    });
    EXPECT_EQ(session.Sent(), window == RunWindow::fakeMMI ? "MS" : "XS");
    EXPECT_EQ(session.fakes.loop.waits, std::vector<double>{0.05});
    EXPECT_EQ(session.Handlers().run.Active(), RunWindow::None);
    EXPECT_FALSE(session.Lit());
  }
}

TEST(StopButton, StaysLitWhenTheEmulatorWasClosedByItsFrameAndStopsTheHub) {
  StopSession session;
  session.LeaveARun();
  EXPECT_TRUE(session.Lit());
  session.fakes.port.Receive(LineMessage(254, 9));
  EXPECT_EQ(session.Sent(), "I") << "the run goes on";
  session.Press();
  EXPECT_EQ(session.Sent(), "IS");
  EXPECT_FALSE(session.Lit());
  EXPECT_EQ(session.Session().shown.rows[9].state, RowState::Normal);
}

TEST(StopButton, GoesOutWhenTheHubSaysThatTheRunIsOver) {
  for (const int header : {255, 252, 251, 239, 238, 212}) {
    StopSession session;
    session.LeaveARun();
    session.fakes.boxes.setNextAnswer(Answer::No);
    session.fakes.port.Receive({static_cast<char>(header), 0, 8, 0});
    EXPECT_FALSE(session.Lit()) << header;
    EXPECT_TRUE(session.Stop().isEnabled()) << header;
  }
}

TEST(StopButton, IsRedAndFilledWhileItIsLitAndAnOutlineOtherwise) {
  StopSession session;
  const auto middle = [&] {
    const QImage picture = session.Stop().icon().pixmap(24, 24).toImage();
    return picture.pixelColor(picture.rect().center());
  };
  EXPECT_EQ(middle().alpha(), 0);
  session.LeaveARun();
  EXPECT_EQ(middle().alpha(), 255);
  EXPECT_GT(middle().red(), 2 * middle().green());
}

TEST(StopButton, SaysItsNameAndWhetherTheMachineMayBeMoving) {
  StopSession session;
  QAccessibleInterface& spoken = *QAccessible::queryAccessibleInterface(&session.Stop());
  EXPECT_EQ(spoken.text(QAccessible::Name), "Stop (Esc)");
  EXPECT_EQ(spoken.text(QAccessible::Description), "nothing is known to run");
  session.LeaveARun();
  EXPECT_EQ(spoken.text(QAccessible::Description), "the machine may be moving");
  spoken.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  QTest::qWait(150);
  EXPECT_EQ(session.Sent(), "S");
}

TEST(StopKey, StopsAHubThatRunsOnFromTheMainWindowAndGoesToTheWindowOtherwise) {
  StopSession session;
  QTest::keyClick(&session.Pane(), Qt::Key_Escape);
  EXPECT_EQ(session.Sent(), "") << "nothing runs";
  session.LeaveARun();
  QTest::keyClick(&session.Pane(), Qt::Key_Escape);
  EXPECT_EQ(session.Sent(), "S");
  QTest::keyClick(&session.Pane(), Qt::Key_Escape);
  EXPECT_EQ(session.Sent(), "S");
}

TEST(StopKey, StopsFromADialogWhichTheNextPressLeaves) {
  StopSession session;
  session.LeaveARun();
  QDialog dialog(&session.Main());
  dialog.setModal(true);
  dialog.show();
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_EQ(session.Sent(), "S");
  EXPECT_TRUE(dialog.isVisible());
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(session.Sent(), "S");
}

TEST(StopKey, ReachesTheFileDialogsTooForAsLongAsSomethingMayMove) {
  StopSession session;
  const auto own = [] { return QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs); };
  EXPECT_FALSE(own());
  session.LeaveARun();
  EXPECT_TRUE(own()) << "those of the desktop would keep the key";
  session.Press();
  EXPECT_FALSE(own());
}

TEST(StopKey, HeldDownDoesNotLeaveTheDialogInWhichItStopped) {
  StopSession session;
  session.LeaveARun();
  QDialog dialog(&session.Main());
  dialog.show();
  const auto press = [&](QEvent::Type type, bool repeats) {
    QKeyEvent event(type, Qt::Key_Escape, Qt::NoModifier, QString(), repeats);
    QApplication::sendEvent(&dialog, &event);
  };
  press(QEvent::KeyPress, false);
  for (int i = 0; i < 5; ++i) press(QEvent::KeyPress, true);
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(session.Sent(), "S");
  press(QEvent::KeyRelease, false);
  press(QEvent::KeyPress, false);
  EXPECT_FALSE(dialog.isVisible());
}

TEST(StopKey, StopsFromABoxThatComesByItselfInItsFirstMomentsToo) {
  StopSession session;
  GuiMessageBoxes real;
  session.fakes.boxes.on_box = [&](const ShownBox& box) { real.MsgBox(box); };
  session.LeaveARun();
  QTimer::singleShot(0, &session.Main(), [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(session.Sent(), "S");
    EXPECT_TRUE(box->isVisible());
    box->button(QMessageBox::Ok)->click();
  });
  session.fakes.port.Receive({static_cast<char>(240), 2, 0, 0});
  EXPECT_EQ(session.fakes.boxes.shown.size(), 1U);
}

TEST(StopKey, InTheTerminalTakesTheLineBackFirstAndLeavesTheTerminalAsItWas) {
  StopSession session;
  session.LeaveARun();
  bool opened = false;
  const Whenever when_open = session.WhenInTerminal([&] {
    opened = true;
    auto& command = session.Find<QPlainTextEdit>("VOXterm", "CommandText");
    QTest::keyClicks(&command, "1RV");
    QTest::keyClick(&command, Qt::Key_Escape);
    EXPECT_EQ(session.Sent(), "H0HM\rSH");
    EXPECT_TRUE(session.Form("VOXterm").isVisible());
    EXPECT_EQ(command.toPlainText(), "1RV");
    QTest::keyClick(&command, Qt::Key_Return);
    QTest::keyClick(&session.Form("VOXterm"), Qt::Key_Escape);
  });
  session.Handlers().terminal->ShowModal();
  EXPECT_TRUE(opened);
  EXPECT_EQ(session.Sent(), "H0HM\rSH1RV\r\n0HM\r");
}

TEST(StopKey, IsNotTakenUnderATransferNorWithoutAPort) {
  StopSession session;
  session.LeaveARun();
  QDialog dialog(&session.Main());
  {
    const TransferUnderWay under_way(session.Handlers().link());
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  }
  session.fakes.port.is_open = false;
  dialog.show();
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(session.Sent(), "");
}

}  // namespace
}  // namespace tavlo::testing
