// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QToolButton>

#include "support/fake_editors.h"
#include "windows/drag.h"
#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

struct HoldSession : RunSession {
  HoldSession() {
    Handlers().editors = &editors;
    Lines().Prog[2].Type = GT;
    Pane().SetCurrentRow(5);
  }
  void PressByReader(QWidget* control) {
    QAccessible::queryAccessibleInterface(control)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
  }
  void PressRowByReader(int line) {
    QAccessible::queryAccessibleInterface(&Pane())->child(line)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
  }
  /// Everything that would pick or copy a line.
  void TryEverything() {
    QTest::mouseClick(&Pane(), Qt::LeftButton, Qt::NoModifier, IconPoint(*this, 3));
    QTest::mouseClick(&Pane(), Qt::LeftButton, Qt::ShiftModifier, IconPoint(*this, 3));
    QTest::mouseClick(&Pane(), Qt::LeftButton, Qt::NoModifier, Pane().Geometry().Desc(4).center());
    Drag(*this, 2, IconPoint(*this, 7));
    QTest::keyClick(&Pane(), Qt::Key_Return);
    PressRowByReader(8);
  }
  void ExpectNothingDone() {
    EXPECT_EQ(editors.log.size(), 0U);
    EXPECT_EQ(Pane().CurrentRow(), 5);
    EXPECT_EQ(Session().CurLine, 0);
    EXPECT_EQ(Lines().Prog[7].Type, NO);
    EXPECT_FALSE(Session().Changed);
  }
  [[nodiscard]] QLabel& Notice() { return *WindowSession::Find<QLabel>("LblHeld"); }
  [[nodiscard]] QLabel& Heading() { return *WindowSession::Find<QLabel>("LblDesc"); }

  FakeEditors editors;
};

TEST(GridHold, ClicksDropsAndEnterDoNothingInATransferAndTheHeadingSaysWhy) {
  HoldSession session;
  EXPECT_FALSE(session.Notice().isVisible());
  EXPECT_TRUE(session.Heading().isVisible());
  for (ProgressForm* gauge : {&session.Handlers().downbox, &session.Handlers().upbox}) {
    gauge->Show();
    EXPECT_TRUE(session.Notice().isVisible());
    EXPECT_EQ(session.Notice().text(), QStringLiteral("Lines held: a transfer"));
    EXPECT_FALSE(session.Heading().isVisible());
    session.TryEverything();
    session.ExpectNothingDone();
    gauge->Hide();
    EXPECT_FALSE(session.Notice().isVisible());
    EXPECT_TRUE(session.Heading().isVisible());
  }
  session.TryEverything();
  EXPECT_EQ(session.editors.log.size(), 4U);
  EXPECT_EQ(session.Lines().Prog[7].Type, GT);
}

TEST(GridHold, ClicksDropsAndEnterDoNothingInARunAndTheRowsCanStillBeWalked) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    HoldSession session;
    session.WhileRunning(window, [&] {
      EXPECT_EQ(session.Notice().text(), QStringLiteral("Lines held: a run"));
      EXPECT_TRUE(session.Notice().isVisible());
      session.TryEverything();
      session.ExpectNothingDone();
      QTest::keyClick(&session.Pane(), Qt::Key_Down);
      EXPECT_EQ(session.Pane().CurrentRow(), 6);
      session.Handlers().run.Hide();
    });
    EXPECT_FALSE(session.Notice().isVisible());
    session.TryEverything();
    EXPECT_EQ(session.editors.log.size(), 4U);
  }
}

TEST(GridHold, TheReasonCanBeReadWholeInTheNarrowestWindow) {
  HoldSession session;
  session.Main().resize(640, 720);
  for (const Hold hold : {Hold::Run, Hold::Transfer}) {
    session.Main().HoldCommands(hold);
    session.Settle();
    EXPECT_GE(session.Notice().width(), session.Notice().sizeHint().width());
    const QRect place(session.Notice().mapTo(&session.Main(), QPoint(0, 0)), session.Notice().size());
    EXPECT_TRUE(session.Main().rect().contains(place));
  }
  EXPECT_EQ(session.Main().width(), 640);
}

/// While it stands no click reaches the main window.
struct ModalBox : QDialog {
  explicit ModalBox(QWidget* parent) : QDialog(parent) {
    setModal(true);
    show();
  }
};

TEST(AccessiblePress, DoesNothingUnderAModalBox) {
  HoldSession session;
  {
    const ModalBox box(&session.Main());
    session.PressRowByReader(3);
    for (const char* command : {"Load", "Save", "BtnClear", "Download", "Upload", "execbutton", "Quit"})
      session.PressByReader(session.WindowSession::Find<QToolButton>(command));
    session.ExpectNothingDone();
    EXPECT_TRUE(session.fakes.boxes.shown.empty());
    EXPECT_TRUE(session.fakes.dialogs.shown.empty());
    EXPECT_TRUE(session.fakes.port.sent.empty());
  }
  session.PressRowByReader(3);
  EXPECT_EQ(session.editors.log.size(), 1U);
  session.PressByReader(session.WindowSession::Find<QToolButton>("BtnClear"));
  EXPECT_EQ(session.fakes.boxes.shown.size(), 1u);
}

TEST(AccessiblePress, OfAListUnderAModalBoxChangesNothingAndTheListShowsAgainWhatHolds) {
  HoldSession session;
  auto* models = session.WindowSession::Find<QComboBox>("ModelList");
  auto* actions = session.WindowSession::Find<QComboBox>("LimitList");
  auto* port = session.WindowSession::Find<QRadioButton>("OptCom4");
  {
    const ModalBox box(&session.Main());
    models->setCurrentIndex(1);
    actions->setCurrentIndex(2);
    port->click();
  }
  EXPECT_EQ(session.Lines().HubIndex, HubOcto);
  EXPECT_EQ(models->currentIndex(), 0);
  EXPECT_EQ(session.Lines().LimitList, HaltProgram);
  EXPECT_EQ(actions->currentIndex(), 0);
  EXPECT_EQ(session.Session().link.ComNum, 1);
  EXPECT_FALSE(port->isChecked());
  EXPECT_FALSE(session.Session().Changed);
}

TEST(AccessiblePress, ThatSetsTheFocusBringsTheRowIntoView) {
  HoldSession session;
  session.Find<QScrollBar>(nullptr, "ScrollProg").setValue(0);
  QAccessible::queryAccessibleInterface(&session.Pane())
      ->child(150)
      ->actionInterface()
      ->doAction(QAccessibleActionInterface::setFocusAction());
  EXPECT_EQ(session.Pane().CurrentRow(), 150);
  EXPECT_TRUE(session.Pane().visibleRegion().intersects(session.Pane().Geometry().Row(150)));
  EXPECT_EQ(session.editors.log.size(), 0U);
}

/// A key that is held down: one press, its repeats and the release at last.
void HoldKey(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  for (int i = 0; i < 5; ++i) {
    QWidget* focused = QApplication::focusWidget() == nullptr ? widget : QApplication::focusWidget();
    if (i > 0) {
      QKeyEvent up(QEvent::KeyRelease, key, modifiers, {}, true);
      QApplication::sendEvent(focused, &up);
    }
    QKeyEvent down(QEvent::KeyPress, key, modifiers, {}, i > 0);
    QApplication::sendEvent(focused, &down);
  }
  QKeyEvent up(QEvent::KeyRelease, key, modifiers);
  QApplication::sendEvent(widget, &up);
}

TEST(HeldKey, EnterOnARowOpensItOnce) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    HoldSession session;
    session.Pane().setFocus();
    HoldKey(&session.Pane(), key);
    EXPECT_EQ(session.editors.log.size(), 1U);
    HoldKey(&session.Pane(), key, Qt::ShiftModifier);
    EXPECT_EQ(session.editors.log.size(), 2U);
  }
}

TEST(HeldKey, ArrowsRepeatAsTheyShould) {
  HoldSession session;
  session.Pane().setFocus();
  HoldKey(&session.Pane(), Qt::Key_Down);
  EXPECT_EQ(session.Pane().CurrentRow(), 10);
}

TEST(HeldKey, ACommandOfTheToolBarRunsOnce) {
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    HoldSession session;
    auto* save = session.WindowSession::Find<QToolButton>("Save");
    save->setFocus();
    HoldKey(save, key);
    EXPECT_EQ(session.fakes.dialogs.shown.size(), key == Qt::Key_Space ? 1u : 0u);
  }
}

TEST(Mnemonic, ActsAtOnceAndNotLaterUnderWhatHasComeMeanwhile) {
  HoldSession session;
  QTest::keyClick(&session.Main(), Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(session.fakes.dialogs.shown.size(), 1U);
  QTest::qWait(150);
  EXPECT_EQ(session.fakes.dialogs.shown.size(), 1U);
}

TEST(Mnemonic, ActsOnceHoweverLongItIsHeld) {
  HoldSession session;
  auto* save = session.WindowSession::Find<QToolButton>("Save");
  for (const bool repeats : {false, true, true, false}) {
    QKeyEvent press(QEvent::ShortcutOverride, Qt::Key_S, Qt::AltModifier, {}, repeats);
    QApplication::sendEvent(&session.Main(), &press);
    QShortcutEvent shortcut(QKeySequence::mnemonic(save->text()), 0);
    QApplication::sendEvent(save, &shortcut);
  }
  EXPECT_EQ(session.fakes.dialogs.shown.size(), 2U);
}

TEST(Mnemonic, GivesAnOptionTheFocusAsAClickDoes) {
  HoldSession session;
  auto* port = session.WindowSession::Find<QRadioButton>("OptCom2");
  QTest::keyClick(&session.Main(), Qt::Key_3, Qt::AltModifier);
  EXPECT_TRUE(port->isChecked());
  EXPECT_TRUE(port->hasFocus());
}

TEST(HeldKey, TheEnterThatOpenedABoxDoesNotAnswerIt) {
  HoldSession session;
  QDialog box(&session.Main());
  box.setModal(true);
  auto* answer = new QPushButton(QStringLiteral("OK"), &box);
  answer->setDefault(true);
  QObject::connect(answer, &QPushButton::clicked, &box, &QDialog::accept);
  box.show();
  QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
  QApplication::sendEvent(answer, &repeat);
  QApplication::sendEvent(&box, &repeat);
  EXPECT_TRUE(box.isVisible());
  QTest::keyClick(answer, Qt::Key_Return);
  EXPECT_FALSE(box.isVisible());
}

/// A dialog with a box, over the main window.
struct OverMain {
  explicit OverMain(HoldSession& session) : dialog(&session.Main()), box(new QLineEdit(&dialog)) {
    dialog.setModal(true);
    dialog.show();
    box->setFocus();
  }
  QDialog dialog;
  QLineEdit* box;
};

/// True if it would act as a shortcut there, or else as a press.
bool Acts(QWidget& focus, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeat) {
  QKeyEvent shortcut(QEvent::ShortcutOverride, key, modifiers, QStringLiteral("x"), repeat);
  shortcut.ignore();
  QApplication::sendEvent(&focus, &shortcut);
  const bool taken_for_a_press = shortcut.isAccepted();
  class Counter : public QObject {
   public:
    int presses = 0;

   protected:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::KeyPress) ++presses;
      return false;
    }
  } counter;
  focus.installEventFilter(&counter);
  QKeyEvent press(QEvent::KeyPress, key, modifiers, QStringLiteral("x"), repeat);
  QApplication::sendEvent(&focus, &press);
  return counter.presses > 0 || !taken_for_a_press;
}

TEST(HeldKey, F1OpensTheHelpOnceThoughItsRepeatsBearNoMark) {
  HoldSession session;
  session.Pane().setFocus();
  const auto send = [&](QEvent::Type type, quint64 milliseconds) {
    QKeyEvent event(type, Qt::Key_F1, Qt::NoModifier);
    event.setTimestamp(milliseconds);
    event.ignore();
    QApplication::sendEvent(&session.Pane(), &event);
    return event.isAccepted();
  };
  EXPECT_FALSE(send(QEvent::ShortcutOverride, 4000)) << "it may be a shortcut";
  send(QEvent::KeyRelease, 5000);
  EXPECT_TRUE(send(QEvent::ShortcutOverride, 5000)) << "a repeat is none";
  send(QEvent::KeyRelease, 6000);
  EXPECT_FALSE(send(QEvent::ShortcutOverride, 6100)) << "pressed again";
}

TEST(HeldKey, ThatOpenedADialogTypesNothingIntoIt) {
  HoldSession session;
  EXPECT_TRUE(Acts(session.Pane(), Qt::Key_Space, Qt::NoModifier, false));
  OverMain over(session);
  EXPECT_FALSE(Acts(*over.box, Qt::Key_Space, Qt::NoModifier, true));
  EXPECT_EQ(over.box->text(), QString());
  EXPECT_TRUE(Acts(*over.box, Qt::Key_Space, Qt::NoModifier, false)) << "pressed again";
  EXPECT_TRUE(Acts(*over.box, Qt::Key_Space, Qt::NoModifier, true)) << "and held here";
  EXPECT_EQ(over.box->text(), QStringLiteral("xx"));
}

TEST(HeldKey, ThatClosedADialogPressesNoMnemonicOfTheWindowBelow) {
  HoldSession session;
  {
    OverMain over(session);
    EXPECT_TRUE(Acts(*over.box, Qt::Key_O, Qt::AltModifier, false));
  }
  EXPECT_FALSE(Acts(session.Pane(), Qt::Key_O, Qt::AltModifier, true));
  EXPECT_TRUE(session.fakes.dialogs.shown.empty());
}

TEST(HeldKey, TheTerminalsKeyDoesNotRepeat) {
  HoldSession session;
  const auto shortcuts = session.Main().findChildren<QShortcut*>();
  ASSERT_FALSE(shortcuts.empty());
  for (const QShortcut* shortcut : shortcuts) EXPECT_FALSE(shortcut->autoRepeat());
}

TEST(TabKey, ThatLeavesTheGridLeavesItsRowsWhereTheyAre) {
  for (const bool back : {false, true}) {
    HoldSession session;
    auto& bar = session.Find<QScrollBar>(nullptr, "ScrollProg");
    session.Pane().setFocus();
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp}) {
      session.Pane().setFocus();
      QTest::keyClick(&session.Pane(), key);
      const int before = bar.value();
      QTest::keyClick(&session.Pane(), back ? Qt::Key_Backtab : Qt::Key_Tab);
      EXPECT_FALSE(session.Pane().hasFocus());
      EXPECT_EQ(bar.value(), before);
    }
  }
}

TEST(FoundLine, ComesIntoViewAndIsTheCurrentRow) {
  HoldSession session;
  session.Handlers().view.GoTo(150);
  EXPECT_EQ(session.Pane().CurrentRow(), 150);
  const QRect row = session.Pane().Geometry().Row(150);
  EXPECT_EQ(session.Pane().visibleRegion().intersected(row).boundingRect().height(), row.height());
  session.Handlers().view.GoTo(0);
  EXPECT_EQ(session.Pane().CurrentRow(), 0);
  EXPECT_EQ(session.Find<QScrollBar>(nullptr, "ScrollProg").value(), 0);
}

TEST(FoundLine, IsSeenWhileTheBoxOfTheCheckStands) {
  HoldSession session;
  session.Lines().HubVersion = 1.38F;
  session.Lines().Prog[120].Type = FL;
  session.Lines().Prog[120].Drive = 7;
  session.Lines().Axis.DriveModel[7] = 0;
  session.fakes.port.on_output = [&](const std::string& bytes) {
    if (bytes == "C") session.fakes.port.Reply({38, 8});
  };
  bool seen = false;
  session.fakes.boxes.on_box = [&](const ShownBox& box) {
    seen = box.text.starts_with("The instruction on line 121 uses drive 8");
    EXPECT_EQ(session.Pane().CurrentRow(), 120);
    EXPECT_TRUE(session.Pane().visibleRegion().intersects(session.Pane().Geometry().Row(120)));
  };
  QTest::mouseClick(session.WindowSession::Find<QToolButton>("Download"), Qt::LeftButton);
  EXPECT_TRUE(seen);
}

}  // namespace
}  // namespace tavlo::testing
