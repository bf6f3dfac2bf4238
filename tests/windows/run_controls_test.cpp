// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_controls.h"

#include <QToolButton>

#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

struct StateCase {
  const char* what;
  bool running;
  Picture play;
  Picture pause;
  Picture single_step;
  const char* says;
};
constexpr std::array<StateCase, 4> kStates = {{
    {"free run", true, Picture::PlayGreen, Picture::PauseGray, Picture::StepGray, "the program runs"},
    {"pause asked for", false, Picture::PlayGray, Picture::PauseGray, Picture::StepGray,
     "the program is about to pause"},
    {"paused", false, Picture::PlayGray, Picture::PauseRed, Picture::StepGray, "the program is paused"},
    {"single step", false, Picture::PlayGray, Picture::PauseGray, Picture::StepYellow,
     "a single line is being executed"},
}};

TEST(RunControls, AllSayTheSameOfTheRun) {
  RunControls controls(nullptr);
  for (const StateCase& c : kStates) {
    RunPanel panel;
    panel.Running = c.running;
    panel.Play = c.play;
    panel.Pause = c.pause;
    panel.SingleStep = c.single_step;
    controls.Show(panel);
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
