// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

TEST(HubDownload, EveryKindOfLineIsAcknowledgedWhenItsLastByteHasCome) {
  const Feed feed;
  const std::vector<std::string> lines{FeedLength(feed),
                                       FeedReturn(feed, 40, 10),
                                       FeedSensor(feed, 1, 1),
                                       FeedSensorReturn(feed, 1, 1, 40, 10),
                                       WaitTime(10),
                                       WaitInput(0, 1, 1),
                                       GoTo(0),
                                       Repeat(0, 3),
                                       EndRepeat(0, 7),
                                       SetOutput(0, 1, 1),
                                       IfInput(0, 1, 1, 3),
                                       Empty(),
                                       SeekHome(0, 0, 1, 1),
                                       Comment("x"),
                                       Display(0),
                                       FeedPosition(feed),
                                       MotorPower(0, true),
                                       SetPosition(0, 0, 5),
                                       Bytes({18, 1, 1, 5, 0}),
                                       MotorCurrent(0, 1, 20),
                                       IfInputs(0, 1, 1, 3, 1),
                                       FeedOutput(feed, 100, 1, 1, 10),
                                       FeedChange(feed, 100, 40),
                                       WaitInputs(0, 1, 1, 1),
                                       FeedSafety(feed, 1, 1, 100, 3),
                                       ResetLoop(0, 7),
                                       Bytes({26, 0, 0, 15, 1, 2, 3, 4, 5, 6, 7, 8, 0}),
                                       LearnPosition(0, 15),
                                       Call(3),
                                       Return(),
                                       IfMoving(0, 3),
                                       StartStop(3, 0),
                                       Bytes({82, 0, 0, 1, 0}) + "knob\xFF",
                                       Bytes({14, 0}) + std::string(15, '\1'),
                                       Bytes({14, 4}) + std::string(13, '\1'),
                                       Bytes({14, 5}) + std::string(4, '\1')};
  HubBench bench;
  ASSERT_EQ(bench.Ask("F"), "Y");
  for (const std::string& line : lines) {
    EXPECT_EQ(bench.Ask(line.substr(0, line.size() - 1)), "") << "code " << (line[0] & 63);
    EXPECT_EQ(bench.Ask(line.substr(line.size() - 1)), "Y") << "code " << (line[0] & 63);
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto slot = bench.hub.MemoryImage().subspan(i * 32, lines[i].size());
    EXPECT_EQ(std::string(slot.begin(), slot.end()), lines[i]);
  }
}

TEST(HubDownload, TheSumIsThatOfAllBytesModulo65536) {
  HubBench bench;
  bench.Download(std::vector<std::string>(200, Comment(std::string(27, '\xFE'))), std::string(256, '\xFF'),
                 std::string(500, '\xAA') + '\0');
}

TEST(HubDownload, TheSystemBlockIsAcknowledgedEveryThirtyTwoBytes) {
  HubBench bench;
  bench.Ask("F" + std::string(200, '\x0B'));
  for (int i = 1; i <= 256; ++i) EXPECT_EQ(bench.Ask("a"), i % 32 == 0 ? "Y" : "") << i;
}

TEST(HubDownload, ThePoolEndsAtItsZeroEvenAtABlocksEnd) {
  HubBench bench;
  bench.Download({}, SystemOf(1), std::string(31, 'p') + '\0');
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
  bench.Download({}, SystemOf(1), std::string(32, 'p') + '\0');
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
}

TEST(HubDownload, APoolBeyondItsPlaceIsSummedAndNotKept) {
  HubBench bench;
  bench.Download({}, SystemOf(1), std::string(3000, 'p') + '\0');
  EXPECT_EQ(bench.hub.MemoryImage()[8191], 'p');
  bench.Download({}, SystemOf(1), std::string(1, '\0'));
  EXPECT_EQ(bench.hub.MemoryImage()[8191], 0) << "an earlier pool leaves nothing behind";
}

TEST(HubDownload, AShorterLineLeavesNothingOfTheOneBefore) {
  HubBench bench;
  bench.Download({Comment(std::string(27, 'c'))});
  bench.Download({WaitTime(5)});
  for (std::size_t i = 3; i < 32; ++i) EXPECT_EQ(bench.hub.MemoryImage()[i], 0) << i;
}

TEST(HubDownload, SilenceOfNineTenthsOfASecondEndsIt) {
  HubBench bench;
  EXPECT_EQ(bench.Ask("F" + WaitTime(5).substr(0, 2)), "Y");
  bench.Wait(0.89);
  EXPECT_EQ(bench.hub.State(), HubState::Downloading);
  bench.Wait(0.02);
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
  bench.Download({WaitTime(5)});
}

TEST(HubDownload, EveryByteGivesItAnotherNineTenths) {
  HubBench bench;
  bench.Ask("F");
  for (int i = 0; i < 20; ++i) {
    bench.Wait(0.8);
    EXPECT_EQ(bench.Ask("\x0B"), "Y");
  }
}

TEST(HubDownload, TheHubAsksToBeWokenForTheSilence) {
  HubBench bench;
  bench.Ask("F");
  ASSERT_TRUE(bench.hub.NextEvent().has_value());
  EXPECT_NEAR(*bench.hub.NextEvent(), bench.now + 0.9, 1e-9);
}

TEST(HubDownload, ADownloadStopsARun) {
  HubBench bench;
  bench.Download({WaitTime(1000)});
  bench.Run(1);
  EXPECT_EQ(bench.Ask("F"), "Y");
  bench.Wait(1);
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
}

TEST(HubDownload, OldFirmwareTakesShortMultiInputLines) {
  HubOptions options;
  options.firmware = 8;
  HubBench bench(options);
  bench.Download({WaitInputs(0, 1, 1, 1).substr(0, 5), IfInputs(0, 1, 1, 3, 1).substr(0, 6)});
  EXPECT_EQ(bench.hub.MemoryImage()[32], 20);
}

}  // namespace
}  // namespace tavlo::hubsim
