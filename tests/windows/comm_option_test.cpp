// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/comm_option.h"

#include <QAccessible>
#include <QButtonGroup>
#include <QDialog>
#include <QEnterEvent>
#include <functional>

#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

struct PortSession : RunningSession {
  PortSession() { fakes.port.log.clear(); }

  CommOption& Option(int comm) { return *Find<CommOption>(("OptCom" + std::to_string(comm - 1)).c_str()); }
  /// As a screen reader does.
  void Press(int comm) {
    QAccessibleInterface* read = QAccessible::queryAccessibleInterface(&Option(comm));
    const QStringList actions = read->actionInterface()->actionNames();
    if (!actions.isEmpty()) read->actionInterface()->doAction(actions.first());
    Settle();
  }
  [[nodiscard]] QString Read(int comm, QAccessible::Text what) {
    return QAccessible::queryAccessibleInterface(&Option(comm))->text(what);
  }
  void Click(int comm) { QTest::mouseClick(&Option(comm), Qt::LeftButton); }
};

TEST(CommOption, NamesItsDeviceToEyesAndScreenReaders) {
  PortSession session;
  for (int comm = 1; comm <= 8; ++comm) {
    const QString name = QStringLiteral("Comm %1").arg(comm);
    const QString device = QStringLiteral("/dev/line%1").arg(comm);
    EXPECT_EQ(session.Option(comm).text().remove('&'), name);
    EXPECT_EQ(session.Option(comm).toolTip(), device);
    EXPECT_EQ(session.Read(comm, QAccessible::Name), name);
    EXPECT_EQ(session.Read(comm, QAccessible::Description), device);
    EXPECT_EQ(session.Option(comm).group()->id(&session.Option(comm)), comm - 1);
  }
}

TEST(CommOption, ShowsThatNoDeviceIsThereAndWhatIsInDoubt) {
  PortSession session;
  session.comms.devices[3] = {"/run/comm3", false, ""};
  session.comms.devices[4] = {"/dev/ttyS3", true, "XDG_RUNTIME_DIR is not set"};
  session.comms.OnChange();
  EXPECT_EQ(session.Option(3).text().remove('&'), "Comm 3 (none)");
  EXPECT_EQ(session.Option(3).toolTip(), "No device is there now: /run/comm3");
  EXPECT_EQ(session.Read(3, QAccessible::Name), "Comm 3 (none)");
  EXPECT_EQ(session.Read(3, QAccessible::Description), "No device is there now: /run/comm3");
  EXPECT_EQ(session.Option(4).text().remove('&'), "Comm 4");
  EXPECT_EQ(session.Option(4).toolTip(), "/dev/ttyS3\n(XDG_RUNTIME_DIR is not set)");
  EXPECT_TRUE(session.Option(3).isEnabled()) << "the operator may know better";
}

TEST(CommOption, ADeviceThatComesOrGoesIsSeenWhenTheSystemTellsItAndWhenTheOperatorLooks) {
  struct Row {
    const char* what;
    std::function<void(PortSession&)> look;
  };
  const auto send = [](QWidget& to, QEvent&& event) { QCoreApplication::sendEvent(&to, &event); };
  const std::vector<Row> rows = {
      {"the system tells it", [](PortSession& session) { session.comms.OnChange(); }},
      {"the mouse comes",
       [&](PortSession& session) { send(session.Option(5), QEnterEvent(QPointF(), QPointF(), QPointF())); }},
      {"the keyboard comes",
       [&](PortSession& session) { send(session.Option(5), QFocusEvent(QEvent::FocusIn)); }},
      {"the tool tip is asked for",
       [&](PortSession& session) { send(session.Option(2), QEvent(QEvent::ToolTip)); }},
      {"the window comes to the front",
       [&](PortSession& session) { send(session.Main(), QEvent(QEvent::WindowActivate)); }},
      {"the window is shown", [](PortSession& session) { session.Main().hide(), session.Main().show(); }},
  };
  for (const Row& row : rows) {
    PortSession session;
    session.comms.devices[2].there = false;
    row.look(session);
    EXPECT_EQ(session.Option(2).text().remove('&'), "Comm 2 (none)") << row.what;
    session.comms.devices.clear();
    row.look(session);
    EXPECT_EQ(session.Option(2).text().remove('&'), "Comm 2") << row.what;
  }
}

TEST(CommOption, APressThroughTheAccessibilityInterfaceChoosesThePortAsAClickDoes) {
  for (const bool by_press : {true, false}) {
    PortSession session;
    const auto choose = [&](int comm) { by_press ? session.Press(comm) : session.Click(comm); };
    choose(3);
    EXPECT_EQ(session.fakes.port.log, (std::vector<std::string>{"close 1", "open 3"}));
    EXPECT_EQ(session.Session().link.ComNum, 3);
    EXPECT_TRUE(session.Option(3).isChecked());
    session.fakes.port.open_errors[5] = "busy";
    choose(5);
    EXPECT_EQ(session.fakes.boxes.shown.size(), 1u) << "told once";
    EXPECT_FALSE(session.Option(5).isChecked());
    EXPECT_TRUE(session.Option(3).isChecked());
  }
}

TEST(CommOption, TheChosenOneIsOpenedAgainOnlyWhenItsPortIsClosedOrElsewhere) {
  for (const bool by_press : {true, false}) {
    PortSession session;
    const auto choose = [&](int comm) { by_press ? session.Press(comm) : session.Click(comm); };
    choose(1);
    EXPECT_TRUE(session.fakes.port.log.empty());
    session.fakes.port.leads_elsewhere = true;
    choose(1);
    EXPECT_EQ(session.fakes.port.log, (std::vector<std::string>{"close 1", "open 1"}));
    session.fakes.port.leads_elsewhere = false;
    session.fakes.port.is_open = false;
    choose(1);
    EXPECT_TRUE(session.fakes.port.is_open);
    EXPECT_TRUE(session.Option(1).isChecked());
  }
}

TEST(CommOption, APressDoesNoMoreThanAClickCouldAtThatMoment) {
  PortSession session;
  session.Main().HoldCommands(Hold::Run);
  session.Press(3);
  session.Option(3).Press();
  session.Settle();
  EXPECT_TRUE(session.fakes.port.log.empty()) << "while a program runs";
  session.Main().HoldCommands(Hold::None);
  QDialog box(&session.Main());
  box.setModal(true);
  box.show();
  session.Press(3);
  EXPECT_TRUE(session.fakes.port.log.empty()) << "while a box stands before it";
  EXPECT_TRUE(session.Option(1).isChecked());
  box.close();
  session.Press(3);
  EXPECT_EQ(session.Session().link.ComNum, 3);
}

TEST(CommOption, AScreenReaderMeetsARadioButtonWithItsMarkAndItsKey) {
  PortSession session;
  QAccessibleInterface* first = QAccessible::queryAccessibleInterface(&session.Option(1));
  QAccessibleInterface* second = QAccessible::queryAccessibleInterface(&session.Option(2));
  EXPECT_EQ(first->role(), QAccessible::RadioButton);
  EXPECT_TRUE(first->state().checkable);
  EXPECT_TRUE(first->state().checked);
  EXPECT_FALSE(second->state().checked);
  EXPECT_TRUE(second->state().focusable);
  EXPECT_EQ(second->text(QAccessible::Accelerator), "Alt+2");
}

}  // namespace
}  // namespace tavlo::testing
