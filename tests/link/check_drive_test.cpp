// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/drive_check.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

const ShownBox kNoHubBox = {
    "The Tavlo Hub is not communicating.  Is it connected to the right port and turned on?  Do you have the "
    "right comm port selected?  Perhaps cycling power will help.",
    "Communication Error", Buttons::OK, Icon::Question};
const ShownBox kNoHubShortBox = {
    "The Tavlo Hub is not communicating.  Is it connected to the right port and turned on?  Perhaps cycling "
    "power will help.",
    "Communication Error", Buttons::OK, Icon::Question};
constexpr std::string_view kOneCharacter =
    "The Tavlo Hub is responding to the CheckDrive command with only one character.";

struct CheckDesk : FakeDesk {
  ScriptedHub hub{port};
};

TEST(RevisionOf, IsTheBytesHundredthsAboveOne) {
  EXPECT_EQ(RevisionOf(0), 1.0F);
  EXPECT_EQ(RevisionOf(5), 1.05F);
  EXPECT_EQ(RevisionOf(6), 1.06F);
  EXPECT_EQ(RevisionOf(8), 1.08F);
  EXPECT_EQ(RevisionOf(10), 1.10F);
  EXPECT_EQ(RevisionOf(19), 1.19F);
  EXPECT_EQ(RevisionOf(38), 1.38F);
  EXPECT_EQ(RevisionOf(53), 1.53F);
  EXPECT_EQ(RevisionOf(89), 1.89F);
  EXPECT_EQ(RevisionOf(255), 3.55F);
}

TEST(VersionText, HasTwoDecimals) {
  EXPECT_EQ(VersionText(1.0F), "1.00");
  EXPECT_EQ(VersionText(1.05F), "1.05");
  EXPECT_EQ(VersionText(1.38F), "1.38");
  EXPECT_EQ(VersionText(3.55F), "3.55");
}

TEST(CheckDrive, TheReplyOfAKnownHubIsShown) {
  struct Case {
    int model;
    HubModel index;
  };
  for (const Case& c : {Case{8, HubOcto}, Case{24, HubQuad}}) {
    CheckDesk d;
    d.source.program.HubIndex = c.index == HubOcto ? HubQuad : HubOcto;
    d.hub.model = c.model;
    EXPECT_EQ(CheckDrive(d.desk), Bytes({38, c.model}));
    EXPECT_EQ(d.source.program.HubVersion, 1.38F);
    EXPECT_EQ(d.source.link.DriveVersion, "1.38");
    EXPECT_EQ(d.source.program.HubIndex, c.index);
    EXPECT_GT(d.view.hub, 0);
    EXPECT_GT(d.view.drives, 0) << "another model shows other axes";
    EXPECT_TRUE(d.boxes.shown.empty());
    EXPECT_EQ(d.port.AllSent(), "C");
  }
}

TEST(CheckDrive, AnUnknownModelChangesNeitherVersionTextNorModelAndIsStillAnAnswer) {
  for (const int model : {16, 0, 1, 9, 25, 255}) {
    CheckDesk d;
    d.source.program.HubIndex = HubQuad;
    d.hub.model = model;
    EXPECT_EQ(CheckDrive(d.desk), Bytes({38, model}));
    EXPECT_EQ(d.source.program.HubIndex, HubQuad);
    EXPECT_EQ(d.source.link.DriveVersion, "?");
    EXPECT_EQ(d.source.program.HubVersion, 1.38F);
    EXPECT_TRUE(d.boxes.shown.empty());
  }
}

TEST(CheckDrive, AReplyInTwoPiecesIsPutTogether) {
  CheckDesk d;
  d.hub.instead["C"] = Bytes({52});
  d.port.on_output = [&](const std::string&) {
    d.port.Reply(Bytes({52}), 0.3);
    d.port.Reply(Bytes({24}), 0.9);
  };
  EXPECT_EQ(CheckDrive(d.desk), Bytes({52, 24}));
  EXPECT_EQ(d.source.program.HubVersion, 1.52F);
  EXPECT_EQ(d.source.program.HubIndex, HubQuad);
}

TEST(CheckDrive, SilenceIsToldAfterASecond) {
  CheckDesk d;
  d.hub.instead["C"] = "";
  const double start = d.clock.now;
  EXPECT_EQ(CheckDrive(d.desk), "");
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kNoHubBox});
  EXPECT_EQ(d.boxes.told, std::vector<Tells>{Tells::HubSilent});
  EXPECT_GE(d.clock.now - start, 1.0);
  EXPECT_LT(d.clock.now - start, 1.1);
  EXPECT_EQ(d.source.program.HubVersion, 0.0F);
  EXPECT_EQ(d.source.link.DriveVersion, "?");
  EXPECT_EQ(d.port.AllSent(), "C") << "there is no second try";
  EXPECT_EQ(d.loop.yields, 0) << "the wait does not yield";
}

TEST(CheckDrive, OneByteWithinTheSecondIsTheSameAsNone) {
  CheckDesk d;
  d.hub.instead["C"] = Bytes({38});
  EXPECT_EQ(CheckDrive(d.desk), "");
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kNoHubBox});
}

TEST(CheckDrive, AnAnswerJustInTimeCountsAndALaterOneDoesNot) {
  CheckDesk d;
  d.hub.delays["C"] = 0.95;
  EXPECT_EQ(CheckDrive(d.desk).size(), 2u);
  CheckDesk late;
  late.hub.delays["C"] = 1.05;
  EXPECT_EQ(CheckDrive(late.desk), "");
}

TEST(CheckDrive, WhatWaitedBeforeIsNotTakenForTheReply) {
  CheckDesk d;
  d.port.Reply(Bytes({99, 24, 1, 2}));
  EXPECT_EQ(CheckDrive(d.desk), Bytes({38, 8}));
}

TEST(CheckDrive, EventsAreOffDuringTheExchangeAndAsBeforeAfterwards) {
  for (const int before : {0, 1, 3}) {
    for (const bool silent : {false, true}) {
      CheckDesk d;
      d.port.threshold = before;
      if (silent) d.hub.instead["C"] = "";
      int during = -1;
      d.hub.on_place = [&](const std::string&) { during = d.port.RThreshold(); };
      EXPECT_EQ(CheckDrive(d.desk).empty(), silent);
      EXPECT_EQ(during, 0);
      EXPECT_EQ(d.port.RThreshold(), before);
    }
  }
}

TEST(CheckDrive, AWaitAcrossMidnightLastsUntilTheReplyComes) {
  CheckDesk d;
  d.clock.now = 86399.8;
  d.hub.delays["C"] = 30;
  EXPECT_EQ(CheckDrive(d.desk), Bytes({38, 8}));
}

TEST(CheckDrive, WithNoPortOpenTheHubIsNotCommunicating) {
  CheckDesk d;
  d.port.is_open = false;
  d.source.link.ComNum = 0;
  EXPECT_EQ(CheckDrive(d.desk), "");
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kNoHubBox});
}

TEST(SilentCheckDrive, GivesTheReplyAndShowsNothing) {
  CheckDesk d;
  d.hub.model = 24;
  EXPECT_EQ(SilentCheckDrive(d.desk.link()), Bytes({38, 24}));
  EXPECT_EQ(d.source.program.HubVersion, 0.0F);
  EXPECT_EQ(d.source.link.DriveVersion, "?");
  EXPECT_EQ(d.source.program.HubIndex, HubOcto);
  EXPECT_EQ(d.view.hub, 0);
  EXPECT_EQ(d.port.AllSent(), "C");
}

TEST(SilentCheckDrive, SilenceIsToldInFewerWords) {
  CheckDesk d;
  d.hub.instead["C"] = "";
  EXPECT_EQ(SilentCheckDrive(d.desk.link()), "");
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kNoHubShortBox});
  EXPECT_EQ(d.boxes.told, std::vector<Tells>{Tells::HubSilent});
}

TEST(SilentCheckDrive, ASecondByteMayComeASecondAfterTheFirst) {
  CheckDesk d;
  d.port.on_output = [&](const std::string&) {
    d.port.Reply(Bytes({38}), 0.9);
    d.port.Reply(Bytes({24}), 1.8);
  };
  EXPECT_EQ(SilentCheckDrive(d.desk.link()), Bytes({38, 24}));
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(SilentCheckDrive, OneByteAloneIsTold) {
  CheckDesk d;
  d.hub.instead["C"] = Bytes({38});
  const double start = d.clock.now;
  EXPECT_EQ(SilentCheckDrive(d.desk.link()), "");
  ASSERT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_EQ(d.boxes.shown[0].text, kOneCharacter);
  EXPECT_EQ(d.boxes.shown[0].icon, Icon::Exclamation);
  EXPECT_EQ(d.boxes.shown[0].buttons, Buttons::OK);
  EXPECT_GE(d.clock.now - start, 1.0);
  EXPECT_LT(d.clock.now - start, 1.1);
}

TEST(SilentCheckDrive, EventsAreOffDuringTheExchangeAndAsBeforeAfterwards) {
  for (const int before : {0, 1, 3}) {
    for (const char* reply : {"", "&", "&\b"}) {
      CheckDesk d;
      d.port.threshold = before;
      d.hub.instead["C"] = reply;
      int during = -1;
      d.hub.on_place = [&](const std::string&) { during = d.port.RThreshold(); };
      (void)SilentCheckDrive(d.desk.link());
      EXPECT_EQ(during, 0) << reply;
      EXPECT_EQ(d.port.RThreshold(), before) << reply;
    }
  }
}

TEST(ScanDrivesRV, ReadsThreeDigitsForEachAxis) {
  CheckDesk d;
  d.hub.drive_revisions = "100153189199205000999110";
  std::array<float, kAxisSlots> revisions{};
  revisions[8] = 7;
  ScanDrivesRV(d.desk.link(), HubAxes(d.desk.program()), revisions);
  const std::array<float, kAxisSlots> expected = {1.0F, 1.53F, 1.89F, 1.99F, 2.05F, 0.0F, 9.99F, 1.1F, 7.0F};
  EXPECT_EQ(revisions, expected);
  EXPECT_EQ(d.port.AllSent(), "R");
}

TEST(ScanDrivesRV, OnAHubQuadTheReplyIsTwelveBytes) {
  CheckDesk d;
  d.source.program.HubIndex = HubQuad;
  d.hub.drive_revisions = "100153189199";
  std::array<float, kAxisSlots> revisions{};
  revisions[4] = 5;
  ScanDrivesRV(d.desk.link(), HubAxes(d.desk.program()), revisions);
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(revisions[3], 1.99F);
  EXPECT_EQ(revisions[4], 5.0F);
}

TEST(ScanDrivesRV, AnAnswerOfFewerBytesIsTheSameAsNone) {
  for (const std::size_t bytes : {0u, 1u, 12u, 23u}) {
    CheckDesk d;
    d.hub.instead["R"] = std::string(bytes, '1');
    std::array<float, kAxisSlots> revisions{};
    revisions.fill(4);
    const std::array<float, kAxisSlots> before = revisions;
    ScanDrivesRV(d.desk.link(), HubAxes(d.desk.program()), revisions);
    EXPECT_EQ(revisions, before);
    const std::vector<ShownBox> expected = {
        {"The Tavlo Hub is not responding (R).  Is it connected to the right port and turned on?",
         std::string(kApplicationTitle), Buttons::OK, Icon::Question}};
    EXPECT_EQ(d.boxes.shown, expected);
    EXPECT_EQ(d.port.InBufferCount(), static_cast<int>(bytes)) << "the reply is not read";
  }
}

TEST(ScanDrivesRV, TheThresholdIsOneAfterwardsWhateverItWas) {
  for (const int before : {0, 1, 3}) {
    for (const char* reply : {"", "189189189189189189189189"}) {
      CheckDesk d;
      d.port.threshold = before;
      d.hub.instead["R"] = reply;
      int during = -1;
      d.hub.on_place = [&](const std::string&) { during = d.port.RThreshold(); };
      std::array<float, kAxisSlots> revisions{};
      ScanDrivesRV(d.desk.link(), HubAxes(d.desk.program()), revisions);
      EXPECT_EQ(during, 0);
      EXPECT_EQ(d.port.RThreshold(), 1);
    }
  }
}

TEST(ScanDrivesRV, BytesThatAreNoDigitsAreReadAsFarAsTheyAreANumber) {
  CheckDesk d;
  std::string noise;
  for (int i = 0; i < 24; ++i) noise += static_cast<char>(255 - i * 10);
  d.hub.drive_revisions = noise;
  std::array<float, kAxisSlots> revisions{};
  ScanDrivesRV(d.desk.link(), HubAxes(d.desk.program()), revisions);
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(revisions[0], 0.0F);
}

}  // namespace
}  // namespace tavlo::testing
