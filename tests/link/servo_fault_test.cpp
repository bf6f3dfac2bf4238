// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/execution.h"
#include "link/receive.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

std::string Fault(int axis, int code) {
  return Bytes({211, axis, code >> 7, code & 127});
}

/// A program runs in the terminal.
struct FaultyDesk : FakeDesk {
  FaultyDesk() {
    port.OnComm = [this] { NewOnComm(desk); };
    run.active = RunWindow::fakeMMI;
    StartRun(desk, RunWindow::fakeMMI);
    port.sent.clear();
  }
};

TEST(ServoFault, ACodeOfZeroComesWithTheHeadlineOfTheAxisAndNoBit) {
  for (int axis = 0; axis < kAxes; ++axis) {
    FaultyDesk d;
    d.source.program.Axis.DriveModel.fill(8);
    d.port.Receive(Fault(axis, 0));
    ASSERT_EQ(d.run.faults.size(), 1u);
    EXPECT_EQ(d.run.faults[0].code, 0);
    EXPECT_EQ(d.run.faults[0].FaultMessage, "We are experiencing a servo fault on axis " +
                                                std::to_string(axis + 1) + ". The program has been halted.");
  }
}

TEST(ServoFault, EachOfTheFourteenBitsArrivesAlone) {
  for (int bit = 0; bit < 14; ++bit) {
    FaultyDesk d;
    d.port.Receive(Fault(0, 1 << bit));
    ASSERT_EQ(d.run.faults.size(), 1u);
    EXPECT_EQ(d.run.faults[0].code, 1 << bit);
    EXPECT_EQ(d.run.faults[0].Label1.size(), 14u);
  }
}

TEST(ServoFault, TheLabelsAreThoseOfTheAxisAndNotOfItsNeighbours) {
  FaultyDesk d;
  d.source.program.Axis.DriveModel.fill(8);
  d.source.program.Axis.DriveModel[4] = 36;
  d.port.Receive(Fault(3, 16) + Fault(4, 16) + Fault(5, 16));
  ASSERT_EQ(d.run.faults.size(), 3u);
  EXPECT_EQ(d.run.faults[0].Label1[4], "excess regen");
  EXPECT_EQ(d.run.faults[1].Label1[4], "reserved");
  EXPECT_EQ(d.run.faults[2].Label1[4], "excess regen");
}

TEST(ServoFault, TheRunWindowIsGoneBeforeThePanelComesUp) {
  struct Watch : FakeRun {
    void ShowServoFault(const ServoFaultPanel& panel) override {
      active_at_fault = active;
      FakeRun::ShowServoFault(panel);
    }
    RunWindow active_at_fault = RunWindow::ExecStatus;
  };
  FaultyDesk d;
  Watch watch;
  watch.active = RunWindow::fakeMMI;
  Desk watched{d.source, d.port,    d.boxes, d.clock,    d.loop,    d.beeper, d.view,
               watch,    d.downbox, d.upbox, d.settings, d.dialogs, d.files,  d.loading};
  d.port.OnComm = [&] { NewOnComm(watched); };
  d.port.Receive(Fault(0, 1));
  EXPECT_EQ(watch.active_at_fault, RunWindow::None);
  EXPECT_EQ(watch.faults.size(), 1u);
}

TEST(ServoFault, AnotherFaultWhileThePanelIsUpReachesItWithItsOwnCode) {
  struct Nesting : FakeRun {
    void ShowServoFault(const ServoFaultPanel& panel) override {
      FakeRun::ShowServoFault(panel);
      if (during) std::exchange(during, {})();
    }
    std::function<void()> during;
  };
  FaultyDesk d;
  Nesting nesting;
  Desk nested{d.source, d.port,    d.boxes, d.clock,    d.loop,    d.beeper, d.view,
              nesting,  d.downbox, d.upbox, d.settings, d.dialogs, d.files,  d.loading};
  d.port.OnComm = [&] { NewOnComm(nested); };
  nesting.during = [&] { d.port.Receive(Fault(1, 2)); };
  d.port.Receive(Fault(0, 1) + Fault(2, 4));
  ASSERT_EQ(nesting.faults.size(), 3u);
  EXPECT_EQ(nesting.faults[0].code, 1);
  EXPECT_EQ(nesting.faults[1].code, 4) << "what stood behind it in the same read came before the newer one";
  EXPECT_EQ(nesting.faults[2].code, 2);
}

}  // namespace
}  // namespace tavlo::testing
