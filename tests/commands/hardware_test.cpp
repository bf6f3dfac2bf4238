// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/hardware.h"

#include <gtest/gtest.h>

#include "session/grid.h"
#include "support/fake_desk.h"
#include "support/fake_editors.h"

namespace tavlo::testing {
namespace {

struct HardwareDesk : FakeDesk {
  HardwareDesk() {
    desk.editors = &editors;
    Line(3) = {.Type = FL, .Dist = 20000, .Speed = 1};
    ShowProgram(desk);
    source.Changed = false;
  }
  void Run() {
    ChangeRes(desk, [] {
      DriveScan found;
      found[0].model = 7;
      return found;
    });
  }

  FakeEditors editors;
};

TEST(ChangeRes, RefreshesTheAxisSummaryAndAllDescriptions) {
  HardwareDesk d;
  d.editors.confirms = true;
  const std::string before = d.source.shown.rows[3].desc;
  d.Run();
  EXPECT_EQ(d.editors.log, std::vector<std::string>{"hardware"});
  EXPECT_TRUE(d.source.Changed);
  EXPECT_NE(d.source.shown.rows[3].desc, before);
  EXPECT_EQ(d.source.shown.rows[3].desc.substr(0, 4), "Saw:");
}

TEST(ChangeRes, CancelIsNoChange) {
  HardwareDesk d;
  d.Run();
  EXPECT_FALSE(d.source.Changed);
  EXPECT_FALSE(d.source.Editing);
}

TEST(ChangeRes, HandsTheScanOver) {
  HardwareDesk d;
  d.editors.scans = true;
  d.Run();
  EXPECT_EQ(d.editors.found[0].model, 7);
}

TEST(ChangeRes, KeepsOtherDialogsOutWhileItStands) {
  HardwareDesk d;
  d.editors.meanwhile = [&] {
    EXPECT_TRUE(d.source.Editing);
    if (d.editors.log.size() == 1) d.Run();
  };
  d.Run();
  EXPECT_EQ(d.editors.log.size(), 1U);
}

TEST(ChangeRes, DoesNothingUnderATransferOrARun) {
  HardwareDesk d;
  d.source.link.Busy = true;
  d.Run();
  d.source.link.Busy = false;
  d.run.active = RunWindow::ExecStatus;
  d.Run();
  EXPECT_TRUE(d.editors.log.empty());
}

}  // namespace
}  // namespace tavlo::testing
