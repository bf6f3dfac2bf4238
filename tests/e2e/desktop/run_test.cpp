// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Runs and what lies behind them: the real windows and the real port class against the real simulated hub
// over its pty. The operator is Qt's own event injection.
#include <QLabel>
#include <QPlainTextEdit>

#include "desktop_session.h"
#include "support/whenever.h"
#include "windows/led_panel.h"

namespace tavlo::testing {
namespace {

/// The control of the modal window that is up, or of any other.
template <class T>
T* Control(const char* name) {
  if (const QWidget* modal = QApplication::activeModalWidget()) {
    return modal->findChild<T*>(QString::fromLatin1(name));
  }
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (!widget->isVisible()) continue;
    if (T* found = widget->findChild<T*>(QString::fromLatin1(name)); found != nullptr && found->isVisible()) {
      return found;
    }
  }
  return nullptr;
}

void Press(const char* name) {
  auto* button = Control<QAbstractButton>(name);
  ASSERT_NE(button, nullptr) << name;
  QTest::mouseClick(button, Qt::LeftButton);
}

/// The operator terminal's display as one text.
QString Display() {
  QStringList rows;
  for (int row = 0; row < 4; ++row) {
    const auto* line = Control<QLabel>(("textline" + std::to_string(row)).c_str());
    if (line != nullptr) rows << line->text();
  }
  return rows.join(' ').simplified();
}

bool Shows(const QString& text) {
  return WaitFor([&] { return Display().contains(text); });
}

/// Keys of the keypad, one a character; E is Enter.
void Type(const std::string& keys) {
  for (const char key : keys) {
    const std::string name = key == 'E' ? "enter" : std::string("number") + key;
    Press(name.c_str());
  }
}

/// A session with a program in the hub.
struct Machine {
  explicit Machine(const char* example, const QStringList& options = {}) : hub(options), session(hub.Link()) {
    session.LoadExample(example);
    session.Click("Download");
  }
  /// Presses Execute and does this while the run window is up.
  void Run(const std::function<void()>& act) {
    WhileRunning([act] {
      act();
      // A test that has failed must not stand there for ever.
      if (::testing::Test::HasFailure() && RunWindowShown() != nullptr) PressStop();
    });
    session.Click("execbutton");
  }
  [[nodiscard]] bool Executing(int line) {
    return WaitFor([&] { return session.State().shown.rows[line - 1].state == RowState::Executing; });
  }

  HubProcess hub;
  Session session;
};

TEST(Runs, PromptsAreAnsweredOnTheKeypadAndTheRunIsPausedSteppedResumedAndStopped) {
  Machine machine("menu.TVH", {"--speedup", "2"});
  machine.Run([&] {
    for (const auto& [choice, prompt, keys] :
         {std::tuple{"1", "Length in mm:", "25E"}, std::tuple{"2", "Pieces:", "40E"},
          std::tuple{"3", "Speed in mm/s:", "50E"}}) {
      ASSERT_TRUE(Shows("1 Length"));
      Type(choice);
      ASSERT_TRUE(Shows(prompt)) << prompt;
      Type(keys);
    }
    ASSERT_TRUE(Shows("1 Length"));
    Type("4");
    ASSERT_TRUE(Shows("Clamp closed?"));
    Press("yes");
    ASSERT_TRUE(machine.Executing(44));

    Press("Pause");
    const RunPanel& panel = machine.session.State().run.panel;
    EXPECT_FALSE(panel.Running);
    EXPECT_EQ(Control<QLabel>("lblState")->text(), "pausing") << "the line under way ends first";
    ASSERT_TRUE(WaitFor([&] {
      return machine.hub.State().contains("\"paused\"") && machine.hub.State().contains("\"line\":null");
    }));
    EXPECT_TRUE(WaitFor([&] { return Control<QLabel>("lblState")->text() == "paused"; }));
    EXPECT_TRUE(machine.session.State().happened.front().text.starts_with("Paused at line 4"));
    for (int step = 1; step <= 5; ++step) {
      Press("SingleStep");
      EXPECT_EQ(panel.SingleStep, Picture::StepYellow) << step;
      ASSERT_TRUE(WaitFor([&] { return panel.SingleStep == Picture::StepGray; })) << step;
      EXPECT_EQ(panel.Pause, Picture::PauseRed) << step;
    }
    Press("Play");
    EXPECT_TRUE(panel.Running);
    ASSERT_TRUE(machine.Executing(46));
    PressStop();
  });
  EXPECT_TRUE(machine.session.boxes.Shown().empty());
  EXPECT_EQ(RunWindowShown(), nullptr);
  EXPECT_TRUE(machine.hub.State().contains("\"idle\""));
}

/// What the field of the status line says.
std::string Field(Machine& machine, const char* name) {
  QCoreApplication::sendPostedEvents();
  return machine.session.Main().findChild<QLabel*>(QString::fromLatin1(name))->text().toStdString();
}

TEST(Runs, TheStatusLineKnowsWhatTheHubHoldsFromADownloadToAGreeting) {
  Machine machine("cut-to-length.TVH");
  EXPECT_TRUE(Field(machine, "HubField").starts_with("Hub holds cut-to-length.TVH, proven "));
  EXPECT_TRUE(Field(machine, "PortField").ends_with(", firmware 1.38"));
  EXPECT_TRUE(Field(machine, "EventField").starts_with("Download proven: "));
  machine.session.LoadExample("menu.TVH");
  EXPECT_EQ(Field(machine, "HubField"), "Hub holds another program than the one shown");
  machine.Run([&] {
    ASSERT_TRUE(WaitFor([&] { return machine.hub.State().contains("\"running\""); }));
    EXPECT_EQ(Field(machine, "HubField"), "Warning: the hub runs another program than the one shown");
    PressStop();
  });
  machine.session.Click("Upload");
  EXPECT_TRUE(Field(machine, "HubField").starts_with("Hub holds the program shown, read "));
  EXPECT_TRUE(Field(machine, "EventField").starts_with("Upload read: 8,194 bytes in "));
  machine.hub.Command("greet");
  EXPECT_TRUE(WaitFor([&] { return Field(machine, "HubField") == "Not known what the hub holds"; }));
  EXPECT_TRUE(Field(machine, "EventField").starts_with("The hub was switched on again"));
  machine.Run([&] {
    EXPECT_EQ(Field(machine, "HubField"), "Not known what the hub runs");
    ASSERT_TRUE(machine.Executing(5));
    machine.session.boxes.setNextAnswer(tavlo::Answer::No);
    machine.hub.Command("limit 1");
  });
  EXPECT_TRUE(Field(machine, "EventField").starts_with("Stopped at line "));
  EXPECT_TRUE(machine.session.State().happened.front().text.ends_with(": limit switch, axis 1"));
}

TEST(Runs, WhatWasSentIsKnownAndWhatIsReadBackIsTheProgramShownUnlessReadingLosesSomething) {
  for (const auto& [example, loses] :
       {std::pair{"cut-to-length.TVH", false}, std::pair{"every-line.TVH", true},
        std::pair{"menu.TVH", false}, std::pair{"nested-repeats.TVH", false}}) {
    Machine machine(example);
    EXPECT_TRUE(Field(machine, "HubField").starts_with(std::string("Hub holds ") + example)) << example;
    machine.session.Click("Upload");
    const std::string held = Field(machine, "HubField");
    EXPECT_EQ(held.starts_with("Hub holds the program shown, read "), !loses) << example << ": " << held;
    EXPECT_EQ(held == "Hub holds another program than the one shown", loses) << example << ": " << held;
  }
}

TEST(Runs, InputsAndOutputsOfTheMachineShowOnThePanel) {
  Machine machine("cut-to-length.TVH");
  machine.Run([&] {
    ASSERT_TRUE(machine.Executing(5));
    machine.hub.Command("input 1 2 low");
    machine.hub.Command("input 1 X3 low");
    Press("Pause");
    auto* panel = Control<LedPanel>("LedPanel");
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(WaitFor([&] { return panel->Light(LedRow::INlo, 0, 1)->Shown() == Led::Green; }));
    EXPECT_TRUE(WaitFor([&] { return panel->Light(LedRow::INX, 0, 2)->Shown() == Led::Green; }));
    EXPECT_EQ(panel->Light(LedRow::INlo, 0, 1)->accessibleName(), "axis 1 input 2: on");
    PressStop();
  });
}

TEST(Runs, ALimitAnsweredYesResetsTheHubAndAnsweredNoLeavesItHalted) {
  Machine machine("cut-to-length.TVH");
  for (const tavlo::Answer answer : {tavlo::Answer::Yes, tavlo::Answer::No}) {
    machine.session.boxes.setNextAnswer(answer);
    machine.Run([&] {
      ASSERT_TRUE(machine.Executing(5));
      machine.hub.Command("limit 1");
    });
    ASSERT_EQ(machine.session.boxes.Shown().back().title, "LIMIT");
    const char* state = answer == tavlo::Answer::Yes ? "\"idle\"" : "\"halted\"";
    EXPECT_TRUE(WaitFor([&] { return machine.hub.State().contains(state); }));
  }
  EXPECT_EQ(machine.session.boxes.Shown().size(), 2u);
}

TEST(Runs, AFaultOfADriveShowsItsPanel) {
  Machine machine("cut-to-length.TVH");
  bool shown = false;
  const Whenever panel([] { return Control<QLabel>("FaultMessage") != nullptr; },
                       [&] {
                         shown = true;
                         EXPECT_EQ(RunWindowShown(), nullptr);
                         EXPECT_TRUE(Control<QLabel>("FaultMessage")->text().contains("on axis 1."));
                         EXPECT_EQ(Control<QWidget>("RedSquare0")->accessibleName(), "Position Limit: alarm");
                         EXPECT_EQ(Control<QWidget>("RedSquare5")->accessibleName(), "over voltage: alarm");
                         EXPECT_EQ(Control<QWidget>("RedSquare6")->accessibleName(),
                                   "under voltage: no alarm");
                         Press("Close");
                       });
  machine.Run([&] {
    ASSERT_TRUE(machine.Executing(5));
    machine.hub.Command("fault 1 33");
  });
  EXPECT_TRUE(shown);
  EXPECT_TRUE(machine.session.boxes.Shown().empty());
}

TEST(Runs, AHubThatRestartsInMidPromptTakesTheEmulatorAway) {
  Machine machine("menu.TVH");
  machine.Run([&] {
    ASSERT_TRUE(Shows("1 Length"));
    machine.hub.Command("greet");
  });
  EXPECT_EQ(RunWindowShown(), nullptr);
  EXPECT_FALSE(machine.session.State().display.MMIActive);
  EXPECT_TRUE(machine.session.boxes.Shown().empty());
}

TEST(Runs, TheTerminalTalksToADriveAndHandsTheLineBack) {
  Machine machine("cut-to-length.TVH");
  bool shown = false;
  const Whenever terminal([] { return Control<QPlainTextEdit>("CommandText") != nullptr; },
                          [&] {
                            shown = true;
                            auto* command = Control<QPlainTextEdit>("CommandText");
                            QTest::keyClicks(command, "1RV");
                            QTest::keyClick(command, Qt::Key_Return);
                            auto* history = Control<QPlainTextEdit>("History");
                            EXPECT_TRUE(WaitFor([&] { return history->toPlainText() == "$1RV$\n2.00\n"; }))
                                << history->toPlainText().toStdString();
                            EXPECT_TRUE(machine.hub.State().contains("\"passthrough\""));
                            Press("Quit");
                          });
  QTest::keyClick(&machine.session.Main(), Qt::Key_T, Qt::ControlModifier);
  EXPECT_TRUE(shown);
  EXPECT_TRUE(WaitFor([&] { return machine.hub.State().contains("\"idle\""); }));
  machine.session.Click("Download");
  EXPECT_TRUE(machine.session.boxes.Shown().empty());
}

}  // namespace
}  // namespace tavlo::testing
