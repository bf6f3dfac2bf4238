// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/download.h"
#include "link/execution.h"
#include "support/sim_desk.h"

namespace tavlo::testing {
namespace {

using Rows = std::array<std::string, 4>;

/// A program with prompts in the simulated hub, and an operator at the emulator of its terminal.
class TerminalRoad : public ::testing::Test {
 protected:
  Instruction& Prompt(int line, MMISub kind, std::string text) {
    desk.Line(line).Type = MMI;
    desk.Line(line).SubType = kind;
    desk.Line(line).Text = std::move(text);
    return desk.Line(line);
  }

  void RunWith(const std::function<void()>& during) {
    ASSERT_EQ(Download(desk.road), DownloadResult::Done);
    desk.run.on_show = [this, during](RunWindow window) {
      ASSERT_EQ(window, RunWindow::fakeMMI);
      StartRun(desk.road, window);
      Wait(0.1);
      during();
      StopRun(desk.road, window);
    };
    EXPECT_EQ(Execute(desk.road), ExecuteResult::Ran);
  }

  void Wait(double seconds) { desk.sim.RunEventLoop(seconds); }
  /// The keys one by one, as the keypad sends them.
  void Press(std::string_view keys) {
    for (const char key : keys) {
      desk.sim.Output(std::string(1, key));
      Wait(0.05);
      EXPECT_EQ(desk.source.display.textline, desk.sim.hub.Display()) << "the hub and the PC see the same";
    }
  }

  SimDesk desk;
};

TEST_F(TerminalRoad, ATextIsShownAsTheOperatorWroteIt) {
  // As the editor stores it: each row filled up to its 20 columns.
  Prompt(0, WaitEnter, "Close the clamp     and press ENTER");
  RunWith([&] {
    EXPECT_EQ(desk.source.display.textline, (Rows{"Close the clamp", "and press ENTER", "", ""}));
  });
}

TEST_F(TerminalRoad, AFullDisplayFitsToTheLastColumn) {
  Prompt(0, WaitEnter,
         std::string(20, '1') + std::string(20, '2') + std::string(20, '3') + std::string(20, '4'));
  RunWith([&] {
    EXPECT_EQ(desk.source.display.textline,
              (Rows{std::string(20, '1'), std::string(20, '2'), std::string(20, '3'), std::string(20, '4')}));
  });
}

TEST_F(TerminalRoad, AnEnteredDistanceReachesTheNextMove) {
  Instruction& length = Prompt(0, GetDistance, "Length:");
  length.DistVar = 4;
  desk.Line(1).Type = FL;
  desk.Line(1).DistIsMMI = true;
  desk.Line(1).DistVar = 4;
  const double per_unit = desk.source.program.Axis.StepsPerUnit[0];
  RunWith([&] {
    Press("99\r");
    EXPECT_EQ(desk.source.display.textline, (Rows{"Length:", "", "", "1 to 50"}));
    Press("13\b.5");
    EXPECT_EQ(desk.source.display.textline, (Rows{"Length:", "", "", "1.5"}));
    Press("\r");
    Wait(60);
    EXPECT_EQ(desk.sim.hub.Axis(0).position_steps, 1.5 * per_unit);
  });
}

TEST_F(TerminalRoad, AMenuAQuestionAndACountLeadTheProgram) {
  Instruction& menu = Prompt(0, Menu, "1 run  2 end");
  menu.MenuKey = {false, true, true, false, false, false, false, false, false};
  menu.MenuLine[1] = 5;
  menu.MenuLine[2] = 20;
  Prompt(5, GetCount, "Pieces:").DistVar = 35;
  desk.Line(6).Type = RP;
  desk.Line(6).CountIsMMI = true;
  desk.Line(6).SpeedIsMMI = true;
  desk.Line(6).DistVar = 35;
  desk.Line(7).Type = WT;
  desk.Line(7).Time = 100;
  desk.Line(8).Type = ER;
  Prompt(9, BranchYesNo, "Again?").LineNum = 0;
  RunWith([&] {
    Press("31");
    EXPECT_EQ(desk.source.display.textline[0], "Pieces:");
    Press("2\r");
    EXPECT_EQ(desk.source.display.textline[3], "Count 2");
    Wait(1);
    EXPECT_EQ(desk.source.display.textline[3], "Count 1");
    Wait(1);
    EXPECT_EQ(desk.source.display.textline, (Rows{"Again?", "", "", ""}));
    Press("+");
    EXPECT_EQ(desk.source.display.textline[0], "1 run  2 end");
  });
}

TEST_F(TerminalRoad, TheArrowsJogUntilEnter) {
  Instruction& wait = Prompt(0, WaitEnter, "Jog");
  wait.JogLR = true;
  wait.JogUD = false;
  wait.JogLRDrive = 0;
  desk.Line(1).Type = LP;
  desk.Line(1).DistVar = 15;
  desk.Line(1).Drive = 0;
  RunWith([&] {
    Press("DDDDAB");
    Press("\r");
    Wait(1);
    EXPECT_GT(desk.sim.hub.Variable(15), 0);
    EXPECT_EQ(desk.sim.hub.Variable(15), desk.sim.hub.Axis(0).position_steps);
    EXPECT_EQ(desk.sim.hub.Axis(1).position_steps, 0);
  });
}

TEST_F(TerminalRoad, ALongKnobTextIsWhole) {
  desk.Line(0).Type = FE;
  desk.Line(0).CountIsMMI = true;
  desk.Line(0).Dist = 10;
  desk.Line(0).Text = "Turn the wheel, then press ENTER";
  Prompt(1, WaitEnter, "Done");
  RunWith([&] {
    EXPECT_EQ(desk.source.display.textline, (Rows{"Turn the wheel, then", " press ENTER", "", ""}));
    Press("\r");
    EXPECT_EQ(desk.source.display.textline, (Rows{"Done", "", "", ""}));
  });
}

}  // namespace
}  // namespace tavlo::testing
