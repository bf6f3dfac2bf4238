// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/drive_scan.h"

#include <gtest/gtest.h>

#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

struct ScanDesk : FakeDesk {
  ScriptedHub hub{port};
};

TEST(ScanDrives, StopsTheHubAndAsksForModelsAndRevisions) {
  ScanDesk d;
  d.hub.drives = Bytes({1, 5, 4, 3, 3, 0, 2, 8, 5, 4, 7, 6, 8, 150, 0, 0});
  d.hub.drive_revisions = "189153189189189189100000";
  const DriveScan found = ScanDrives(d.desk);
  EXPECT_EQ(d.port.sent, (std::vector<std::string>{"S", "D", "R"}));
  EXPECT_EQ(found[0].model, 1);
  EXPECT_EQ(found[0].revision, 1.89F);
  EXPECT_EQ(found[1].model, 4);
  EXPECT_EQ(found[1].revision, 1.53F);
  EXPECT_EQ(found[2].model, 0) << "identity 0 is none";
  EXPECT_EQ(found[3].model, std::nullopt) << "no model has identity 8";
  EXPECT_EQ(found[6].model, 45);
  EXPECT_EQ(found[7].revision, 0.0F);
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_FALSE(d.source.link.Busy);
  EXPECT_EQ(d.port.threshold, 1);
}

TEST(ScanDrives, OnAHubQuadAsksForFourAxes) {
  ScanDesk d;
  d.source.program.HubIndex = HubQuad;
  d.hub.drives = Bytes({1, 5, 4, 3, 3, 2, 2, 7});
  d.hub.drive_revisions = "189189189153";
  const DriveScan found = ScanDrives(d.desk);
  EXPECT_EQ(found[3].model, 2);
  EXPECT_EQ(found[4].model, std::nullopt);
}

TEST(ScanDrives, AHubThatDoesNotAnswerIsToldOnce) {
  ScanDesk d;
  d.hub.instead["D"] = "";
  const DriveScan found = ScanDrives(d.desk);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(
      d.boxes.shown[0].text,
      "The Tavlo Hub is not responding to the D command.  Is it connected to the right port and turned on?");
  for (const FoundDrive& drive : found) EXPECT_EQ(drive.model, std::nullopt);
  EXPECT_EQ(d.port.threshold, 1);
}

TEST(ScanDrives, ModelsStandWithoutTheirRevisions) {
  ScanDesk d;
  d.hub.instead["R"] = "189";
  const DriveScan found = ScanDrives(d.desk);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text,
            "The Tavlo Hub is not responding (R).  Is it connected to the right port and turned on?");
  EXPECT_EQ(found[0].model, 1);
  EXPECT_EQ(found[0].revision, std::nullopt);
}

TEST(ScanDrives, APortThatVanishedMeanwhileIsToldAsThat) {
  ScanDesk d;
  d.hub.on_place = [&](const std::string& place) {
    if (place != "D") return;
    d.port.is_open = false;
    d.source.link.PortLost = true;
  };
  static_cast<void>(ScanDrives(d.desk));
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text.find("not responding"), std::string::npos) << d.boxes.shown[0].text;
}

TEST(ScanDrives, LeavesAnythingInTheAnswersWithoutHarm) {
  for (int code = 0; code < 256; ++code) {
    ScanDesk d;
    d.hub.drives = std::string(16, static_cast<char>(code));
    d.hub.drive_revisions = std::string(24, static_cast<char>(code));
    const DriveScan found = ScanDrives(d.desk);
    const int model = DriveIdToModel(code);
    EXPECT_EQ(found[5].model, model == kUnknownModel ? std::nullopt : std::optional(model)) << code;
  }
}

}  // namespace
}  // namespace tavlo::testing
