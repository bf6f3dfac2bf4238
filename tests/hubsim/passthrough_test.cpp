// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

struct TalkCase {
  std::string_view command;
  std::string answer;
};

TEST(Passthrough, TheDrivesAnswer) {
  HubOptions options;
  options.drives = {{1, 1, 0, 1, 1, 1, 1, 1}};
  options.drive_revisions[1] = 189;
  HubBench bench(options);
  bench.Download({SetPosition(0, 1, 1234), MotorPower(3, false), SetOutput(0, 1, 1)});
  bench.hub.SetInput(0, 2, false, bench.now);
  bench.Run(1);
  bench.Send("S");
  ASSERT_EQ(bench.Ask("H"), "");
  const TalkCase cases[] = {
      {"1RV\r", "2.00\r"}, {"2RV\r\n", "1.89\r"},   {"1RP\r", "-1234\r"}, {"1RS\r", "ready\r"},
      {"4RS\r", "off\r"},  {"1RI\r", "11011111\r"}, {"1RO\r", "1011\r"},  {"1RV  \r", "2.00\r"},
      {"1XX\r", "?\r"},    {"1\r", "?\r"},          {"1rv\r", "?\r"},     {"1RV5\r", "\a\r"},
      {"1PR1\r", ""},      {"1TD0\r", ""},          {"1AO3\r", ""},       {"1BO3\r", ""},
      {"1MO3\r", ""},      {"1AI3\r", ""},          {"1SI3\r", ""},       {"1SA\r", ""},
      {"1PR\r", "\a\r"},   {"1PRx\r", "\a\r"},      {"1SA1\r", "\a\r"},   {"3RV\r", ""},
      {"9RV\r", ""},       {"0RV\r", ""},           {"RV\r", ""},         {"\r", ""},
      {"00\r", ""},        {"001RV\r", "2.00\r"},
  };
  for (const TalkCase& one : cases) EXPECT_EQ(bench.Ask(one.command), one.answer) << one.command;
  EXPECT_EQ(bench.Ask("0HM\rC"), Bytes({38, 8}));
}

TEST(Passthrough, AMovingDriveSaysSo) {
  HubBench bench;
  bench.Download({FeedLength({.distance = 200000})});
  bench.Run(1);
  EXPECT_EQ(bench.Ask("H1RS\r"), "moving\r");
}

TEST(Passthrough, AHubQuadHasFourAddresses) {
  HubOptions options;
  options.model = HubModel::Quad;
  HubBench bench(options);
  bench.Download({});
  EXPECT_EQ(bench.Ask("H4RV\r"), "2.00\r");
  EXPECT_EQ(bench.Ask("5RV\r"), "");
}

TEST(Passthrough, AGreetingMeetsATerminalThatGoesOn) {
  HubBench bench;
  bench.Download({});
  bench.Ask("H");
  bench.hub.PowerUp(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({255, 38, 8, 0}));
  EXPECT_EQ(bench.Ask("00"), "");
  EXPECT_EQ(bench.hub.State(), HubState::Passthrough);
  EXPECT_EQ(bench.Ask("1RV\r"), "2.00\r");
  EXPECT_EQ(bench.Ask("0HM\rC"), Bytes({38, 8}));
}

TEST(Passthrough, AGreetingThatWasOnlySaidLeavesAWayBack) {
  HubBench bench;
  bench.Ask("H");
  EXPECT_EQ(bench.Ask("00000HM\rC"), Bytes({38, 8}));
}

TEST(Passthrough, OtherAnswersToAGreetingOpenNothing) {
  for (const std::string_view answer : {"*0", "0C0", "C", "0I0"}) {
    HubBench bench;
    bench.hub.PowerUp(bench.now);
    bench.Ask(answer);
    EXPECT_EQ(bench.hub.State(), HubState::Idle) << answer;
  }
}

}  // namespace
}  // namespace tavlo::hubsim
