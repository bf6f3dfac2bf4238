// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QComboBox>
#include <QLabel>

#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

QWidget* TopLevel(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QLatin1String(name)) return window;
  }
  return nullptr;
}

/// Looks about while the splash stands.
class WatchingLoop : public FakeLoop {
 public:
  using FakeLoop::FakeLoop;
  void WaitSecs(double seconds) override {
    FakeLoop::WaitSecs(seconds);
    if (on_wait) on_wait();
  }
  std::function<void()> on_wait;
};

TEST(StartUp, TheSplashStandsUntilTheMainWindowIsLoadedAndAMomentLonger) {
  WindowSession session;
  session.windows.reset();
  WatchingLoop loop(session.fakes.clock);
  bool looked = false;
  loop.on_wait = [&] {
    looked = true;
    QWidget* splash = TopLevel("StartForm");
    ASSERT_NE(splash, nullptr);
    EXPECT_TRUE(splash->isVisible());
    EXPECT_EQ(splash->findChild<QLabel*>(QStringLiteral("ver"))->text(), QStringLiteral("Version 1.29.1"));
    EXPECT_LE(
        (splash->geometry().center() - splash->screen()->availableGeometry().center()).manhattanLength(), 2);
    QWidget* main = TopLevel("LongForm");
    ASSERT_NE(main, nullptr);
    EXPECT_FALSE(main->isVisible());
    EXPECT_EQ(main->windowTitle(), QStringLiteral("Tavlo Composer  V1.29.1 - untitled"));
    EXPECT_TRUE(session.fakes.port.is_open);
  };
  FakeDesk& fakes = session.fakes;
  session.windows = StartUp({fakes.port, fakes.boxes, fakes.clock, loop, fakes.beeper, fakes.settings,
                             fakes.dialogs, fakes.files, session.comms, session.help, session.printer,
                             session.sessions, session.clipboard});
  EXPECT_TRUE(looked);
  EXPECT_EQ(loop.waits, std::vector<double>{1.5});
  EXPECT_EQ(TopLevel("StartForm"), nullptr);
  EXPECT_TRUE(session.Main().isVisible());
}

TEST(StartUp, APortIsLookedForBehindTheSplashOnceTheListsAreFilled) {
  WindowSession session;
  session.windows.reset();
  session.fakes.settings.values[FakeSettings::Path("Tavlo Hub Composer", "Startup", "ComPort")] = "5";
  session.fakes.port.open_errors[5] = "Is it plugged in?";
  int boxes = 0;
  session.fakes.boxes.on_box = [&](const ShownBox&) {
    ++boxes;
    QWidget* main = TopLevel("LongForm");
    ASSERT_NE(main, nullptr);
    EXPECT_FALSE(main->isVisible());
    EXPECT_TRUE(TopLevel("StartForm")->isVisible());
    EXPECT_EQ(main->findChild<QComboBox*>(QStringLiteral("ModelList"))->count(), 2);
    EXPECT_EQ(main->findChild<QLabel*>(QStringLiteral("DriveVersion"))->text(), QStringLiteral("?"));
  };
  session.windows = StartUp(session.Services());
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(session.fakes.boxes.shown[0].text,
            "Error opening the last comm port that was used by the Hub Composer (Comm 5):  Is it plugged "
            "in?.  Will "
            "try Comm 1.");
  EXPECT_EQ(session.Session().link.ComNum, 1);
}

TEST(StartUp, AGreetingDuringTheSearchForAPortLeavesNoMarkOnTheNewProgram) {
  WindowSession session;
  session.fakes.port.open_errors[1] = "busy";
  session.fakes.boxes.on_box = [&](const ShownBox&) {
    session.fakes.port.Receive({static_cast<char>(255), 38, 8, 0});
  };
  session.Begin();
  EXPECT_EQ(session.Lines().HubVersion, 0);
  EXPECT_FALSE(session.Session().Changed);
}

}  // namespace
}  // namespace tavlo::testing
