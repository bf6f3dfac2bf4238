// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/panel_window.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QScreen>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>

#include "hubsim/panel/drive_names.h"
#include "hubsim_panel/panel_bench.h"
#include "model/axis_config.h"

namespace tavlo::hubsim {
namespace {

TEST(PanelWindow, ItsTitleSaysWhatItServes) {
  const PanelBench panel;
  EXPECT_EQ(panel.window.windowTitle(), QStringLiteral("Simulated hub on Comm 1"));
}

TEST(PanelWindow, EveryColumnHasATitle) {
  const PanelBench panel;
  QStringList titles;
  for (const auto* label : panel.window.findChildren<QLabel*>()) titles += label->text();
  for (const char* title :
       {"Axis", "Drive", "Shaft", "Steps", "rev/s", "Motor", "Inputs (click)", "Outputs", "X0", "Y3"}) {
    EXPECT_TRUE(titles.contains(QLatin1String(title))) << title;
  }
}

TEST(PanelWindow, DialsAndDisplaySayWhatTheyAre) {
  const PanelBench panel;
  for (int axis = 1; axis <= 8; ++axis) {
    const QString owner = QStringLiteral("axis %1").arg(axis);
    const QWidget* dial = panel.Named(QStringLiteral("shaft of ") + owner);
    ASSERT_NE(dial, nullptr);
    EXPECT_TRUE(dial->toolTip().startsWith(QStringLiteral("The shaft of %1: ").arg(owner)));
  }
  const auto* display = panel.window.findChild<QLabel*>(QStringLiteral("display"));
  EXPECT_TRUE(display->toolTip().startsWith(QStringLiteral("The display of the operator terminal")));
  const auto* group = qobject_cast<QGroupBox*>(display->parentWidget());
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group->title(), QStringLiteral("Operator terminal"));
}

TEST(PanelWindow, DrivesAreCalledAsTheyAreInTheComposer) {
  for (int model = -1; model <= 255; ++model) EXPECT_EQ(DriveName(model), ModelName(model)) << model;
  HubOptions options;
  options.drives = std::array<int, kAxisCount>{26, 1, 0, kUnlistedDrive};
  PanelBench panel(options);
  panel.window.Refresh();
  EXPECT_EQ(panel.Described("drive model on axis 1"), ModelName(26));
  EXPECT_EQ(panel.Described("drive model on axis 2"), ModelName(1));
  EXPECT_EQ(panel.Described("drive model on axis 3"), "none");
  EXPECT_EQ(panel.Described("drive model on axis 4"), "unknown type");
}

TEST(PanelWindow, AWiderWindowOpensNoGapBetweenTheColumns) {
  PanelBench panel;
  panel.window.show();
  const auto places = [&] {
    std::vector<int> lefts;
    for (const char* name : {"shaft of axis 1", "axis 1 input 1:", "axis 1 output 1:", "limit of axis 1"})
      lefts.push_back(panel.Named(QLatin1String(name))->mapTo(&panel.window, QPoint(0, 0)).x());
    return lefts;
  };
  panel.window.resize(panel.window.minimumSizeHint());
  QCoreApplication::processEvents();
  const auto narrow = places();
  panel.window.resize(1800, 900);
  QCoreApplication::processEvents();
  EXPECT_EQ(places(), narrow);
}

TEST(PanelWindow, AClickTurnsTheHubsInputOnAndOffAgain) {
  PanelBench panel;
  EXPECT_EQ(panel.NameOf("axis 3 input 2:"), "axis 3 input 2: off");
  panel.Click("axis 3 input 2:");
  EXPECT_EQ(panel.bench.hub.Axis(2).inputs, 0xFF & ~2);
  EXPECT_EQ(panel.NameOf("axis 3 input 2:"), "axis 3 input 2: on");
  panel.Click("axis 3 input 2:");
  EXPECT_EQ(panel.bench.hub.Axis(2).inputs, 0xFF);
  panel.Click("axis 8 input X7:");
  EXPECT_EQ(panel.bench.hub.Axis(7).x_inputs, 0x7F);
}

TEST(PanelWindow, AnInputThatTheConsoleSetsIsShown) {
  PanelBench panel;
  ASSERT_TRUE(panel.bench.hub.SetInput(0, 8, false, panel.bench.now));
  panel.window.Refresh();
  EXPECT_EQ(panel.NameOf("axis 1 input X0:"), "axis 1 input X0: on");
}

TEST(PanelWindow, OutputsAreNamedAndPaintedByTheirState) {
  PanelBench panel;
  QWidget* lamp = panel.Named("axis 1 output 1:");
  const QImage off = lamp->grab().toImage();
  panel.bench.Download({SetOutput(0, 0, 1), SetOutput(0, 4, 1)});
  panel.bench.Run(0.1);
  panel.window.Refresh();
  EXPECT_EQ(panel.bench.hub.Axis(0).outputs & 1, 0);
  EXPECT_EQ(panel.NameOf("axis 1 output 1:"), "axis 1 output 1: on");
  EXPECT_EQ(panel.NameOf("axis 1 output 2:"), "axis 1 output 2: off");
  EXPECT_TRUE(off != lamp->grab().toImage());
}

TEST(PanelWindow, EveryLampOfAnOctoIsNamed) {
  const PanelBench panel;
  for (int axis = 1; axis <= 8; ++axis) {
    for (const char* lamp :
         {"input 1", "input 8", "input X0", "input X7", "output 4", "output Y1", "output Y3"}) {
      EXPECT_NE(panel.Named(QStringLiteral("axis %1 %2:").arg(axis).arg(QLatin1String(lamp))), nullptr);
    }
  }
}

TEST(PanelWindow, AQuadHasFourAxesAndTheHubsOwnBlock) {
  HubOptions options;
  options.model = HubModel::Quad;
  PanelBench panel(options);
  EXPECT_NE(panel.window.findChild<QWidget*>(QStringLiteral("limit3")), nullptr);
  EXPECT_EQ(panel.window.findChild<QWidget*>(QStringLiteral("limit4")), nullptr);
  panel.Click("hub input 4:");
  EXPECT_EQ(panel.bench.hub.Axis(4).inputs, 0xFF & ~8);
  EXPECT_EQ(panel.NameOf("hub input 4:"), "hub input 4: on");
}

TEST(PanelWindow, PositionAndSpeedMoveWithTheAxis) {
  PanelBench panel;
  panel.bench.Download({FeedLength({.axis = 0, .distance = 200000})});
  panel.bench.Run(1);
  panel.window.Refresh();
  const AxisView view = panel.bench.hub.Axis(0);
  ASSERT_GT(view.position_steps, 0);
  EXPECT_EQ(panel.Described("position of axis 1 in steps"),
            std::to_string(std::llround(view.position_steps)));
  EXPECT_EQ(panel.Described("speed of axis 1 in revolutions a second"), "3.00");
  EXPECT_EQ(panel.Described("motor of axis 1"), "on");
}

TEST(PanelWindow, TheLimitButtonHaltsARunningProgram) {
  PanelBench panel;
  panel.Click("limit of axis 2");
  EXPECT_EQ(panel.LabelText("note"),
            "The limit had no effect: no program runs, nothing moves, or the axis has no drive that uses its "
            "limit switches.");
  panel.bench.Download({WaitTime(1000)});
  panel.bench.Run(0.1);
  panel.Click("limit of axis 2");
  EXPECT_EQ(panel.bench.hub.State(), HubState::Halted);
  EXPECT_EQ(panel.LabelText("state"), "halted");
  EXPECT_EQ(panel.LabelText("note"), "");
  EXPECT_EQ(HubBench::Count(panel.bench.Collect(), 252), 1);
}

TEST(PanelWindow, TheStopButtonStopsARunningProgram) {
  PanelBench panel;
  panel.ClickObject("btnStop");
  EXPECT_EQ(panel.LabelText("note"), "Stop had no effect: no program runs, and nothing moves.");
  panel.bench.Download({WaitTime(1000)});
  panel.bench.Run(0.1);
  panel.window.Refresh();
  EXPECT_EQ(panel.LabelText("state"), "running line 1");
  panel.ClickObject("btnStop");
  EXPECT_EQ(panel.LabelText("state"), "halted");
  EXPECT_EQ(HubBench::Count(panel.bench.Collect(), 251), 1);
}

TEST(PanelWindow, AFaultWithoutADriveIsSaidToHaveNoEffect) {
  PanelBench panel;
  panel.Click("fault of axis 2");
  panel.window.findChild<QDialog*>(QStringLiteral("FaultDialog"))->accept();
  EXPECT_EQ(panel.LabelText("note"), "The fault had no effect: there is no drive on the axis.");
  EXPECT_TRUE(panel.bench.Collect().empty());
}

TEST(PanelWindow, TheFaultDialogReportsWhatIsChecked) {
  PanelBench panel;
  panel.bench.Download({});
  panel.Click("fault of axis 2");
  auto* dialog = panel.window.findChild<QDialog*>(QStringLiteral("FaultDialog"));
  ASSERT_NE(dialog, nullptr);
  for (const char* box : {"fault0", "fault13"})
    dialog->findChild<QCheckBox*>(QLatin1String(box))->setChecked(true);
  dialog->accept();
  const auto messages = panel.bench.Collect();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE((messages[0] == Message{211, 1, 8193 / 128, 8193 % 128, 0})) << messages[0];
  EXPECT_EQ(panel.LabelText("state"), "halted");
}

TEST(PanelWindow, ACancelledFaultDialogDoesNothing) {
  PanelBench panel;
  panel.Click("fault of axis 2");
  panel.window.findChild<QDialog*>(QStringLiteral("FaultDialog"))->reject();
  EXPECT_TRUE(panel.bench.Collect().empty());
  EXPECT_EQ(panel.bench.hub.State(), HubState::Idle);
}

TEST(PanelWindow, ThePowerButtonMakesTheHubGreet) {
  PanelBench panel;
  panel.ClickObject("btnPower");
  EXPECT_EQ(HubBench::Count(panel.bench.Collect(), 255), 1);
}

TEST(PanelWindow, TheCableComesOffAndIsPutBack) {
  PanelBench panel;
  panel.ClickObject("btnCable");
  EXPECT_TRUE(panel.bench.hub.Unplugged());
  const auto* button = panel.window.findChild<QAbstractButton*>(QStringLiteral("btnCable"));
  EXPECT_EQ(button->text(), QStringLiteral("&Replug cable"));
  panel.ClickObject("btnCable");
  EXPECT_FALSE(panel.bench.hub.Unplugged());
  EXPECT_EQ(button->text(), QStringLiteral("&Unplug cable"));
}

TEST(PanelWindow, AFailureIsChosenByModeAndNumber) {
  PanelBench panel;
  auto* mode = panel.window.findChild<QComboBox*>(QStringLiteral("failure"));
  auto* number = panel.window.findChild<QSpinBox*>(QStringLiteral("failureNumber"));
  ASSERT_EQ(mode->count(), static_cast<int>(kFailures.size()));
  EXPECT_FALSE(number->isEnabled());
  const int line = mode->findText(QStringLiteral("No answer to line N (1..200) of a download"));
  mode->setCurrentIndex(line);
  emit mode->activated(line);
  EXPECT_TRUE(number->isEnabled());
  number->setValue(7);
  EXPECT_EQ(panel.bench.hub.Options().failure.mode, Failure::SilentLine);
  EXPECT_EQ(panel.bench.hub.Options().failure.at, 7);
  EXPECT_EQ(panel.LabelText("failureMeaning"), "No answer to line N (1..200) of a download");
  EXPECT_EQ(panel.LabelText("failureOption"), "--fail silent-line:7");
  panel.bench.hub.SetFailure({});
  panel.window.Refresh();
  EXPECT_EQ(mode->currentText(), QStringLiteral("Nothing fails"));
  EXPECT_EQ(panel.LabelText("failureOption"), "--fail none");
  EXPECT_FALSE(number->isEnabled());
}

TEST(PanelWindow, FailureModesAreToldInWordsThatTheListHasRoomFor) {
  PanelBench panel;
  const auto* mode = panel.window.findChild<QComboBox*>(QStringLiteral("failure"));
  for (int row = 0; row < mode->count(); ++row) {
    EXPECT_TRUE(mode->itemText(row)[0].isUpper()) << mode->itemText(row).toStdString();
    EXPECT_GE(mode->itemText(row).count(QLatin1Char(' ')), 1);
    EXPECT_LE(mode->fontMetrics().horizontalAdvance(mode->itemText(row)), mode->view()->minimumWidth());
  }
}

TEST(PanelWindow, TheWheelTurnsNoFailureThatItOnlyPassesOver) {
  PanelBench panel;
  panel.window.show();
  for (const char* name : {"failure", "failureNumber"}) {
    panel.bench.hub.SetFailure({Failure::SilentLine, 7});
    panel.window.Refresh();
    auto* control = panel.window.findChild<QWidget*>(QLatin1String(name));
    EXPECT_EQ(control->focusPolicy(), Qt::StrongFocus) << name;
    ASSERT_FALSE(control->hasFocus());
    QWheelEvent turn(QPointF(5, 5), control->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(control, &turn);
    EXPECT_EQ(panel.bench.hub.Options().failure.mode, Failure::SilentLine) << name;
    EXPECT_EQ(panel.bench.hub.Options().failure.at, 7) << name;
  }
}

TEST(PanelWindow, WhatIsDoneToTheHubIsServedAtOnce) {
  PanelBench panel;
  const int before = panel.served;
  panel.Click("axis 1 input 1:");
  EXPECT_EQ(panel.served, before + 1);
}

TEST(PanelWindow, ItLooksAtTheHubOnlyWhileItIsSeen) {
  PanelBench panel;
  panel.window.show();
  const int before = panel.served;
  EXPECT_TRUE(QTest::qWaitFor([&] { return panel.served > before + 1; }));
  panel.window.hide();
  const int hidden = panel.served;
  QTest::qWait(150);
  EXPECT_EQ(panel.served, hidden);
}

TEST(PanelWindow, ClosingItIsTold) {
  PanelBench panel;
  panel.window.show();
  QSignalSpy closed(&panel.window, &PanelWindow::Closed);
  panel.window.close();
  EXPECT_EQ(closed.count(), 1);
}

TEST(PanelWindow, TheArrowKeysGoFromInputToInput) {
  PanelBench panel;
  panel.window.show();
  panel.window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel.window));
  QWidget* first = panel.Named("axis 1 input 1:");
  first->setFocus();
  const auto press = [&](Qt::Key key) { QTest::keyClick(panel.window.focusWidget(), key); };
  press(Qt::Key_Right);
  EXPECT_EQ(panel.window.focusWidget(), panel.Named("axis 1 input 2:"));
  press(Qt::Key_End);
  press(Qt::Key_Space);
  EXPECT_EQ(panel.bench.hub.Axis(0).x_inputs, 0x7F);
  press(Qt::Key_Right);
  EXPECT_EQ(panel.window.focusWidget(), panel.Named("axis 1 input X7:"));
  press(Qt::Key_Home);
  press(Qt::Key_Left);
  EXPECT_EQ(panel.window.focusWidget(), first);
  press(Qt::Key_Tab);
  EXPECT_EQ(panel.window.focusWidget(), panel.Named("limit of axis 1"));
}

TEST(PanelWindow, ItFitsBesideTheComposer) {
  const PanelBench panel;
  EXPECT_LE(panel.window.minimumSizeHint().width(), 920);
  EXPECT_LE(panel.window.minimumSizeHint().height(), 620);
}

TEST(PanelWindow, ItOpensNoLargerThanItsScreen) {
  const PanelBench panel;
  const QSize room = panel.window.screen()->availableSize();
  EXPECT_LT(panel.window.width(), room.width());
  EXPECT_LT(panel.window.height(), room.height());
}

TEST(PanelWindow, TheOperatorsDisplayHasFourRows) {
  PanelBench panel;
  panel.window.Refresh();
  const std::string display = panel.LabelText("display");
  EXPECT_EQ(std::count(display.begin(), display.end(), '\n'), 3);
}

}  // namespace
}  // namespace tavlo::hubsim
