// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/long_form.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QSignalSpy>
#include <QToolButton>
#include <algorithm>
#include <functional>
#include <set>

#include "model/program_file.h"
#include "session/grid.h"
#include "support/fake_editors.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

const std::string kComPort = FakeSettings::Path("Tavlo Hub Composer", "Startup", "ComPort");

void Click(WindowSession& session, const char* button) {
  QTest::mouseClick(session.Find<QAbstractButton>(button), Qt::LeftButton);
}

TEST(LongForm, ComesUpAsTold) {
  RunningSession session;
  EXPECT_EQ(session.Main().windowTitle(), QStringLiteral("Tavlo Composer  V1.29.1 - untitled"));
  auto* models = session.Find<QComboBox>("ModelList");
  ASSERT_EQ(models->count(), 2);
  EXPECT_EQ(models->itemText(0), QStringLiteral("Tavlo Hub-Octo"));
  EXPECT_EQ(models->itemText(1), QStringLiteral("Hub Quad"));
  EXPECT_EQ(models->currentIndex(), 0);
  auto* actions = session.Find<QComboBox>("LimitList");
  ASSERT_EQ(actions->count(), 3);
  EXPECT_EQ(actions->itemText(0), QStringLiteral("halt program"));
  EXPECT_EQ(actions->itemText(1), QStringLiteral("branch to line number"));
  EXPECT_EQ(actions->itemText(2), QStringLiteral("continue program"));
  EXPECT_EQ(actions->currentIndex(), 0);
  EXPECT_EQ(session.Find<QLineEdit>("LimitBranch")->text(), QStringLiteral("1"));
  EXPECT_FALSE(session.Find<QLineEdit>("LimitBranch")->isEnabled());
  EXPECT_EQ(session.Find<QLabel>("DriveVersion")->text(), QStringLiteral("?"));
  EXPECT_EQ(session.Find<QLabel>("LblDriveDesc0")->text(), QStringLiteral("Axis 1  Oskel-A  1.0A"));
  EXPECT_EQ(session.Find<QLabel>("LblDriveDesc7")->text(), QStringLiteral("Axis 8  none"));
  EXPECT_TRUE(session.Find<QRadioButton>("OptCom0")->isChecked());
  EXPECT_FALSE(session.Find<QWidget>("ProgCounter")->isVisible());
  EXPECT_TRUE(session.Pane().hasFocus());
  EXPECT_FALSE(session.Session().Changed);
  EXPECT_EQ(session.Session().shown.LimitLine, 1);
  const int room = session.Main().screen()->availableSize().width();
  EXPECT_LT(room, 1000) << "the screen of the tests is a narrow one";
  EXPECT_GT(session.Main().width(), room - 40);
  EXPECT_LE(session.Main().width(), room);
  EXPECT_EQ(session.Main().height(), 720);
}

TEST(LongForm, AsksTheHubNothingWhenItLoads) {
  WindowSession session;
  session.Begin();
  EXPECT_TRUE(session.fakes.port.sent.empty());
  EXPECT_EQ(session.fakes.port.settings, "19200,N,8,1");
  EXPECT_EQ(session.fakes.port.threshold, 3);
}

TEST(LongForm, ComesUpWithoutAnyPortAndEditsAllTheSame) {
  WindowSession session;
  for (int port = 1; port <= 8; ++port) session.fakes.port.open_errors[port] = "no such device";
  session.Begin();
  EXPECT_EQ(session.fakes.boxes.shown.back().title, "No open port");
  for (int i = 0; i < 8; ++i) {
    EXPECT_FALSE(session.Main().findChild<QRadioButton*>(QStringLiteral("OptCom%1").arg(i))->isChecked())
        << i;
  }
  session.Lines().Prog[0].Type = GT;
  ShowDesc(session.Handlers().grid(), 0);
  EXPECT_EQ(session.Session().shown.rows[0].desc, "Go to line 1");
}

TEST(LongForm, ChoosingAPortOpensItAndARefusedOneGoesBack) {
  RunningSession session;
  Click(session, "OptCom2");
  EXPECT_EQ(session.fakes.port.number, 3);
  EXPECT_EQ(session.Session().link.ComNum, 3);
  session.fakes.port.open_errors[5] = "busy";
  Click(session, "OptCom4");
  ASSERT_EQ(session.fakes.boxes.shown.size(), 1u);
  EXPECT_EQ(session.fakes.boxes.shown[0],
            (ShownBox{"COM port 5 is not available.", "COM Error", Buttons::OK, Icon::Exclamation}));
  EXPECT_TRUE(session.Find<QRadioButton>("OptCom2")->isChecked());
  EXPECT_FALSE(session.Find<QRadioButton>("OptCom4")->isChecked());
}

TEST(LongForm, APortThatVanishesIsToldOnceAndNoneIsOnThen) {
  RunningSession session;
  session.fakes.port.OnLost();
  EXPECT_EQ(session.fakes.boxes.shown.size(), 1u);
  EXPECT_FALSE(session.Find<QRadioButton>("OptCom0")->isChecked());
  Click(session, "OptCom0");
  EXPECT_TRUE(session.Find<QRadioButton>("OptCom0")->isChecked());
  EXPECT_EQ(session.Session().link.ComNum, 1);
}

TEST(LongForm, EveryCommandCanBeUsedAndSaysWhatItDoes) {
  RunningSession session;
  for (const char* name : {"Load", "Save", "PrintButton", "BtnClear", "Download", "Upload", "execbutton",
                           "ChangeRes", "Help", "Quit", "StopButton", "corplogo"}) {
    EXPECT_TRUE(session.Find<QAbstractButton>(name)->isEnabled()) << name;
    EXPECT_FALSE(session.Find<QAbstractButton>(name)->toolTip().isEmpty()) << name;
  }
}

TEST(LongForm, TheHardwareButtonAndARowOfTheAxisSummaryOpenTheHardwareSettings) {
  RunningSession session;
  FakeEditors editors;
  session.Handlers().editors = &editors;
  session.Find<QAbstractButton>("ChangeRes")->click();
  EXPECT_EQ(editors.log, std::vector<std::string>{"hardware"});
  QTest::mouseClick(session.Find<QWidget>("LblDriveDesc3"), Qt::LeftButton);
  EXPECT_EQ(editors.log.size(), 2U);
  QTest::mouseClick(session.Find<QWidget>("LblDriveDesc3"), Qt::RightButton);
  EXPECT_EQ(editors.log.size(), 2U);
  editors.confirms = true;
  session.Find<QAbstractButton>("ChangeRes")->click();
  EXPECT_TRUE(session.Find<QLabel>("LblDriveDesc0")->text().startsWith(QLatin1String("Saw  ")));
  session.Handlers().editors = nullptr;
}

TEST(LongForm, PrintPrintsTheListingByClickAndByMnemonic) {
  RunningSession session;
  session.Lines().Prog[0].Type = RT;
  session.Find<QAbstractButton>("PrintButton")->click();
  ASSERT_EQ(session.printer.printed.size(), 1u);
  EXPECT_EQ(session.printer.printed[0].blocks.back().back().text, "Return from subroutine");
  session.printer.chosen = false;
  PressMnemonic(&session.Main(), Qt::Key_P);
  EXPECT_EQ(session.printer.asked, 2);
  EXPECT_EQ(session.printer.printed.size(), 1u);
}

TEST(LongForm, APrinterThatFailsIsToldInABox) {
  RunningSession session;
  session.printer.failure = "the printer takes no further page";
  session.Find<QAbstractButton>("PrintButton")->click();
  ASSERT_EQ(session.fakes.boxes.shown.size(), 1u);
  EXPECT_EQ(session.fakes.boxes.shown[0].text,
            "The listing could not be printed: the printer takes no further page");
}

TEST(LongForm, HelpAndF1OpenTheManual) {
  RunningSession session;
  session.Find<QAbstractButton>("Help")->click();
  EXPECT_EQ(session.help.shown, std::vector<std::string>{"Hub Composer.pdf"});
  QTest::keyClick(&session.Main(), Qt::Key_F1);
  EXPECT_EQ(session.help.shown.size(), 2u);
}

TEST(LongForm, EveryButtonAndListHasAMnemonicOfItsOwn) {
  RunningSession session;
  std::multiset<QString> keys;
  int buttons = 0;
  for (const QAbstractButton* button : session.Main().findChildren<QAbstractButton*>()) {
    if (button->window() != &session.Main()) continue;
    ++buttons;
    EXPECT_FALSE(button->shortcut().isEmpty()) << button->objectName().toStdString();
    keys.insert(button->shortcut().toString());
  }
  for (const QLabel* label : session.Main().findChildren<QLabel*>()) {
    if (!QKeySequence::mnemonic(label->text()).isEmpty())
      keys.insert(QKeySequence::mnemonic(label->text()).toString());
  }
  EXPECT_EQ(buttons, 23);
  EXPECT_EQ(keys.size(), 27u);
  EXPECT_EQ(std::set<QString>(keys.begin(), keys.end()).size(), keys.size());
}

TEST(LongForm, TheTabKeyVisitsEveryControlInReadingOrder) {
  RunningSession session;
  session.Main().activateWindow();
  const std::vector<std::string> expected = {
      "Load", "Save", "PrintButton", "BtnClear",   "Download",  "Upload",  "execbutton", "ChangeRes",
      "Help", "Quit", "StopButton",  "ProgWindow", "ModelList", "OptCom0", "LimitList",  "corplogo"};
  session.Find<QWidget>("Load")->setFocus();
  std::vector<std::string> visited;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    visited.push_back(QApplication::focusWidget()->objectName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(visited, expected);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("Load"));
}

TEST(LongForm, SaveAndLoadGoThroughTheDialogsAndChangeTheCaption) {
  RunningSession session;
  session.Lines().Prog[4].Type = GT;
  session.fakes.dialogs.next_file_name = "/home/x/belt.TVH";
  Click(session, "Save");
  ASSERT_EQ(session.fakes.files.files.count("/home/x/belt.TVH"), 1u);
  EXPECT_EQ(session.Main().windowTitle(), QStringLiteral("Tavlo Composer  V1.29.1 - /home/x/belt.TVH"));
  Click(session, "BtnClear");
  EXPECT_EQ(session.Lines().Prog[4].Type, NO);
  EXPECT_EQ(session.Main().windowTitle(), QStringLiteral("Tavlo Composer  V1.29.1 - untitled"));
  EXPECT_EQ(session.fakes.boxes.shown.back().title, "Erase Program");
  PressMnemonic(&session.Main(), Qt::Key_O);
  EXPECT_EQ(session.Lines().Prog[4].Type, GT);
  EXPECT_EQ(session.Main().windowTitle(), QStringLiteral("Tavlo Composer  V1.29.1 - /home/x/belt.TVH"));
  EXPECT_EQ(session.fakes.dialogs.shown.size(), 2u);
  EXPECT_FALSE(session.Find<QWidget>("Loading")->isVisible());
}

TEST(LongForm, DownloadAndExecuteAskTheHub) {
  RunningSession session;
  Click(session, "Download");
  EXPECT_EQ(session.fakes.port.sent.at(0), "S");
  EXPECT_EQ(session.fakes.port.sent.at(1), "C");
  EXPECT_EQ(session.fakes.boxes.shown.size(), 1u);
  session.fakes.port.sent.clear();
  session.Session().Changed = true;
  session.fakes.boxes.setNextAnswer(Answer::No);
  Click(session, "execbutton");
  EXPECT_TRUE(session.fakes.port.sent.empty());
  Click(session, "execbutton");
  EXPECT_EQ(session.fakes.port.sent.at(0), "S");
}

TEST(LongForm, AGreetingShowsModelAndFirmware) {
  RunningSession session;
  session.fakes.port.Receive({static_cast<char>(255), 38, 24, 0});
  EXPECT_EQ(session.Find<QComboBox>("ModelList")->currentIndex(), 1);
  EXPECT_EQ(session.Find<QLabel>("DriveVersion")->text(), QStringLiteral("1.38"));
  EXPECT_EQ(session.Find<QLabel>("LblDriveDesc4")->text(), QString());
  EXPECT_EQ(session.fakes.port.AllSent(), "*0");
  EXPECT_EQ(session.fakes.beeper.beeps, 1);
}

TEST(LongForm, ChoosingTheModelChangesTheAxisRows) {
  RunningSession session;
  session.Find<QComboBox>("ModelList")->setCurrentIndex(1);
  EXPECT_EQ(session.Lines().HubIndex, HubQuad);
  EXPECT_EQ(session.Find<QLabel>("LblDriveDesc7")->text(), QString());
  session.Find<QComboBox>("ModelList")->setCurrentIndex(0);
  EXPECT_EQ(session.Find<QLabel>("LblDriveDesc7")->text(), QStringLiteral("Axis 8  none"));
}

TEST(LongForm, ControlCharactersOfAnAxisNameShowAsBlanks) {
  RunningSession session;
  session.Lines().Axis.AxisName[7] = std::string("A\0B\n", 4);
  session.Find<QComboBox>("ModelList")->setCurrentIndex(1);
  session.Find<QComboBox>("ModelList")->setCurrentIndex(0);
  EXPECT_EQ(session.Find<QLabel>("LblDriveDesc7")->text(), QStringLiteral("A B   none"));
}

TEST(LongForm, TheLimitBranchIsOpenOnlyForTheBranchAndColoursItsLine) {
  RunningSession session;
  auto* actions = session.Find<QComboBox>("LimitList");
  auto* branch = session.Find<QLineEdit>("LimitBranch");
  EXPECT_EQ(branch->palette().color(QPalette::Base), QColor(Qt::white));
  actions->setCurrentIndex(1);
  EXPECT_TRUE(branch->isEnabled());
  EXPECT_EQ(branch->palette().color(QPalette::Base), QColor(170, 255, 255));
  EXPECT_EQ(session.Session().shown.rows[0].state, RowState::LimitTarget);
  EXPECT_EQ(session.Session().shown.rows[0].icon.set, IconSet::Cyan);
  actions->setCurrentIndex(2);
  EXPECT_FALSE(branch->isEnabled());
  EXPECT_EQ(branch->palette().color(QPalette::Base), QColor(Qt::white));
  EXPECT_EQ(session.Session().shown.rows[0].state, RowState::Normal);
}

TEST(LongForm, LeavingTheLimitBranchCleansItAndMovesTheColour) {
  RunningSession session;
  session.Find<QComboBox>("LimitList")->setCurrentIndex(1);
  auto* branch = session.Find<QLineEdit>("LimitBranch");
  struct Case {
    const char* typed;
    const char* shown;
    int line;
  };
  for (const Case& entry : {Case{"12", "12", 12}, Case{"", "1", 1}, Case{"900", "200", 200},
                            Case{"-3", "1", 1}, Case{"abc", "1", 1}}) {
    branch->setFocus();
    branch->setText(QLatin1String(entry.typed));
    session.Pane().setFocus();
    EXPECT_EQ(branch->text(), QLatin1String(entry.shown)) << entry.typed;
    EXPECT_EQ(session.Session().shown.LimitLine, entry.line);
    EXPECT_EQ(session.Session().shown.rows[entry.line - 1].state, RowState::LimitTarget);
  }
  EXPECT_EQ(session.Session().shown.rows[11].state, RowState::Normal);
}

TEST(LongForm, EnteringTheLimitBranchSelectsItsText) {
  RunningSession session;
  session.Find<QComboBox>("LimitList")->setCurrentIndex(1);
  auto* branch = session.Find<QLineEdit>("LimitBranch");
  branch->setText(QStringLiteral("123"));
  QTest::mouseClick(branch, Qt::LeftButton);
  session.Settle();
  EXPECT_EQ(branch->selectedText(), QStringLiteral("123"));
}

TEST(LongForm, AMnemonicTakesWhatStandsInTheLimitBranchFirst) {
  RunningSession session;
  session.Find<QComboBox>("LimitList")->setCurrentIndex(1);
  auto* branch = session.Find<QLineEdit>("LimitBranch");
  branch->setFocus();
  branch->setText(QStringLiteral("44"));
  session.fakes.dialogs.next_file_name = "/x.TVH";
  PressMnemonic(branch, Qt::Key_S);
  EXPECT_EQ(session.fakes.dialogs.shown.size(), 1u);
  EXPECT_EQ(session.Lines().LimitBranch, 44);
}

TEST(LongForm, TheTextColumnGrowsWithTheWindowBetween640And950) {
  RunningSession session;
  const auto text_width = [&session](int width) {
    session.Main().resize(width, 720);
    session.Settle();
    return session.Pane().Geometry().text_width;
  };
  const int narrow = text_width(640);
  EXPECT_GT(narrow, 150);
  EXPECT_EQ(text_width(641), narrow + 1);
  EXPECT_EQ(text_width(800), narrow + 160);
  EXPECT_EQ(text_width(950), narrow + 310);
  EXPECT_EQ(text_width(951), narrow + 310);
  EXPECT_EQ(text_width(1400), narrow + 310);
  session.Main().resize(300, 720);
  EXPECT_EQ(session.Main().width(), 640);
}

TEST(LongForm, NothingOfItIsCutAt640) {
  RunningSession session;
  session.Main().resize(640, 720);
  session.Settle();
  for (const QWidget* control : session.Main().findChildren<QWidget*>()) {
    if (!control->isVisible() || session.Pane().isAncestorOf(control) || control == &session.Pane()) continue;
    const QRect place(control->mapTo(&session.Main(), QPoint(0, 0)), control->size());
    EXPECT_TRUE(session.Main().rect().contains(place)) << control->objectName().toStdString();
    if (qobject_cast<const QAbstractButton*>(control) != nullptr ||
        qobject_cast<const QLabel*>(control) != nullptr) {
      EXPECT_GE(control->width(), control->minimumSizeHint().width()) << control->objectName().toStdString();
    }
  }
}

TEST(LongForm, MinimisingLeavesTheLayoutIntact) {
  RunningSession session;
  const auto resize = [&session](int width) {
    session.Main().resize(width, 720);
    session.Settle();
    return session.Pane().Geometry().text_width;
  };
  const int before = resize(900);
  session.Main().setWindowState(Qt::WindowMinimized);
  session.Settle();
  // Some systems shrink a window that they minimise, and give it its size back with the restoring.
  EXPECT_EQ(resize(650), before);
  session.Main().resize(900, 720);
  session.Main().setWindowState(Qt::WindowNoState);
  session.Settle();
  EXPECT_EQ(session.Pane().Geometry().text_width, before);
  EXPECT_EQ(resize(800), before - 100);
}

TEST(LongForm, WhatTheOperatorChoosesOrEntersRaisesChangedAndIsAskedAboutWhenLeaving) {
  struct Case {
    const char* name;
    std::function<void(RunningSession&)> change;
  };
  for (const Case& c :
       {Case{"the model", [](RunningSession& s) { s.Find<QComboBox>("ModelList")->setCurrentIndex(1); }},
        Case{"the limit action",
             [](RunningSession& s) { s.Find<QComboBox>("LimitList")->setCurrentIndex(2); }},
        Case{"the limit branch, left", [](RunningSession& s) {
               s.Find<QComboBox>("LimitList")->setCurrentIndex(1);
               s.Session().Changed = false;
               s.Find<QLineEdit>("LimitBranch")->setFocus();
               s.Find<QLineEdit>("LimitBranch")->setText(QStringLiteral("44"));
               s.Pane().setFocus();
             }}}) {
    RunningSession session;
    c.change(session);
    EXPECT_TRUE(session.Session().Changed) << c.name;
    session.fakes.boxes.setNextAnswer(Answer::Cancel);
    Click(session, "Quit");
    ASSERT_EQ(session.fakes.boxes.shown.size(), 1u) << c.name;
    EXPECT_EQ(session.fakes.boxes.shown[0].title, "Quit");
  }
}

TEST(LongForm, LeavingTakesWhatStandsInTheLimitBranchFirst) {
  for (const bool by_frame : {false, true}) {
    RunningSession session;
    session.Find<QComboBox>("LimitList")->setCurrentIndex(1);
    session.Session().Changed = false;
    auto* branch = session.Find<QLineEdit>("LimitBranch");
    branch->setFocus();
    branch->setText(QStringLiteral("44"));
    session.fakes.boxes.setNextAnswer(Answer::Cancel);
    if (by_frame) {
      EXPECT_FALSE(session.Main().close());
    } else {
      PressMnemonic(branch, Qt::Key_Q);
    }
    EXPECT_EQ(session.Lines().LimitBranch, 44);
    EXPECT_EQ(session.fakes.boxes.shown.size(), 1u);
  }
}

TEST(LongForm, WhatAFileOrTheHubSetsIsNoChange) {
  RunningSession session;
  Program other;
  InitHardware(other.Axis);
  InitProg(other);
  other.HubIndex = HubQuad;
  other.LimitList = BranchToLine;
  other.LimitBranch = 77;
  session.fakes.files.files["/x.TVH"] = WriteHubProg(other, std::nullopt);
  session.fakes.dialogs.next_file_name = "/x.TVH";
  Click(session, "Load");
  EXPECT_EQ(session.Find<QComboBox>("ModelList")->currentIndex(), 1);
  EXPECT_EQ(session.Find<QComboBox>("LimitList")->currentIndex(), 1);
  EXPECT_EQ(session.Find<QLineEdit>("LimitBranch")->text(), QStringLiteral("77"));
  EXPECT_FALSE(session.Session().Changed);
  session.Find<QLineEdit>("LimitBranch")->setFocus();
  session.Pane().setFocus();
  EXPECT_FALSE(session.Session().Changed) << "only looked at";
  session.fakes.port.Receive({static_cast<char>(255), 38, 8, 0});
  session.Settle();
  EXPECT_EQ(session.Find<QComboBox>("ModelList")->currentIndex(), 0);
  EXPECT_FALSE(session.Session().Changed);
}

TEST(LongForm, QuitWithoutChangesKeepsThePort) {
  RunningSession session;
  Click(session, "OptCom3");
  QSignalSpy ended(&session.Main(), &LongForm::Ended);
  Click(session, "Quit");
  EXPECT_EQ(ended.count(), 1);
  EXPECT_EQ(session.fakes.settings.values[kComPort], "4");
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
  EXPECT_TRUE(session.fakes.port.sent.empty());
}

TEST(LongForm, QuitWithChangesAsksAndLosesThePort) {
  RunningSession session;
  session.Session().Changed = true;
  QSignalSpy ended(&session.Main(), &LongForm::Ended);
  session.fakes.boxes.setNextAnswer(Answer::Cancel);
  Click(session, "Quit");
  EXPECT_EQ(ended.count(), 0);
  Click(session, "Quit");
  EXPECT_EQ(ended.count(), 1);
  EXPECT_EQ(session.fakes.boxes.shown[0],
            (ShownBox{"You have made changes without Saving or Downloading.  Do you really want to quit?",
                      "Quit", Buttons::OKCancel, Icon::None}));
  session.windows.reset();
  EXPECT_FALSE(
      session.fakes.settings.values.contains(FakeSettings::Path("Tavlo Hub Composer", "Startup", "ComPort")));
}

TEST(LongForm, ClosingTellsTheHubFirstAndKeepsThePort) {
  RunningSession session;
  session.Session().Changed = true;
  QSignalSpy ended(&session.Main(), &LongForm::Ended);
  session.fakes.boxes.on_box = [&](const ShownBox&) { EXPECT_EQ(session.fakes.port.AllSent(), "I"); };
  session.fakes.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_FALSE(session.Main().close());
  EXPECT_TRUE(session.Main().isVisible());
  EXPECT_EQ(ended.count(), 0);
  EXPECT_TRUE(session.fakes.settings.values.empty());
  session.fakes.boxes.on_box = nullptr;
  EXPECT_TRUE(session.Main().close());
  EXPECT_EQ(session.fakes.port.AllSent(), "II");
  EXPECT_EQ(ended.count(), 1);
  EXPECT_EQ(session.fakes.settings.values[kComPort], "1");
}

TEST(LongForm, AnEndFromOutsideKeepsThePortToo) {
  RunningSession session;
  session.windows.reset();
  EXPECT_EQ(session.fakes.settings.values[kComPort], "1");
}

TEST(LongForm, AnEndWhileTheLimitBranchIsBeingEditedTakesNothingOfIt) {
  RunningSession session;
  session.Find<QComboBox>("LimitList")->setCurrentIndex(1);
  auto* branch = session.Find<QLineEdit>("LimitBranch");
  branch->setFocus();
  branch->setText(QStringLiteral("55"));
  session.windows.reset();
  EXPECT_EQ(session.fakes.settings.values[kComPort], "1");
}

TEST(LongForm, TheDownloadGaugeStandsInTheWindowAndIsPaintedAtOnce) {
  RunningSession session;
  auto* form = session.Find<QWidget>("downbox");
  EXPECT_FALSE(form->isVisible());
  session.Handlers().downbox.Show();
  session.Handlers().downbox.Gauge(100);
  session.Handlers().downbox.Phase("Program lines", 1, 2);
  session.Handlers().upbox.Phase("Program lines", 1, 2);
  const auto says = [](const QWidget* pane, const char* text) {
    const auto labels = pane->findChildren<QLabel*>();
    return std::ranges::any_of(labels, [&](const QLabel* l) { return l->text() == QLatin1String(text); });
  };
  EXPECT_TRUE(says(form, "Sending Program lines"));
  EXPECT_TRUE(says(session.Find<QWidget>("upbox"), "Reading Program lines"));
  EXPECT_TRUE(form->isVisible());
  EXPECT_FALSE(form->isModal());
  EXPECT_FALSE(session.Find<QWidget>("OptCom1")->isEnabled());
  EXPECT_FALSE(session.Main().close());
  EXPECT_TRUE(session.fakes.port.sent.empty());
  EXPECT_TRUE(session.Main().rect().contains(form->geometry()));
  session.Handlers().downbox.Hide();
  EXPECT_FALSE(form->isVisible());
  EXPECT_TRUE(session.Find<QWidget>("OptCom1")->isEnabled());
}

TEST(LongForm, ALoadThatTakesTimeSaysSo) {
  RunningSession session;
  auto* form = session.Find<QWidget>("Loading");
  session.Handlers().loading.Show();
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(form->findChild<QLabel*>()->text(), QStringLiteral("Loading file from disk..."));
  session.Handlers().loading.Hide();
  EXPECT_FALSE(form->isVisible());
}

TEST(LongForm, AFileNameWithAccentsReadsRightInTheCaption) {
  RunningSession session;
  session.Session().file_name = "/home/jos\xc3\xa9/caf\xc3\xa9.TVH";
  session.Main().CaptionChanged();
  EXPECT_EQ(session.Main().windowTitle(),
            QString::fromUtf8("Tavlo Composer  V1.29.1 - /home/jos\u00e9/caf\u00e9.TVH"));
}

}  // namespace
}  // namespace tavlo::testing
