// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "forms/hardware_bench.h"

namespace tavlo {
namespace {

using testing::HardwareBench;

/// A hub with these drives behind it.
struct Scanned : HardwareBench {
  Scanned() {
    found[0] = {.model = 16, .revision = 1.53F};
    found[1] = {.model = 0, .revision = 0};
    found[2] = {.model = {}, .revision = 1.0F};
    found[3] = {.model = 47, .revision = {}};
    found[4] = {};
    program.HubVersion = 1.38F;
  }
};

TEST(HardwareScan, ShowsWhatWasFound) {
  Scanned d;
  d.Open();
  EXPECT_FALSE(d.Visible("ScanPanel"));
  EXPECT_FALSE(d.Visible("lblDriveModel(0)"));
  d.Click("Scan");
  EXPECT_EQ(d.scans, 1);
  EXPECT_TRUE(d.Visible("ScanPanel"));
  EXPECT_EQ(d.Caption("LblHubVersion"), "1.38");
  EXPECT_EQ(d.Caption("lblDriveModel(0)"), "Zenu-C-a  1.53");
  EXPECT_EQ(d.Caption("lblDriveModel(1)"), "none");
  EXPECT_EQ(d.Caption("lblDriveModel(2)"), "?") << "an identity that no model has";
  EXPECT_EQ(d.Caption("lblDriveModel(3)"), "Mirel-a2  ?") << "the firmware did not come";
  EXPECT_EQ(d.Caption("lblDriveModel(4)"), "?") << "a drive that does not answer";
  EXPECT_TRUE(d.Visible("lblDriveModel(7)"));
  d.Click("OKscan");
  EXPECT_FALSE(d.Visible("ScanPanel"));
  EXPECT_FALSE(d.Visible("lblDriveModel(0)"));
}

TEST(HardwareScan, Copy2ListCopiesTheScannedModels) {
  Scanned d;
  d.Open();
  d.Click("Scan");
  d.Click("Copy2List");
  EXPECT_EQ(d.Model(0), 16);
  EXPECT_EQ(d.Model(1), 0);
  EXPECT_EQ(d.Model(2), 3) << "? leaves the list alone";
  EXPECT_EQ(d.Model(3), 47);
  EXPECT_EQ(d.Model(4), 5);
  EXPECT_TRUE(d.Visible("lblCurrent(0)")) << "as after a click in the list";
  EXPECT_FALSE(d.Visible("TxtCurrent(1)"));
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.DriveModel[0], 16);
}

TEST(HardwareScan, Copy2ListLeavesAxis1AloneForNone) {
  Scanned d;
  d.found[0].model = 0;
  d.Open();
  d.Click("Scan");
  d.Click("Copy2List");
  EXPECT_EQ(d.Model(0), 1);
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(HardwareScan, OnHubQuadShowsFourRows) {
  Scanned d;
  d.program.HubIndex = HubQuad;
  d.Open();
  d.Click("Scan");
  EXPECT_TRUE(d.Visible("lblDriveModel(3)"));
  EXPECT_FALSE(d.Visible("lblDriveModel(4)"));
  d.Click("Copy2List");
  EXPECT_EQ(d.Model(5), 7) << "not there";
}

}  // namespace
}  // namespace tavlo
