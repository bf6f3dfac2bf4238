// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/execution.h"
#include "link/handled_message.h"
#include "link/hub_messages.h"
#include "link/scripted_hub.h"
#include "session/grid.h"

namespace tavlo::testing {
namespace {

constexpr int kLimit = 252;
constexpr int kStop = 251;
constexpr int kOverflow = 239;
constexpr int kUnderflow = 238;
constexpr int kDisabled = 212;
constexpr int kFault = 211;

ShownBox Question(const std::string& text, const std::string& title) {
  return {text, title, Buttons::YesNo, Icon::Exclamation};
}

const ShownBox kLimitBox = Question(
    "Program halted: drive 3 (Cutter) hit a limit.  Should I reset the hub now?. If one of the drives is a "
    "servo and has faulted, its LED will be displaying an error code.  That condition can only be reset by "
    "interrupting power to the system.",
    "LIMIT");
const ShownBox kStopBox =
    Question("The STOP button on the drive has been pressed. Should I reset the drive now?", "STOP");

ShownBox OverflowBox(int line) {
  return Question("Line " + std::to_string(line) +
                      " of your program has caused a stack overflow.  You have made too many Calls without "
                      "Returns. Should I reset the drive now?",
                  "Stack Overflow");
}
ShownBox UnderflowBox(int line) {
  return Question("Line " + std::to_string(line) +
                      " of your program has caused a stack underflow.  Your program reached a Return "
                      "instruction without making a Call. Should I reset the drive now?",
                  "Stack Underflow");
}

/// A program that is running: one line in execution, a run window up.
struct HaltedDesk : FakeDesk {
  explicit HaltedDesk(RunWindow window = RunWindow::ExecStatus) {
    source.program.Axis.AxisName[2] = "Cutter";
    run.active = window;
    source.display.MMIActive = window == RunWindow::fakeMMI;
    ShowLine(desk.grid(), 5);
    port.threshold = 3;
  }
  [[nodiscard]] bool Painted() const { return source.shown.rows[5].state == RowState::Executing; }
};

struct Halt {
  int header;
  int b2;
  ShownBox box;
};

std::vector<Halt> Halts() {
  return {{kLimit, 2, kLimitBox},           {kStop, 0, kStopBox},
          {kOverflow, 0, OverflowBox(1)},   {kOverflow, 127, OverflowBox(128)},
          {kUnderflow, 0, UnderflowBox(1)}, {kUnderflow, 127, UnderflowBox(128)}};
}

TEST(Halt, EachAsksItsQuestion) {
  for (const Halt& halt : Halts()) {
    HaltedDesk d;
    d.boxes.setNextAnswer(Answer::No);
    Handle(d, halt.header, halt.b2, 9, 9);
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{halt.box});
    EXPECT_TRUE(d.port.sent.empty());
  }
}

TEST(Halt, EachTellsAProgramWhatItIs) {
  struct {
    int header;
    Tells tells;
  } const cases[] = {{252, Tells::LimitHit},
                     {251, Tells::StopButton},
                     {239, Tells::StackOverflow},
                     {238, Tells::StackUnderflow},
                     {kDisabled, Tells::DriveDisabled}};
  for (const auto& c : cases) {
    HaltedDesk d;
    d.boxes.setNextAnswer(Answer::No);
    Handle(d, c.header, 3);
    EXPECT_EQ(d.boxes.told, std::vector<Tells>{c.tells}) << c.header;
  }
}

TEST(Halt, TheRunWindowIsHiddenBeforeTheQuestion) {
  for (const Halt& halt : Halts()) {
    for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
      HaltedDesk d(window);
      d.boxes.setNextAnswer(Answer::No);
      RunWindow during = window;
      d.boxes.on_box = [&](const ShownBox&) { during = d.run.active; };
      Handle(d, halt.header, halt.b2);
      EXPECT_EQ(during, RunWindow::None) << halt.header;
      EXPECT_EQ(d.run.hides, 1) << halt.header;
    }
  }
}

TEST(Halt, AYesResetsTheDrive) {
  for (const Halt& halt : Halts()) {
    HaltedDesk d;
    d.boxes.setNextAnswer(Answer::Yes);
    d.port.on_output = [&](const std::string&) { d.port.Reply("Y"); };
    Handle(d, halt.header, halt.b2);
    EXPECT_EQ(d.port.sent, std::vector<std::string>(10, "R")) << halt.header;
    EXPECT_EQ(d.boxes.shown.size(), 1u) << halt.header;
  }
}

TEST(Halt, AResetThatFailsIsTold) {
  for (const Halt& halt : Halts()) {
    HaltedDesk d;
    d.boxes.setNextAnswer(Answer::Yes);
    Handle(d, halt.header, halt.b2);
    ASSERT_EQ(d.boxes.shown.size(), 2u) << halt.header;
    EXPECT_EQ(d.boxes.shown[1].title, "Can't reset") << halt.header;
  }
}

TEST(Halt, EndsTheTerminalsText) {
  for (const Halt& halt : Halts()) {
    HaltedDesk d(RunWindow::fakeMMI);
    d.boxes.setNextAnswer(Answer::No);
    Handle(d, halt.header, halt.b2);
    EXPECT_FALSE(d.source.display.MMIActive) << halt.header;
  }
}

TEST(Halt, EachIsAlsoToldWithNoRunWindowUp) {
  for (const Halt& halt : Halts()) {
    HaltedDesk d(RunWindow::None);
    d.boxes.setNextAnswer(Answer::No);
    Handle(d, halt.header, halt.b2);
    EXPECT_EQ(d.boxes.shown.size(), 1u) << halt.header;
    EXPECT_EQ(d.run.hides, 0) << halt.header;
  }
}

TEST(Halt, IsRememberedUntilTheNextRun) {
  for (const Halt& halt : Halts()) {
    HaltedDesk d;
    d.boxes.setNextAnswer(Answer::No);
    Handle(d, halt.header, halt.b2);
    EXPECT_TRUE(d.source.run.Halted) << halt.header;
    d.run.on_show = [&](RunWindow) { EXPECT_FALSE(d.source.run.Halted); };
    const ScriptedHub hub(d.port);
    EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  }
}

TEST(LimitHit, ClearsThePaintingBeforeTheQuestionAndAgainAfterItWhateverTheAnswer) {
  for (const Answer answer : {Answer::Yes, Answer::No}) {
    HaltedDesk d;
    d.boxes.setNextAnswer(answer);
    bool painted_during = true;
    d.boxes.on_box = [&](const ShownBox& box) {
      if (box.title != "LIMIT") return;
      painted_during = d.Painted();
      ShowLine(d.desk.grid(), 5);
    };
    Handle(d, kLimit, 2);
    EXPECT_FALSE(painted_during);
    EXPECT_FALSE(d.Painted());
  }
}

TEST(StopButton, LeavesTheHighlightAsItWas) {
  HaltedDesk d;
  d.boxes.setNextAnswer(Answer::No);
  Handle(d, kStop, 0);
  EXPECT_TRUE(d.Painted());
}

TEST(StackHalt, LeavesTheHighlightAsItWas) {
  for (const int header : {kOverflow, kUnderflow}) {
    HaltedDesk d;
    d.boxes.setNextAnswer(Answer::No);
    Handle(d, header, 5);
    EXPECT_TRUE(d.Painted()) << header;
  }
}

TEST(Halt, ALimitAndTheStopButtonTurnEventsOn) {
  for (const int header : {kLimit, kStop}) {
    HaltedDesk d;
    d.boxes.setNextAnswer(Answer::No);
    int during = -1;
    d.boxes.on_box = [&](const ShownBox&) { during = d.port.RThreshold(); };
    Handle(d, header, 2);
    EXPECT_EQ(during, 1) << header;
    EXPECT_EQ(d.port.RThreshold(), 1) << header;
  }
}

TEST(LimitHit, OnAnAxisThatThereIsNotIsIgnored) {
  for (const int axis : {8, 9, 100, 127}) {
    HaltedDesk d;
    Handle(d, kLimit, axis);
    EXPECT_TRUE(d.boxes.shown.empty()) << axis;
    EXPECT_EQ(d.run.hides, 0) << axis;
    EXPECT_TRUE(d.Painted()) << axis;
  }
}

const std::string kNotOnText =
    "Your program is attempting to execute a move on axis 4 but the drive is disabled.  This error can occur "
    "if "
    "a Change Current instruction in your program has turned the current off.  Otherwise, you should connect "
    "the "
    "drive to Servo Trim (for Zenu servo drives) or Setup Desk (for Dresk drives) and make sure it is "
    "programmed "
    "for use with the Hub.  You must cycle power to reset this error.";

TEST(DriveDisabled, TellsFirstAndHidesTheWindowAfterwards) {
  HaltedDesk d;
  RunWindow during = RunWindow::None;
  bool painted_during = false;
  d.boxes.on_box = [&](const ShownBox&) {
    during = d.run.active;
    painted_during = d.Painted();
  };
  Handle(d, kDisabled, 3);
  EXPECT_EQ(d.boxes.shown, (std::vector<ShownBox>{{kNotOnText, "Drive Error", Buttons::OK, Icon::Stop}}));
  EXPECT_EQ(during, RunWindow::ExecStatus);
  EXPECT_TRUE(painted_during);
  EXPECT_EQ(d.run.active, RunWindow::None);
  EXPECT_FALSE(d.Painted());
  EXPECT_TRUE(d.port.sent.empty());
}

using Labels = std::array<std::string, 14>;
const Labels kDesignLabels = {"Position Limit",    "CCW Limit",       "CW Limit",      "drive overtemp",
                              "excess regen",      "over voltage",    "under voltage", "motor short",
                              "bad hall sensor",   "bad encoder",     "comm error",    "save failed",
                              "timing wiz failed", "current foldback"};

Labels StepperLabels() {
  Labels labels = kDesignLabels;
  labels[13] = "motor resistance";
  labels[8] = "open motor winding";
  labels[12] = "move while disabled";
  return labels;
}

Labels DreskLabels() {
  Labels labels = StepperLabels();
  labels[4] = "reserved";
  return labels;
}

TEST(DriveFault, TheFamilyOfTheDriveChoosesTheWords) {
  for (std::int16_t model = 0; model <= 51; ++model) {
    HaltedDesk d;
    d.source.program.Axis.DriveModel.fill(0);
    d.source.program.Axis.DriveModel[3] = model;
    Handle(d, kFault, 3, 1, 2);
    ASSERT_EQ(d.run.faults.size(), 1u) << model;
    const ServoFaultPanel& panel = d.run.faults[0];
    const bool pelmar = model >= 26 && model <= 35;
    const bool dresk = model >= 36 && model <= 43;
    EXPECT_EQ(panel.caption, "Drive Error");
    EXPECT_EQ(panel.Label1, dresk ? DreskLabels() : pelmar ? StepperLabels() : kDesignLabels) << model;
    EXPECT_EQ(panel.FaultMessage,
              pelmar || dresk ? "We are experiencing a fault on axis 4. The program has been halted."
                              : "We are experiencing a servo fault on axis 4. The program has been halted.")
        << model;
    EXPECT_EQ(panel.code, 130) << model;
  }
}

TEST(DriveFault, TheCodeIsInTwoPartsOfSevenBits) {
  struct Case {
    int b3;
    int b4;
    int code;
  };
  for (const Case& c : {Case{0, 0, 0}, Case{0, 127, 127}, Case{1, 0, 128}, Case{127, 127, 16383}}) {
    HaltedDesk d;
    Handle(d, kFault, 0, c.b3, c.b4);
    ASSERT_EQ(d.run.faults.size(), 1u);
    EXPECT_EQ(d.run.faults[0].code, c.code);
  }
}

TEST(DriveFault, HidesTheRunWindowAndClearsThePaintingWithoutABox) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    HaltedDesk d(window);
    Handle(d, kFault, 0, 0, 1);
    EXPECT_EQ(d.run.hides, 1);
    EXPECT_FALSE(d.Painted());
    EXPECT_TRUE(d.boxes.shown.empty());
    EXPECT_TRUE(d.port.sent.empty());
    EXPECT_TRUE(d.source.run.Halted);
  }
}

TEST(DriveFault, EndsTheTerminalsText) {
  for (const int header : {kFault, kDisabled}) {
    HaltedDesk d(RunWindow::fakeMMI);
    Handle(d, header, 0, 0, 1);
    EXPECT_FALSE(d.source.display.MMIActive) << header;
  }
}

TEST(DriveFault, ASecondOneRefreshesThePanel) {
  HaltedDesk d;
  Handle(d, kFault, 0, 0, 1);
  Handle(d, kFault, 1, 0, 2);
  ASSERT_EQ(d.run.faults.size(), 2u);
  EXPECT_EQ(d.run.faults[1].code, 2);
  EXPECT_EQ(d.run.faults[1].FaultMessage,
            "We are experiencing a servo fault on axis 2. The program has been halted.");
}

TEST(DriveFault, OnAnAxisThatThereIsNotIsIgnored) {
  for (const int header : {kFault, kDisabled}) {
    for (const int axis : {8, 9, 127}) {
      HaltedDesk d;
      Handle(d, header, axis, 0, 1);
      EXPECT_TRUE(d.boxes.shown.empty()) << axis;
      EXPECT_TRUE(d.run.faults.empty()) << axis;
      EXPECT_EQ(d.run.hides, 0) << axis;
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
