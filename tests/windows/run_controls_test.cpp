// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_controls.h"

#include <QLabel>
#include <QToolButton>

#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

struct StateCase {
  const char* what;
  RunPhase phase;
  const char* word;
  const char* says;
};
constexpr std::array<StateCase, 5> kStates = {{
    {"free run", RunPhase::Running, "running", "the program runs"},
    {"pause asked for", RunPhase::Pausing, "pausing", "the program is about to pause"},
    {"paused", RunPhase::Paused, "paused", "the program is paused"},
    {"single step", RunPhase::Stepping, "stepping", "a single line is being executed"},
    {"stopped", RunPhase::Stopped, "stopped", "the program is stopped"},
}};

TEST(RunControls, AllSayTheSameOfTheRun) {
  RunControls controls(nullptr);
  for (const StateCase& c : kStates) {
    RunPanel panel;
    panel.phase = c.phase;
    controls.Show(panel);
    EXPECT_EQ(controls.findChild<QLabel*>(QStringLiteral("lblState"))->text(), QLatin1String(c.word));
    for (const char* name : {"Play", "Pause", "SingleStep"}) {
      EXPECT_EQ(controls.findChild<QToolButton*>(QLatin1String(name))->accessibleDescription(),
                QLatin1String(c.says))
          << c.what << " " << name;
    }
  }
}

TEST(RunControls, SayWhatTheHubDoesThroughASingleStep) {
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    const auto says = [&] {
      return session.Find<QToolButton>("ExecStatus", "Pause").accessibleDescription();
    };
    session.fakes.loop.on_wait = [&] {
      EXPECT_EQ(says(), "the program is about to pause");
      session.fakes.loop.on_wait = nullptr;
    };
    session.Click("ExecStatus", "Pause");
    EXPECT_EQ(says(), "the program is about to pause") << "the line under way goes on";
    session.fakes.port.Receive({static_cast<char>(235), 1, 0, 11});
    EXPECT_EQ(says(), "the program is paused");
    session.Click("ExecStatus", "SingleStep");
    EXPECT_EQ(says(), "a single line is being executed");
    session.fakes.port.Receive({static_cast<char>(253), 0, 0, 0});
    EXPECT_EQ(says(), "the program is paused");
    session.Click("ExecStatus", "Play");
    EXPECT_EQ(says(), "the program runs");
    session.Click("ExecStatus", "btnStop");
  });
}

}  // namespace
}  // namespace tavlo::testing
