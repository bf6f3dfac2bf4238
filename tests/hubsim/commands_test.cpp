// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"

namespace tavlo::hubsim {
namespace {

TEST(HubCommands, CTellsRevisionAndModel) {
  HubBench octo;
  EXPECT_EQ(octo.Ask("C"), Bytes({38, 8}));
  HubOptions options;
  options.model = HubModel::Quad;
  options.firmware = 5;
  HubBench quad(options);
  EXPECT_EQ(quad.Ask("C"), Bytes({5, 24}));
}

TEST(HubCommands, DPairsTheExpectedModelWithTheIdentityOfThePluggedDrive) {
  HubOptions options;
  options.drives = {{1, 4, 3, 2, 0, 100, 47, 8}};
  HubBench bench(options);
  bench.Download({}, SystemOf(6));
  EXPECT_EQ(bench.Ask("D"), Bytes({6, 5, 6, 3, 6, 2, 6, 7, 6, 0, 6, 200, 6, 149, 6, 9}));
}

TEST(HubCommands, DWithoutADownloadExpectsNothing) {
  HubBench bench;
  EXPECT_EQ(bench.Ask("D"), std::string(16, '\0'));
}

TEST(HubCommands, WithoutADriveListTheRightDrivesArePlugged) {
  HubBench bench;
  bench.Download({}, SystemOf(20));
  EXPECT_EQ(bench.Ask("D").substr(0, 4), Bytes({20, 63, 20, 63}));
}

TEST(HubCommands, AHubQuadAnswersForFourAxes) {
  HubOptions options;
  options.model = HubModel::Quad;
  HubBench bench(options);
  bench.Download({});
  EXPECT_EQ(bench.Ask("D").size(), 8U);
  EXPECT_EQ(bench.Ask("R").size(), 12U);
}

TEST(HubCommands, RTellsThreeDigitsADriveWhileNothingIsHalted) {
  HubOptions options;
  options.drives = {{1, 1, 0, 1, 0, 0, 0, 0}};
  options.drive_revisions = {189, 7, 123, 999, 0, 0, 0, 0};
  HubBench bench(options);
  EXPECT_EQ(bench.Ask("R"), "189007000999000000000000");
}

TEST(HubCommands, ETellsWhetherTheProgramUsesTheTerminal) {
  HubBench bench;
  EXPECT_EQ(bench.Ask("E"), "X");
  bench.Download({}, SystemOf(1, {1}));
  EXPECT_EQ(bench.Ask("E"), "M");
}

TEST(HubCommands, USendsTheImageAndItsSum) {
  HubBench bench;
  bench.Download({FeedLength({}), Comment("hello")}, SystemOf(1), "text\xFF" + std::string(1, '\0'));
  const std::string upload = bench.Ask("U");
  ASSERT_EQ(upload.size(), 8194U);
  EXPECT_EQ(upload.substr(0, 12), FeedLength({}));
  EXPECT_EQ(upload.substr(12, 20), std::string(20, '\0'));
  EXPECT_EQ(upload.substr(32, 7), Comment("hello"));
  EXPECT_EQ(upload.substr(6400, 256), SystemOf(1));
  EXPECT_EQ(upload.substr(6656, 6), "text\xFF" + std::string(1, '\0'));
  unsigned sum = 0;
  for (std::size_t i = 0; i < 8192; ++i) sum += static_cast<unsigned char>(upload[i]);
  EXPECT_EQ(upload.substr(8192), Big2(static_cast<int>(sum % 65536)));
}

TEST(HubCommands, KIsSilentBeforeAWholeDownload) {
  HubBench bench;
  EXPECT_EQ(bench.Ask("K"), "");
  EXPECT_EQ(bench.Ask("F"), "Y");
  bench.Wait(1);
  EXPECT_EQ(bench.Ask("K"), "");
}

TEST(HubCommands, PassthroughTakesEverythingUpToItsEnd) {
  HubBench bench;
  EXPECT_EQ(bench.Ask("H"), "");
  EXPECT_EQ(bench.hub.State(), HubState::Passthrough);
  EXPECT_EQ(bench.Ask("1PR1\r2SA\rCDRU\r10HM\r"), "");
  EXPECT_EQ(bench.hub.State(), HubState::Passthrough);
  EXPECT_EQ(bench.Ask("0HM\rC"), Bytes({38, 8}));
}

TEST(HubCommands, APassthroughLineOfAnyLengthIsTaken) {
  HubBench bench;
  EXPECT_EQ(bench.Ask("H" + std::string(100000, '0') + "\r0HM\rC"), Bytes({38, 8}));
}

TEST(HubCommands, UnknownBytesAreIgnored) {
  HubBench bench;
  std::string unknown;
  for (int byte = 0; byte < 256; ++byte) {
    if (std::string("CDRFKUEHXMSPrT0I*").find(static_cast<char>(byte)) == std::string::npos) {
      unknown += static_cast<char>(byte);
    }
  }
  EXPECT_EQ(bench.Ask(unknown), "");
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
}

TEST(HubCommands, AcknowledgingNothingDoesNothing) {
  HubBench bench;
  bench.Download({WaitTime(10)});
  EXPECT_EQ(bench.Ask("III"), "");
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
}

TEST(HubCommands, TheAnswerToAGreetingDoesNotRewindAProgram) {
  HubBench bench;
  bench.Download({WaitTime(10), WaitTime(1000)});
  bench.Run(1);
  ASSERT_EQ(bench.hub.RunningLine(), 1);
  EXPECT_TRUE(bench.Send("*0").empty());
  EXPECT_EQ(bench.hub.RunningLine(), 1);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("0")), "-1 +0");
}

TEST(HubCommands, PowerUpGreetsAndKeepsTheMemoryAlone) {
  HubBench bench;
  bench.Download({WaitTime(1), SetPosition(0, 0, 500), LearnPosition(0, 3), WaitTime(1000)});
  bench.Run(1);
  ASSERT_EQ(bench.hub.Variable(3), 500);
  bench.hub.PowerUp(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({255, 38, 8, 0}));
  EXPECT_EQ(bench.hub.State(), HubState::Idle);
  EXPECT_EQ(bench.hub.MemoryImage()[0], 4);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 0);
  EXPECT_EQ(bench.hub.Variable(3), 0);
}

TEST(HubCommands, AGreetingAtTheStartComesOnRequest) {
  HubOptions options;
  options.greet = true;
  HubBench bench(options);
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({255, 38, 8, 0}));
  HubBench quiet;
  EXPECT_EQ(quiet.hub.TakeOutput(), "");
}

TEST(HubCommands, AnUnpluggedHubHearsAndSaysNothingButRunsOn) {
  HubBench bench;
  bench.Download({WaitTime(100), SetOutput(0, 0, 1)});
  bench.Run(0.5);
  bench.hub.Unplug();
  EXPECT_EQ(bench.Ask("C"), "");
  EXPECT_TRUE(bench.Go(2).empty());
  bench.hub.Replug();
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
  EXPECT_EQ(bench.hub.RunningLine(), 1) << "it waits for the acknowledgement of its second line";
}

TEST(HubCommands, InputsOfTheMachineOutOfRangeAreRefused) {
  HubBench bench;
  EXPECT_FALSE(bench.hub.SetInput(8, 0, false, bench.now));
  EXPECT_FALSE(bench.hub.SetInput(-1, 0, false, bench.now));
  EXPECT_FALSE(bench.hub.SetInput(0, 16, false, bench.now));
  EXPECT_FALSE(bench.hub.HitLimit(8, bench.now));
  EXPECT_FALSE(bench.hub.Fail(8, 0, bench.now));
  EXPECT_FALSE(bench.hub.Fail(0, 16384, bench.now));
  EXPECT_FALSE(bench.hub.PressStop(bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), "");
}

}  // namespace
}  // namespace tavlo::hubsim
