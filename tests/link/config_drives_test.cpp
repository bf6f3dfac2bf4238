// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/drive_check.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

/// No axis has a drive that is set up by text commands.
void NoDigitalDrives(Program& program) {
  program.Axis.DriveModel.fill(1);
}

TEST(ConfigDSPdrives, EachDigitalDriveGetsEightCommandsInOrder) {
  FakeDesk d;
  NoDigitalDrives(d.source.program);
  d.source.program.Axis.DriveModel[0] = 10;
  d.source.program.Axis.DriveModel[7] = 44;
  ConfigDSPdrives(d.desk.program(), d.desk.link());
  const std::vector<std::string> expected = {"H",      "1PR1\r", "1TD0\r", "1AO3\r", "1BO3\r", "1MO3\r",
                                             "1AI3\r", "1SI3\r", "1SA\r",  "8PR1\r", "8TD0\r", "8AO3\r",
                                             "8BO3\r", "8MO3\r", "8AI3\r", "8SI3\r", "8SA\r",  "0HM\r"};
  EXPECT_EQ(d.port.sent, expected);
}

TEST(ConfigDSPdrives, WithoutADigitalDriveTheHubOnlyGoesInAndOutOfPassthrough) {
  FakeDesk d;
  NoDigitalDrives(d.source.program);
  ConfigDSPdrives(d.desk.program(), d.desk.link());
  EXPECT_EQ(d.port.sent, (std::vector<std::string>{"H", "0HM\r"}));
}

TEST(ConfigDSPdrives, TheFamiliesDecide) {
  for (std::int16_t model = 0; model <= 51; ++model) {
    FakeDesk d;
    NoDigitalDrives(d.source.program);
    d.source.program.Axis.DriveModel[4] = model;
    ConfigDSPdrives(d.desk.program(), d.desk.link());
    const bool set_up =
        (model >= 10 && model <= 18) || (model >= 20 && model <= 23) || (model >= 26 && model <= 50);
    EXPECT_EQ(d.port.sent.size(), set_up ? 10u : 2u) << model;
  }
}

TEST(ConfigDSPdrives, AHubQuadHasFourAxes) {
  FakeDesk d;
  d.source.program.HubIndex = HubQuad;
  d.source.program.Axis.DriveModel.fill(36);
  ConfigDSPdrives(d.desk.program(), d.desk.link());
  ASSERT_EQ(d.port.sent.size(), 2u + 4 * 8);
  EXPECT_EQ(d.port.sent[32], "4SA\r");
}

TEST(ConfigDSPdrives, NoReplyIsAwaitedAndWhatCameIsThrownAway) {
  FakeDesk d;
  d.source.program.Axis.DriveModel.fill(36);
  d.port.on_output = [&](const std::string& bytes) { d.port.Reply("*" + bytes); };
  const double start = d.clock.now;
  ConfigDSPdrives(d.desk.program(), d.desk.link());
  EXPECT_EQ(d.clock.now, start);
  EXPECT_EQ(d.port.InBufferCount(), 0);
}

TEST(ConfigDSPdrives, EventsAreOffMeanwhileAndAsBeforeAfterwards) {
  for (const int before : {0, 1, 3}) {
    FakeDesk d;
    d.port.threshold = before;
    std::vector<int> during;
    d.port.on_output = [&](const std::string&) { during.push_back(d.port.RThreshold()); };
    ConfigDSPdrives(d.desk.program(), d.desk.link());
    ASSERT_FALSE(during.empty());
    for (const int threshold : during) EXPECT_EQ(threshold, 0);
    EXPECT_EQ(d.port.RThreshold(), before);
  }
}

}  // namespace
}  // namespace tavlo::testing
